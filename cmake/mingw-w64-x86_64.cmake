# Cross-build for 64-bit Windows (x86_64) with Debian's mingw-w64.
# Use: cmake -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(quorvvalida_mingw x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
