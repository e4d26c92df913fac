#!/bin/bash
# The keyboard focus is drawn: a picture of the dialog changes with every Tab and Shift-Tab, and
# Space presses the button that shows the focus.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Mosa_Dialog ( "" ; "Tab, Tab, Shift-Tab, Tab, then Space." ; "One" ; "Two" ; "Three" )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the dialog"
wait_active "$one"
# Each picture once the window drew what the key changed.
changed_picture() {
  poll 5 picture_differs "$1" "$2"
}
picture_differs() {
  picture "$one" "$work/now.xwd"
  ! cmp -s "$work/now.xwd" "$1" && cp "$work/now.xwd" "$2"
}
picture "$one" "$work/0.xwd"
xdotool key Tab
changed_picture "$work/0.xwd" "$work/1.xwd" || fail "Tab to button 3 changed nothing on screen"
xdotool key Tab
changed_picture "$work/1.xwd" "$work/2.xwd" || fail "Tab to button 2 changed nothing on screen"
xdotool key shift+Tab
changed_picture "$work/2.xwd" "$work/3.xwd" || fail "Shift-Tab changed nothing on screen"
cmp -s "$work/1.xwd" "$work/3.xwd" || fail "Shift-Tab back to button 3 drew something else"
xdotool key Tab
changed_picture "$work/3.xwd" "$work/4.xwd" || fail "Tab to button 2 again changed nothing"
cmp -s "$work/2.xwd" "$work/4.xwd" || fail "the focus on button 2 is drawn two ways"
xdotool key space
finish_host
expect_output 2
echo "passed"
