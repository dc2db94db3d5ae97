#!/usr/bin/env bash
# The release as a user meets it: the archive unpacked into a folder whose path has a space,
# install.sh run without root, the menu entry valid and starting the program from that folder,
# and install.sh --remove taking the entry and the icon away again.
#   tst_release.sh BUILD_DIR
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'kill "${pid:-0}" 2>/dev/null || true; rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

cmake --build "$build" --target release >/dev/null
archive=$(ls "$build"/glidepath-*-linux-*.tar.gz)
folder="$work/My Programs"
mkdir -p "$folder" "$work/home"
tar xzf "$archive" -C "$folder"
program="$folder/Glidepath"
for f in glidepath install.sh glidepath.png readme.TXT FavPlaces.INI Default/Main.BMP Midnight/Main.BMP Art/OpenWin.WAV Start/index.html; do
  [ -e "$program/$f" ] || fail "the archive lacks $f"
done
[ -x "$program/glidepath" ] && [ -x "$program/install.sh" ] || fail "the program or install.sh is not executable"
for f in HomePage.TXT ThemeDir.INI ForeC.INI Notes.TXT; do
  [ ! -e "$program/$f" ] || fail "the archive carries a developer's $f"
done

export HOME="$work/home" XDG_DATA_HOME="$work/home/data"
"$program/install.sh" >/dev/null
entry="$XDG_DATA_HOME/applications/glidepath.desktop"
[ -f "$entry" ] || fail "no menu entry"
[ -f "$XDG_DATA_HOME/icons/hicolor/256x256/apps/glidepath.png" ] || fail "no icon"
desktop-file-validate "$entry" || fail "the entry does not validate"
[ "$(cat "$program/HomePage.TXT")" = "file://$program/Start/index.html" ] || fail "home page: $(cat "$program/HomePage.TXT")"

# The Exec line, unquoted as a desktop does (the path holds no escaped characters here).
exec_line=$(sed -n 's/^Exec=//p' "$entry")
command=$(eval "printf '%s' $exec_line")
[ "$command" = "$program/glidepath" ] || fail "Exec runs '$command'"
path=$(sed -n 's/^Path=//p' "$entry")
(cd "$path" && exec "$command") >"$work/out.log" 2>&1 &
pid=$!
# A first start asks for a theme: a window of the program's appears, and it keeps running.
for _ in $(seq 100); do
  if xdotool search --onlyvisible --pid "$pid" >/dev/null 2>&1; then break; fi
  kill -0 "$pid" 2>/dev/null || fail "the program ended: $(cat "$work/out.log")"
  sleep 0.1
done
xdotool search --onlyvisible --pid "$pid" >/dev/null || fail "no window from the program"
[ "$(readlink "/proc/$pid/cwd")" = "$program" ] || fail "runs in $(readlink "/proc/$pid/cwd")"
kill "$pid"

"$program/install.sh" --remove >/dev/null
[ ! -e "$entry" ] && [ ! -e "$XDG_DATA_HOME/icons/hicolor/256x256/apps/glidepath.png" ] || fail "--remove left files"
echo "release: $(basename "$archive") $(du -k "$archive" | cut -f1) KiB, installed, started and removed"
