#!/bin/bash
# What the window manager sees of a dialog: its title (the host program's name when the script
# gave none), a modal dialog that asks for no minimise or maximise button, a close box that acts
# as Escape (which never ends the standard dialog), and a dialog minimised anyway or taken off the
# screen from outside that comes back.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Mosa_Dialog ( "-dialogName=Orders of the day." ; "A title from the switches." )
Mosa_Dialog ( "" ; "No title: the program's name." )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the first dialog"
wait_active "$one"
title=$(property "$one" _NET_WM_NAME)
[ "$title" = '"Orders of the day"' ] || fail "the window manager sees the title $title"
property "$one" _NET_WM_WINDOW_TYPE | grep -q _NET_WM_WINDOW_TYPE_DIALOG || fail "not a dialog"
property "$one" _NET_WM_STATE | grep -q _NET_WM_STATE_MODAL || fail "not modal"
# Motif hints: functions without minimise (8) and maximise (16), no such buttons (32, 64).
read -r flags functions decorations _ < <(property "$one" _MOTIF_WM_HINTS | tr -d ,)
((functions & 24)) && fail "the dialog asks for minimise or maximise ($functions)"
((decorations & 96)) && fail "the dialog asks for minimise or maximise buttons ($decorations)"
property "$one" _NET_WM_ALLOWED_ACTIONS | grep -q MAXIMIZE && fail "the window can be maximised"

# The close box: Escape, which the standard dialog ignores. It stays, and still answers.
wmctrl -i -c "$one"
sleep 0.5
xdotool search --onlyvisible --classname '^mosa$' | grep -qx "$one" || fail "the close box closed it"
[ -s "$work/out" ] && fail "the close box answered the dialog"
# Minimised anyway (openbox offers it to every dialog): it is back on screen at once.
xdotool windowminimize "$one"
poll 5 is_viewable "$one" || fail "the minimised dialog did not come back"
wait_active "$one"
# Taken off the screen from outside: that is the close box too, and it comes back.
xdotool windowunmap "$one"
back=$(dialog_window) || fail "the dialog taken off the screen did not come back"
wait_active "$back"
[ -s "$work/out" ] && fail "taking the window off the screen answered the dialog"
xdotool key Return
wait_lines 1 || fail "Return did not answer the dialog after the close box and minimising"

two=$(dialog_window "$one" "$back") || fail "the window manager never showed the second dialog"
title=$(property "$two" _NET_WM_NAME)
[ "$title" = '"Mosa Host"' ] || fail "a dialog without a title shows $title"
wait_active "$two"
xdotool key Return
finish_host
expect_output 1 1
echo "passed"
