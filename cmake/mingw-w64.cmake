# What the two Windows toolchains share; each sets quorvvalida_mingw (the compilers' prefix) and
# includes this file. The compilers are Debian's mingw-w64 of the posix thread model: the win32
# model has no std::mutex.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${quorvvalida_mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${quorvvalida_mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${quorvvalida_mingw}-windres)
set(QUORVVALIDA_WIDL ${quorvvalida_mingw}-widl CACHE FILEPATH "IDL compiler for the type library")
set(CMAKE_FIND_ROOT_PATH /usr/${quorvvalida_mingw})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
