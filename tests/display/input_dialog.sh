#!/bin/bash
# The input dialog under a window manager, typed into with real keys: text typed, Tab, more text
# gives both fields their text; a click into the middle of a default text puts the caret there, so
# typing inserts; Escape without "-StopOnESC" leaves the dialog open.
source "$(dirname "$0")/lib.sh"
start_display
run_host <"$3"

one=$(dialog_window) || fail "the window manager never showed the first dialog"
wait_active "$one"
xdotool type --delay 30 "hello"
xdotool key Tab
xdotool type --delay 30 "world"
xdotool key Return
two=$(dialog_window "$one") || fail "the window manager never showed the second dialog"
wait_active "$two"
# The field (186,64 to 464,88) holds twenty letters, about 140 pixels: a click at 70 pixels into
# the text lands between two of them.
xdotool mousemove --window "$two" 260 76 click 1
sleep 0.2
xdotool type "X"
xdotool key Return
three=$(dialog_window "$one" "$two") || fail "the window manager never showed the third dialog"
wait_active "$three"
xdotool key Escape
sleep 0.5
is_viewable "$three" || fail "Escape closed it"
xdotool key Return

finish_host
mapfile -t lines <"$work/out"
[ "${lines[0]:-}" = "|hello|world" ] || fail "two fields: ${lines[0]:-nothing}"
[[ "${lines[1]:-}" =~ ^\|a+X[ab]+$|^\|[ab]+Xb+$ ]] || fail "the click: ${lines[1]:-nothing}"
[ "${#lines[1]}" = 22 ] || fail "the click: ${lines[1]}"
[ "${lines[3]:-}" = "OK" ] || fail "after Escape: ${lines[3]:-nothing}"
echo "passed"
