#!/bin/bash
# Long button titles: a button grows leftwards to its title, so a click where the whole title shows
# (over the template's place of the button beside it) presses it; when the row needs more room
# than the window has, the window widens.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Mosa_Dialog ( "" ; "Close every window?" ; "Save and Close All Windows" ; "Cancel" )
Mosa_Dialog ( "" ; "Close every window?" ; "Save and Close All Windows" ; "Cancel" ; "Close Without Saving Any of the Changes" )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the first dialog"
wait_active "$one"
# Button 1 keeps its right edge at 424; 304 lies in button 2's place in the template (238 to 326).
xdotool mousemove --window "$one" 304 120 click 1
wait_lines 1 || fail "the click did not answer the first dialog"
two=$(dialog_window "$one") || fail "the window manager never showed the second dialog"
eval "$(xdotool getwindowgeometry --shell "$two")"
((WIDTH > 440)) || fail "the window kept the template's width ($WIDTH) for three long titles"
wait_active "$two"
xdotool key Return
finish_host
expect_output 1 1
echo "passed"
