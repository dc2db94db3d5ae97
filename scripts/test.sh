#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test: the unit and end-to-end tests (in a
# virtual screen with a sound server, which the tests start and stop themselves), then each
# fuzz target for a bounded time.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh

jobs=$(nproc)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$jobs"
# The lanes run side by side, one test at a time in each (tests/CMakeLists.txt).
(cd build && ctest --output-on-failure --parallel 5)

cmake -S tests/fuzz -B build-fuzz -DCMAKE_CXX_COMPILER=clang++
cmake --build build-fuzz -j"$jobs"
(cd build-fuzz && ctest --output-on-failure)
