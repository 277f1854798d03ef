#!/usr/bin/env bash
# Builds the release packages into dist/: a .tar.gz and a .deb for Linux x86-64 and a .zip with
# korvane.exe for Windows (mingw-w64). Needs what the builds need, dpkg-dev for the .deb's
# dependencies and, for the .zip, g++-mingw-w64-x86-64.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=${JOBS:-2}
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release
cmake --build build -j "$jobs"
cpack --config build/CPackConfig.cmake -B dist
# The toolchain is named once, when the Windows build is first configured.
if [ -f build-windows/CMakeCache.txt ]; then
  cmake -S . -B build-windows
else
  cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake
fi
cmake --build build-windows -j "$jobs" --target korvane
cpack --config build-windows/CPackConfig.cmake -B dist
rm -rf dist/_CPack_Packages
ls -l dist/*.tar.gz dist/*.deb dist/*.zip
