#!/bin/bash
# The list dialog under a window manager: a real click on a row and then on button 1, a typed
# letter that selects by type-select and Return, a double click on a row that chooses it.
# Usage: list_dialog.sh HOST PLUGIN SCRIPT
set -u
host_program=$1 plugin=$2 script=$3
work=$(mktemp -d)
display=":$((100 + ($$ + 200) % 400))"
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
# The list (item 5) spans 72,56 to 406,216; its rows are 14 to 17 pixels high, so these points
# fall in row 2 and row 3 whatever the font. Button 1 spans 376,238 to 464,266.
one=$(window) || fail "the window manager never showed the first dialog"
sleep 0.3
xdotool mousemove --window "$one" 150 79 click 1
sleep 0.3
xdotool mousemove --window "$one" 420 252 click 1
two=$(window "$one") || fail "the window manager never showed the second dialog"
sleep 0.3
xdotool key b
sleep 0.2
xdotool key Return
three=$(window "$two") || fail "the window manager never showed the third dialog"
sleep 0.3
xdotool mousemove --window "$three" 150 95 click --repeat 2 --delay 80 1

timeout 20 tail --pid="$host" -f /dev/null || fail "mosa-host did not finish"
wait "$host" || fail "mosa-host failed"
expected=$'1|2\n1|2\n2|3'
[ "$(cat "$work/out")" = "$expected" ] || fail "printed $(cat "$work/out"), expected 1|2, 1|2 and 2|3"
echo "passed"
