#!/bin/bash
# The flash and progress windows under a window manager, with a person's hands (xdotool) and the
# screen's own pixels (xwd): a click on the flash window's message and Space once released close
# it early; the progress window stays drawn and its bar moves during a script's loop, and stays
# behind a dialog opened after it; a progress window left open is closed by the idle calls of
# --linger.
source "$(dirname "$0")/lib.sh"
scripts=$3
# No auto-repeat while a key is held: the test holds Space on purpose.
start_display -ardelay 60000

# Flash windows of two minutes each, closed in seconds.
run_host <"$scripts/flash.fmscript"
one=$(dialog_window) || fail "the window manager never showed the first flash window"
wait_active "$one"
xdotool mousemove --window "$one" 150 50 click 1   # on the message (item 1)
two=$(dialog_window "$one") || fail "a click on the message did not close the first flash window"
wait_active "$two"
xdotool key Tab
xdotool keydown space
sleep 0.5
is_viewable "$two" || fail "the second flash window closed while Space was still down"
xdotool keyup space
finish_host 0 10
expect_output 0 0

# The progress window during a loop of 100 steps, 3 ticks each: two pictures a second apart.
run_host <"$scripts/progress_loop.fmscript"
bar=$(dialog_window) || fail "the window manager never showed the progress window"
sleep 1
picture "$bar" "$work/first.xwd"
sleep 1
is_viewable "$bar" || fail "the progress window went away during the loop"
picture "$bar" "$work/second.xwd"
cmp -s "$work/first.xwd" "$work/second.xwd" && fail "the progress window's bar did not move"
finish_host

# A dialog opened within a frame of a progress call keeps the front and the keyboard.
run_host <"$scripts/progress_behind.fmscript"
first=$(dialog_window) || fail "the window manager never showed the progress window"
second=$(dialog_window "$first") || fail "the window manager never showed the dialog"
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
finish_host 0 10
expect_output 0001 0

# A window left open closes a second after the script's last call, while mosa-host lingers.
run_host --linger 4 <"$scripts/progress_abandoned.fmscript"
left=$(dialog_window) || fail "the window manager never showed the abandoned progress window"
sleep 2.5
is_viewable "$left" && fail "the abandoned progress window was still open 2.5 seconds later"
kill -0 "$host" 2>/dev/null || fail "mosa-host stopped lingering too soon"
finish_host 0 10
echo "passed"
