#!/bin/sh
# Puts Glidepath in the desktop's menu for the current user, running it from this folder:
#   ./install.sh            registers it (run it again after moving the folder)
#   ./install.sh --remove   takes it out of the menu again
# No root needed: the entry and the icon go to the user's own data folder (XDG_DATA_HOME).
set -eu

here=$(cd "$(dirname "$0")" && pwd)
data=${XDG_DATA_HOME:-$HOME/.local/share}
entry=$data/applications/glidepath.desktop
icon=$data/icons/hicolor/256x256/apps/glidepath.png

refresh() {
  if command -v update-desktop-database >/dev/null 2>&1; then
    update-desktop-database -q "$data/applications" 2>/dev/null || true
  fi
}

if [ "${1:-}" = "--remove" ]; then
  rm -f "$entry" "$icon"
  refresh
  echo "Glidepath is no longer in the menu."
  exit 0
fi

if [ ! -x "$here/glidepath" ]; then
  echo "install.sh: no program beside this script ($here/glidepath)" >&2
  exit 1
fi
# The program keeps its settings (favourites, home page, theme) in files beside itself.
if [ ! -w "$here" ]; then
  echo "install.sh: warning: $here is not writable for you, so Glidepath cannot keep its settings;" >&2
  echo "            unpack it into a folder of your own." >&2
fi
# A fresh folder's home page: the start page that comes with the program.
if [ ! -e "$here/HomePage.TXT" ] && [ -w "$here" ]; then
  printf 'file://%s/Start/index.html' "$here" >"$here/HomePage.TXT"
fi

# Exec takes the program's path in double quotes, with ", `, $ and \ escaped, and then every
# backslash doubled as in any value of the entry.
quoted=$(printf '%s' "$here/glidepath" | sed -e 's/[\\"`$]/\\&/g' -e 's/\\/\\\\/g')
path_value=$(printf '%s' "$here" | sed -e 's/\\/\\\\/g')

mkdir -p "$data/applications" "$(dirname "$icon")"
cp "$here/glidepath.png" "$icon"
tmp=$entry.tmp.$$
cat >"$tmp" <<ENTRY
[Desktop Entry]
Type=Application
Name=Glidepath
GenericName=Web Browser
Comment=A themable web browser
Exec="$quoted"
Path=$path_value
Icon=glidepath
Terminal=false
Categories=Network;WebBrowser;
StartupNotify=false
ENTRY
mv "$tmp" "$entry"
refresh
echo "Glidepath is in the menu now (Internet), running from $here."
