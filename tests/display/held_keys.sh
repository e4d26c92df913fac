#!/bin/bash
# Input meant for one dialog never answers the next: Return held down for 0.8 s over a script of
# four dialogs answers exactly one, and so does a double click on OK over a script of two.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Mosa_Dialog ( "" ; "First of four." )
Mosa_Dialog ( "" ; "Second of four." )
Mosa_Dialog ( "" ; "Third of four." )
Mosa_Dialog ( "" ; "Fourth of four." )
Mosa_Dialog ( "" ; "Double-click OK." )
Mosa_Dialog ( "" ; "Only the first click of it answered the one before." )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the first dialog"
wait_active "$one"
xdotool keydown Return sleep 0.8 keyup Return
wait_lines 1 || fail "Return did not answer the first dialog"
two=$(dialog_window "$one") || fail "the second dialog never showed"
wait_active "$two"
sleep 0.3  # time for a key that the second dialog took to show in the output
[ "$(wc -l <"$work/out")" = 1 ] || fail "holding Return answered $(wc -l <"$work/out") dialogs"
# A released key and a fresh press answer the next dialog, and the one after it.
xdotool key Return
wait_lines 2 || fail "a fresh Return did not answer the second dialog"
three=$(dialog_window "$one" "$two") || fail "the third dialog never showed"
wait_active "$three"
xdotool key Return
wait_lines 3 || fail "a fresh Return did not answer the third dialog"
four=$(dialog_window "$one" "$two" "$three") || fail "the fourth dialog never showed"
wait_active "$four"
xdotool key Return
wait_lines 4 || fail "a fresh Return did not answer the fourth dialog"

five=$(dialog_window "$one" "$two" "$three" "$four") || fail "the fifth dialog never showed"
wait_active "$five"
# OK, the only button, lies at 336,106 to 424,134 in the template.
xdotool mousemove --window "$five" 380 120 click --repeat 2 --delay 150 1
wait_lines 5 || fail "the double click did not answer the fifth dialog"
six=$(dialog_window "$one" "$two" "$three" "$four" "$five") || fail "the sixth dialog never showed"
wait_active "$six"
sleep 0.3
[ "$(wc -l <"$work/out")" = 5 ] || fail "a double click answered two dialogs"
# A click after the double-click interval answers it.
sleep 0.3
xdotool click 1
finish_host
expect_output 1 1 1 1 1 1
echo "passed"
