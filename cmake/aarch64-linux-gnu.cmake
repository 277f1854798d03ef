# Cross-compiles the engine for 64-bit ARM Linux (Debian: g++-aarch64-linux-gnu).
#   cmake -S . -B build-arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake
# Tests run under qemu's user-mode emulator when it is installed (Debian: qemu-user), with the
# target's libraries from the cross toolchain's root.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)

set(CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(KORVANE_QEMU NAMES qemu-aarch64 qemu-aarch64-static)
if(KORVANE_QEMU)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${KORVANE_QEMU} -L /usr/aarch64-linux-gnu)
endif()
