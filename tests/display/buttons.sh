#!/bin/bash
# Long button titles: the buttons grow and the window widens, so that a click where the whole
# title shows (left of where the template's button begins) presses it.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Mosa_Dialog ( "" ; "Close every window?" ; "Save and Close All Windows" ; "Cancel" )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the dialog"
wait_active "$one"
eval "$(xdotool getwindowgeometry --shell "$one")"
((WIDTH > 440)) || fail "the window kept the template's width ($WIDTH) for long titles"
# Button 1 ends 16 pixels from the right edge, as in the template (336 to 424 of 440); 120 pixels
# to the left of that lies its title, beyond the template's 88-pixel button.
xdotool mousemove --window "$one" $((WIDTH - 16 - 120)) 120 click 1
finish_host
expect_output 1
echo "passed"
