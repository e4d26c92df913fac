#!/bin/bash
# The big input dialog under a window manager: lines typed with Return between them, a click in
# the middle of the text putting the caret there, the wheel scrolling the text with the scroll bar
# following, and the scroll bar's thumb dragged with the text following.
# Usage: big_input.sh HOST PLUGIN SCRIPT
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

"$host_program" --plugin "$plugin" --ui qt --trace "$work/trace" "$script" >"$work/out" \
  2>"$work/err" &
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
# A field of item N in the K-th close event of the trace.
closed() {
  local k=$1 n=$2 field=$3
  grep '"ev":"close"' "$work/trace" | sed -n "${k}p" | grep -o "{\"n\":$n,[^}]*" |
    grep -o "\"$field\":[0-9]*" | cut -d: -f2
}

# The text area is item 8 (72,76 to 408,226), its scroll bar item 5 (408,76 to 424,226).
one=$(window) || fail "the window manager never showed the first dialog"
sleep 0.3
xdotool type --delay 20 "one"
xdotool key Return
xdotool type --delay 20 "two"
xdotool key Return
xdotool type --delay 20 "three"
xdotool key KP_Enter
two=$(window "$one") || fail "the window manager never showed the second dialog"
sleep 0.3
# The left end of the second line, then a letter typed there.
xdotool mousemove --window "$two" 77 106 click 1
sleep 0.2
xdotool type "X"
xdotool key KP_Enter
three=$(window "$two") || fail "the window manager never showed the third dialog"
sleep 0.3
# The caret is at the end, so the text starts at the bottom: the wheel scrolls it up.
xdotool mousemove --window "$three" 200 150 click 4 click 4 click 4
sleep 0.3
xdotool key KP_Enter
four=$(window "$three") || fail "the window manager never showed the fourth dialog"
sleep 0.3
# The thumb sits at the bottom of the bar: dragged up to the top.
xdotool mousemove --window "$four" 416 200 mousedown 1
sleep 0.1
xdotool mousemove --window "$four" 416 150
sleep 0.1
xdotool mousemove --window "$four" 416 80 mouseup 1
sleep 0.3
xdotool key KP_Enter

timeout 20 tail --pid="$host" -f /dev/null || fail "mosa-host did not finish"
wait "$host" || fail "mosa-host failed"
expected=$'1|one\rtwo\rthree\n1|first\rXsecond\rthird\n2453\n2453'
[ "$(cat "$work/out")" = "$expected" ] || fail "printed $(cat -A "$work/out"), expected $expected"
for k in 3 4; do
  value=$(closed "$k" 5 value) max=$(closed "$k" 5 max) scroll=$(closed "$k" 8 scroll)
  [ -n "$value" ] && [ "$value" = "$scroll" ] ||
    fail "dialog $k: the scroll bar shows $value, the text is scrolled by $scroll"
  [ "$value" -lt "$max" ] || fail "dialog $k: the text did not scroll up ($value of $max)"
done
echo "passed"
