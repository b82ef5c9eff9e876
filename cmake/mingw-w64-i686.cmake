# Cross-build for 32-bit Windows (x86) with Debian's mingw-w64.
# Use: cmake -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-i686.cmake
set(CMAKE_SYSTEM_PROCESSOR i686)
set(quorvvalida_mingw i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
