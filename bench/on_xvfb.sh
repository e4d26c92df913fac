#!/usr/bin/env bash
# Runs a benchmark program on xcb, as on a person's X11 desktop: a private Xvfb with openbox for
# the display. Usage: bash bench/on_xvfb.sh PROGRAM [ARGUMENTS...]
set -euo pipefail
work=$(mktemp -d)
pids=()
trap 'kill "${pids[@]}" 2>/dev/null; rm -rf "$work"' EXIT
Xvfb -displayfd 5 -screen 0 1024x768x24 -nolisten tcp 5>"$work/display" 2>/dev/null &
pids+=($!)
for _ in $(seq 200); do [ -s "$work/display" ] && break; sleep 0.05; done
export DISPLAY=":$(cat "$work/display")"
unset QT_QPA_PLATFORM
openbox --sm-disable >/dev/null 2>&1 &
pids+=($!)
sleep 0.5
"$@"
