# cmake -S . -B build-mips -DCMAKE_TOOLCHAIN_FILE=cmake/mips-linux-gnu.cmake -DPANEL_HOST_TOOLS=build/bin -DPANEL_HOST_ROOT=build/root
#
# 32-bit big-endian MIPS Linux, with Debian's cross compiler (g++-mips-linux-gnu). What it builds runs here under
# qemu-user-static. A router's own build brings its own toolchain file.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR mips)

set(CMAKE_C_COMPILER mips-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER mips-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-mips-static -L /usr/mips-linux-gnu)

# Nothing of this machine is found in place of the target's.
set(CMAKE_FIND_ROOT_PATH /usr/mips-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
