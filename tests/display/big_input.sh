#!/bin/bash
# The big input dialog under a window manager: lines typed with Return between them, a click in
# the middle of the text putting the caret there, the wheel scrolling the text with the scroll bar
# following, and the scroll bar's thumb dragged with the text following.
source "$(dirname "$0")/lib.sh"
start_display
run_host <"$3"

# A field of item N in the K-th close event of the trace.
closed() {
  local k=$1 n=$2 field=$3
  grep '"ev":"close"' "$work/trace" | sed -n "${k}p" | grep -o "{\"n\":$n,[^}]*" |
    grep -o "\"$field\":[0-9]*" | cut -d: -f2
}

# The text area is item 8 (72,76 to 408,226), its scroll bar item 5 (408,76 to 424,226).
one=$(dialog_window) || fail "the window manager never showed the first dialog"
wait_active "$one"
xdotool type --delay 20 "one"
xdotool key Return
xdotool type --delay 20 "two"
xdotool key Return
xdotool type --delay 20 "three"
xdotool key KP_Enter
two=$(dialog_window "$one") || fail "the window manager never showed the second dialog"
wait_active "$two"
# The left end of the second line, then a letter typed there.
xdotool mousemove --window "$two" 77 106 click 1
sleep 0.2
xdotool type "X"
xdotool key KP_Enter
three=$(dialog_window "$one" "$two") || fail "the window manager never showed the third dialog"
wait_active "$three"
# The caret is at the end, so the text starts at the bottom: the wheel scrolls it up.
xdotool mousemove --window "$three" 200 150 click 4 click 4 click 4
sleep 0.3
xdotool key KP_Enter
four=$(dialog_window "$one" "$two" "$three") ||
  fail "the window manager never showed the fourth dialog"
wait_active "$four"
# The thumb sits at the bottom of the bar: dragged up to the top, once the lines are counted.
sleep 1
xdotool mousemove --window "$four" 416 200 mousedown 1
sleep 0.1
xdotool mousemove --window "$four" 416 150
sleep 0.1
xdotool mousemove --window "$four" 416 80 mouseup 1
sleep 0.3
xdotool key KP_Enter

finish_host
expect_output $'1|one\rtwo\rthree' $'1|first\rXsecond\rthird' 2453 18794
for k in 3 4; do
  value=$(closed "$k" 5 value) max=$(closed "$k" 5 max) scroll=$(closed "$k" 8 scroll)
  [ -n "$value" ] && [ "$value" = "$scroll" ] ||
    fail "dialog $k: the scroll bar shows $value, the text is scrolled by $scroll"
  [ "$value" -lt "$max" ] || fail "dialog $k: the text did not scroll up ($value of $max)"
done
# 600 lines of at least 10 pixels: the bar knows of the wrapped lines it had not shown.
[ "$(closed 4 5 max)" -gt 6000 ] || fail "dialog 4: the bar counts $(closed 4 5 max) pixels"
echo "passed"
