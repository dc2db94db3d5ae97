#!/usr/bin/env bash
# The one way Glidepath's tests, benchmarks and headless runs get a desktop: a virtual screen
# (Xvfb at 96 dpi, so a pixel is 15 twips, 1280 by 1024 unless SIZE says otherwise), a PulseAudio
# server whose only output is a null sink, and with "wm" a window manager (openbox).
#   session.sh start DIR DISPLAY|free [wm]   session.sh stop DIR
# "free" takes the first display from :200 on that nobody uses. Once started, DIR/env holds the
# variables that put a program on the session (DISPLAY, PULSE_SERVER, XDG_RUNTIME_DIR), ready
# for `source`.
set -euo pipefail
action=$1 dir=$2

alive() { [ -f "$dir/$1.pid" ] && kill -0 "$(cat "$dir/$1.pid")" 2>/dev/null; }

stop() {
  for name in wm pulse xvfb; do
    if [ -f "$dir/$name.pid" ]; then
      pid=$(cat "$dir/$name.pid")
      kill "$pid" 2>/dev/null || true
      # Gone before the next session may take its display or socket.
      for _ in $(seq 50); do kill -0 "$pid" 2>/dev/null || break; sleep 0.1; done
      rm -f "$dir/$name.pid"
    fi
  done
}

case "$action" in
start)
  display=$3
  stop
  if [ "$display" = free ]; then
    for n in $(seq 200 299); do
      if [ ! -e "/tmp/.X$n-lock" ] && [ ! -e "/tmp/.X11-unix/X$n" ]; then display=:$n; break; fi
    done
    [ "$display" != free ] || { echo "session: no free X display" >&2; exit 1; }
  fi
  mkdir -p "$dir/pulse"
  chmod 700 "$dir" # it is also the session's XDG_RUNTIME_DIR
  if ! xdpyinfo -display "$display" >/dev/null 2>&1; then
    rm -f "/tmp/.X${display#:}-lock"
    Xvfb "$display" -screen 0 "${SIZE:-1280x1024}x24" -dpi 96 -nolisten tcp >"$dir/xvfb.log" 2>&1 &
    echo $! >"$dir/xvfb.pid"
  fi
  PULSE_RUNTIME_PATH="$dir/pulse" pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm=yes \
    --use-pid-file=no -L "module-null-sink sink_name=null" \
    -L "module-native-protocol-unix socket=$dir/pulse/native auth-anonymous=1" >"$dir/pulse.log" 2>&1 &
  echo $! >"$dir/pulse.pid"
  printf 'export DISPLAY=%s PULSE_SERVER=unix:%s/pulse/native XDG_RUNTIME_DIR=%s\n' "$display" "$dir" "$dir" >"$dir/env"
  ready=
  for _ in $(seq 100); do
    if xdpyinfo -display "$display" >/dev/null 2>&1 && PULSE_SERVER="unix:$dir/pulse/native" pactl info >/dev/null 2>&1; then
      ready=yes
      break
    fi
    sleep 0.1
  done
  [ -n "$ready" ] || { echo "session: the screen or the sound server did not come up" >&2; cat "$dir"/*.log >&2 || true; exit 1; }
  [ "${4:-}" = wm ] || exit 0
  # The window manager is ready once it has claimed the screen; one that fails to start is
  # started again.
  for _ in 1 2 3; do
    DISPLAY="$display" openbox --sm-disable >"$dir/wm.log" 2>&1 &
    echo $! >"$dir/wm.pid"
    for _ in $(seq 50); do
      DISPLAY="$display" xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && exit 0
      alive wm || break
      sleep 0.1
    done
  done
  echo "session: the window manager did not come up" >&2
  cat "$dir"/*.log >&2 || true
  exit 1
  ;;
stop)
  stop
  ;;
esac
