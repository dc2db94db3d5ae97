#!/usr/bin/env bash
# Installs what is missing, builds, and starts Glidepath from its program directory.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" --target glidepath

exec build/Glidepath/glidepath
