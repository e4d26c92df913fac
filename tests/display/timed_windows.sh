#!/bin/bash
# The flash and progress windows under a window manager, with a person's hands (xdotool) and the
# screen's own pixels (xwd): a click on the flash window's message and Space once released close
# it early; the progress window stays drawn and its bar moves during a script's loop, and stays
# behind a dialog opened after it; a progress window left open is closed by the idle calls of
# --linger.
# Usage: timed_windows.sh HOST PLUGIN SCRIPTS_DIR
set -u
host_program=$1 plugin=$2 scripts=$3
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

# No auto-repeat while a key is held: the test holds Space on purpose.
Xvfb "$display" -screen 0 1024x768x24 -nolisten tcp -ardelay 60000 >/dev/null 2>&1 &
pids+=($!)
export DISPLAY=$display
unset QT_QPA_PLATFORM
for _ in $(seq 50); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.1; done
openbox >/dev/null 2>&1 &
pids+=($!)
sleep 0.5

# run SCRIPT [OPTIONS...]: starts mosa-host in the background; its id is in $host.
run() {
  local script=$1
  shift
  "$host_program" --plugin "$plugin" --ui qt "$@" "$scripts/$script" >"$work/out" 2>"$work/err" &
  host=$!
  pids+=($host)
}
# The dialog window the window manager shows, other than the one given.
window() {
  for _ in $(seq 100); do
    for id in $(xdotool search --onlyvisible --classname '^mosa$' 2>/dev/null); do
      [ "$id" != "${1:-}" ] && echo "$id" && return 0
    done
    sleep 0.1
  done
  return 1
}
shown() { xdotool search --onlyvisible --classname '^mosa$' 2>/dev/null | grep -qx "$1"; }
finished() {
  timeout "$1" tail --pid="$host" -f /dev/null || fail "mosa-host did not finish in $1 seconds"
  wait "$host" || fail "mosa-host failed"
}

# Flash windows of two minutes each, closed in seconds.
run flash.fmscript
one=$(window) || fail "the window manager never showed the first flash window"
sleep 0.3
xdotool mousemove --window "$one" 150 50 click 1   # on the message (item 1)
two=$(window "$one") || fail "a click on the message did not close the first flash window"
sleep 0.3
xdotool key Tab
xdotool keydown space
sleep 0.5
shown "$two" || fail "the second flash window closed while Space was still down"
xdotool keyup space
finished 10
[ "$(cat "$work/out")" = $'0\n0' ] || fail "printed $(cat "$work/out"), expected 0 and 0"

# The progress window during a loop of 100 steps, 3 ticks each: two pictures a second apart.
run progress_loop.fmscript
bar=$(window) || fail "the window manager never showed the progress window"
sleep 1
xwd -silent -id "$bar" >"$work/first.xwd" || fail "no picture of the progress window"
sleep 1
shown "$bar" || fail "the progress window went away during the loop"
xwd -silent -id "$bar" >"$work/second.xwd" || fail "no second picture of the progress window"
cmp -s "$work/first.xwd" "$work/second.xwd" && fail "the progress window's bar did not move"
finished 20

# A dialog opened within a frame of a progress call keeps the front and the keyboard.
run progress_behind.fmscript
first=$(window) || fail "the window manager never showed the progress window"
second=$(window "$first") || fail "the window manager never showed the dialog"
sleep 0.5
# The progress window is the one of 400 by 100.
bar=$first dialog=$second
if ! xdotool getwindowgeometry "$first" | grep -q 'Geometry: 400x100'; then
  bar=$second dialog=$first
fi
# The window manager's stacking order, bottom to top, in hexadecimal ids.
stacking=$(xprop -root _NET_CLIENT_LIST_STACKING | tr -d ',' | cut -d'#' -f2)
above=$(for id in $stacking; do printf '%d\n' "$id"; done | grep -x -e "$bar" -e "$dialog" | tail -1)
[ "$above" = "$dialog" ] || fail "the progress window came in front of the dialog"
xdotool key Return
finished 10
[ "$(cat "$work/out")" = $'0001\n0' ] || fail "printed $(cat "$work/out"), expected 0001 and 0"

# A window left open closes a second after the script's last call, while mosa-host lingers.
run progress_abandoned.fmscript --linger 4
left=$(window) || fail "the window manager never showed the abandoned progress window"
sleep 2.5
shown "$left" && fail "the abandoned progress window was still open 2.5 seconds later"
kill -0 "$host" 2>/dev/null || fail "mosa-host stopped lingering too soon"
finished 10
echo "passed"
