#!/usr/bin/env bash
# Starts or stops what the tests need: a virtual screen (Xvfb at 96 dpi, so a pixel is
# 15 twips) and a PulseAudio server whose only output is a null sink.
#   session.sh start DIR DISPLAY [wm]     session.sh stop DIR
# With "wm", a window manager (openbox) runs on the screen too, as on a desktop.
set -euo pipefail
action=$1 dir=$2

stop() {
  for name in wm pulse xvfb; do
    if [ -f "$dir/$name.pid" ]; then
      kill "$(cat "$dir/$name.pid")" 2>/dev/null || true
      rm -f "$dir/$name.pid"
    fi
  done
}

case "$action" in
start)
  display=$3
  stop
  mkdir -p "$dir/pulse"
  chmod 700 "$dir" # it is also the tests' XDG_RUNTIME_DIR
  if ! xdpyinfo -display "$display" >/dev/null 2>&1; then
    rm -f "/tmp/.X${display#:}-lock"
    Xvfb "$display" -screen 0 1280x1024x24 -dpi 96 -nolisten tcp >"$dir/xvfb.log" 2>&1 &
    echo $! >"$dir/xvfb.pid"
  fi
  PULSE_RUNTIME_PATH="$dir/pulse" pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm=yes \
    --use-pid-file=no -L "module-null-sink sink_name=null" \
    -L "module-native-protocol-unix socket=$dir/pulse/native auth-anonymous=1" >"$dir/pulse.log" 2>&1 &
  echo $! >"$dir/pulse.pid"
  for _ in $(seq 100); do
    if xdpyinfo -display "$display" >/dev/null 2>&1 &&
       PULSE_SERVER="unix:$dir/pulse/native" pactl info >/dev/null 2>&1; then
      if [ "${4:-}" = wm ]; then
        DISPLAY="$display" openbox --sm-disable >"$dir/wm.log" 2>&1 &
        echo $! >"$dir/wm.pid"
        # ready once it has claimed the screen
        for _ in $(seq 50); do
          DISPLAY="$display" xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && exit 0
          sleep 0.1
        done
        echo "session: the window manager did not come up" >&2
        exit 1
      fi
      exit 0
    fi
    sleep 0.1
  done
  echo "session: the screen or the sound server did not come up" >&2
  cat "$dir"/*.log >&2 || true
  exit 1
  ;;
stop)
  stop
  ;;
esac
