#!/bin/bash
# The standard dialog under a window manager: a dialog has the keyboard without a click (Return
# reaches it), a click on the message does nothing and one on a button answers the dialog.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Mosa_Dialog ( "" ; "Return is button 1, with no click first." ; "One" ; "Two" )
Mosa_Dialog ( "" ; "A click here does nothing." ; "One" ; "Two" )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the first dialog"
wait_active "$one"
xdotool key Return
wait_lines 1 || fail "Return did not reach the first dialog"
two=$(dialog_window "$one") || fail "the window manager never showed the second dialog"
wait_active "$two"
# The message (item 5, 72,16 to 424,96), then button 2 (238,106 to 326,134).
xdotool mousemove --window "$two" 200 50 click 1
xdotool mousemove --window "$two" 282 120 click 1
finish_host
expect_output 1 2
echo "passed"
