#!/bin/bash
# The standard dialog under a window manager: the window manager maps it, a real click on the
# message does nothing and one on a button answers it, and the next dialog takes the keyboard so
# that Return reaches it. Usage: standard_dialog.sh HOST PLUGIN SCRIPT
set -u
host_program=$1 plugin=$2 script=$3
work=$(mktemp -d)
display=":$((100 + $$ % 400))"
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
  rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "FAIL: $*" >&2
  cat "$work/out" "$work/err" >&2 2>/dev/null
  exit 1
}

Xvfb "$display" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
pids+=($!)
export DISPLAY=$display
unset QT_QPA_PLATFORM
for _ in $(seq 50); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.1; done
openbox >/dev/null 2>&1 &
pids+=($!)
sleep 0.5

"$host_program" --plugin "$plugin" --ui qt "$script" >"$work/out" 2>"$work/err" &
host=$!
pids+=($host)

# The dialog window the window manager shows, other than the one given.
window() {
  for _ in $(seq 100); do
    for id in $(xdotool search --onlyvisible --classname '^mosa$' 2>/dev/null); do
      [ "$id" != "${1:-}" ] && echo "$id" && return 0
    done
    sleep 0.2
  done
  return 1
}
one=$(window) || fail "the window manager never showed the first dialog"
sleep 0.3
# The message (item 5, 72,16 to 424,96) first, then button 2 (238,106 to 326,134).
xdotool mousemove --window "$one" 200 50 click 1
sleep 0.3
xdotool mousemove --window "$one" 282 120 click 1
window "$one" >/dev/null || fail "the window manager never showed the second dialog"
sleep 0.3
xdotool key Return   # to whatever has the keyboard: the dialog just shown

timeout 20 tail --pid="$host" -f /dev/null || fail "mosa-host did not finish"
wait "$host" || fail "mosa-host failed"
expected=$'2\n1'
[ "$(cat "$work/out")" = "$expected" ] || fail "printed $(cat "$work/out"), expected 2 and 1"
echo "passed"
