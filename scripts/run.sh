#!/usr/bin/env bash
# Installs what is missing, builds, and starts Glidepath from its program directory.
# Without a display it shows the program on a virtual screen instead (scripts/headless-run.sh).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)" --target glidepath

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  exec bash scripts/headless-run.sh
fi
exec build/Glidepath/glidepath
