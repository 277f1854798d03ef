# Cross-compiles korvane.exe for 64-bit Windows with mingw-w64 (Debian: g++-mingw-w64-x86-64).
#   cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake
# The programs are linked statically, so they run on a bare Windows machine with no mingw DLLs
# beside them. Tests run through wine when it is installed.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc)
# The POSIX threading flavour of the compiler, where Debian installs both, is the one GoogleTest
# builds with; the engine itself starts no thread.
find_program(KORVANE_MINGW_CXX NAMES x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++)
set(CMAKE_CXX_COMPILER ${KORVANE_MINGW_CXX})
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# CTest runs the Windows programs under wine, quietly, in a prefix of the build's own (made on
# the first run). Debian keeps wine64 and wineserver under /usr/lib/wine.
find_program(KORVANE_WINE NAMES wine64 wine PATHS /usr/lib/wine)
find_program(KORVANE_WINESERVER NAMES wineserver wineserver64 PATHS /usr/lib/wine)
set(KORVANE_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix)
if(KORVANE_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_COMMAND} -E env WINEDEBUG=-all WINEPREFIX=${KORVANE_WINEPREFIX} ${KORVANE_WINE})
endif()
