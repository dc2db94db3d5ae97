#!/usr/bin/env bash
# Installs every Debian package that building, running and testing Glidepath needs.
# Idempotent: when everything is present it only asks dpkg and returns.
set -euo pipefail

packages=(
  # toolchain
  g++ cmake make pkg-config git
  # Qt 6: widgets, web engine, multimedia, print support, network, test
  qt6-base-dev libxcb1-dev qt6-webengine-dev qt6-webengine-dev-tools qt6-multimedia-dev libqt6opengl6-dev
  # the windows' font "OCR A Extended" is served by the OCR-A family
  fonts-ocr-a fonts-dejavu-core
  # MP3 decoding for the media player, wave playback through the sound server
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-ugly gstreamer1.0-libav
  pulseaudio pulseaudio-utils
  # a virtual screen for tests and for headless runs, with a window manager for the end-to-end
  # tests; the locales package builds the comma-decimal locale the conversion tests run under
  xvfb xauth x11-utils xdotool desktop-file-utils imagemagick openbox locales
  # a Wayland session for the desktop tests: a headless compositor with an X server beside it,
  # and Qt's Wayland window system for the program when Wayland is all there is
  weston xwayland qt6-wayland
  # the benchmark's driver
  python3
  # reading back what a print to a PDF file holds
  poppler-utils
  # fuzzing the profile and field readers
  clang libclang-rt-14-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# A desktop whose decimal separator is a comma, for the conversion tests.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  SUDO=""
  [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO localedef -i de_DE -f UTF-8 de_DE.UTF-8
fi
