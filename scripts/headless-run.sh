#!/usr/bin/env bash
# Runs Glidepath's first start on a virtual screen as a person would: answers the request for a
# theme by picking the Default theme in the Theme Selector, clicks the intro away, waits for
# "Glidepath - [Done Loading Document]", saves a screenshot, prints its path and the titles the
# main window showed, and ends the program. The program runs from a fresh copy of its program
# directory, so every run is a first start and the build's own settings stay untouched.
set -euo pipefail
cd "$(dirname "$0")/.."

out=$PWD/build/headless
rm -rf "$out"
mkdir -p "$out"
cp -r build/Glidepath "$out/Glidepath"
program=$out/Glidepath

pid=
cleanup() {
  [ -z "$pid" ] || kill "$pid" 2>/dev/null || true
  bash scripts/session.sh stop "$out/session"
}
trap cleanup EXIT
bash scripts/session.sh start "$out/session" free
source "$out/session/env"

QT_LOGGING_RULES="glidepath.caption=true" "$program/glidepath" >"$out/glidepath.log" 2>&1 &
pid=$!

wait_for() { # pattern in the program's log, seconds
  for _ in $(seq $(( $2 * 10 ))); do grep -qF "$1" "$out/glidepath.log" && return 0; sleep 0.1; done
  echo "headless-run: gave up waiting for: $1" >&2; exit 1
}
px() { echo $(( ($1 + 7) / 15 )); } # twips to pixels at 96 dpi

# The first start: the message box, then the Theme Selector with its path box and Okay.
selector=$(xdotool search --sync --name "^Theme Selector$" | head -n 1)
sleep 1
xdotool key Return
xdotool mousemove --window "$selector" "$(px $((120 + 6255 / 2)))" "$(px $((4440 + 285 / 2)))" click 1
xdotool key ctrl+a type --delay 5 "$program/Default"
xdotool mousemove --window "$selector" "$(px $((2640 + 3735 / 2)))" "$(px $((4800 + 375 / 2)))" click 1
wait_for "MainFRM: Glidepath - [Going to:" 60
# The intro sits in the middle of the screen, above everything.
sleep 1
xdotool mousemove 640 512 click 1
wait_for "MainFRM: Glidepath - [Done Loading Document]" 60
sleep 2

import -window root "$out/glidepath.png"
echo "Screenshot: $out/glidepath.png"
echo "Titles the main window showed:"
grep -F "glidepath.caption: MainFRM: " "$out/glidepath.log" | sed 's/^glidepath.caption: MainFRM: /  /'
