# Toolchain file: compiles for 64-bit Windows on Debian, with its MinGW-w64.
#   cmake -S . -B build-windows -G Ninja --toolchain cmake/Windows.cmake -DQUILLON_WINDOW=OFF
# Of the two flavours Debian has, the one with POSIX threads comes with the whole standard library.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Programs are the host's; libraries and headers of the host are none for Windows.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# What is built runs by itself, without the compiler's own DLLs in its path.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
