#!/bin/bash
# The input dialog under a window manager, typed into with real keys: text typed, Tab, more text
# gives both fields their text; a click into the middle of a default text puts the caret there, so
# typing inserts; Escape without "-StopOnESC" leaves the dialog open. Usage:
# input_dialog.sh HOST PLUGIN SCRIPT
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
xdotool type --delay 30 "hello"
xdotool key Tab
xdotool type --delay 30 "world"
xdotool key Return
two=$(window "$one") || fail "the window manager never showed the second dialog"
sleep 0.3
# The field (186,64 to 464,88) holds twenty letters, about 140 pixels: a click at 70 pixels into
# the text lands between two of them.
xdotool mousemove --window "$two" 260 76 click 1
sleep 0.2
xdotool type "X"
xdotool key Return
three=$(window "$two") || fail "the window manager never showed the third dialog"
sleep 0.3
xdotool key Escape
sleep 0.5
xdotool search --onlyvisible --classname '^mosa$' | grep -qx "$three" || fail "Escape closed it"
xdotool key Return

timeout 20 tail --pid="$host" -f /dev/null || fail "mosa-host did not finish"
wait "$host" || fail "mosa-host failed"
mapfile -t lines <"$work/out"
[ "${lines[0]:-}" = "|hello|world" ] || fail "two fields: ${lines[0]:-nothing}"
[[ "${lines[1]:-}" =~ ^\|a+X[ab]+$|^\|[ab]+Xb+$ ]] || fail "the click: ${lines[1]:-nothing}"
[ "${#lines[1]}" = 22 ] || fail "the click: ${lines[1]}"
[ "${lines[3]:-}" = "OK" ] || fail "after Escape: ${lines[3]:-nothing}"
echo "passed"
