#!/bin/bash
# A start-up alert waits for a person and looks like the dialogs: the program's name as its
# title, no minimise or maximise, placed as the dialogs are (centred across, a third down), and
# Return dismisses it.
source "$(dirname "$0")/lib.sh"
start_display
MOSA_DISABLE=toolkit-version run_host <<'SCRIPT'
1 + 1
SCRIPT
alert=$(dialog_window) || fail "the window manager never showed the alert"
wait_active "$alert"
title=$(property "$alert" _NET_WM_NAME)
[ "$title" = '"Mosa Host"' ] || fail "the alert's title is $title"
read -r _ functions _ < <(property "$alert" _MOTIF_WM_HINTS | tr -d ,)
((functions & 24)) && fail "the alert asks for minimise or maximise ($functions)"
eval "$(xdotool getwindowgeometry --shell "$alert")"
centre=$((X + WIDTH / 2)) third=$(((768 - HEIGHT) / 3))
((centre > 500 && centre < 524)) || fail "the alert is not centred across (x $X, width $WIDTH)"
((Y > third - 30 && Y < third + 30)) || fail "the alert is not a third down (y $Y, height $HEIGHT)"
[ -s "$work/out" ] && fail "the run went on while the alert waited"
xdotool key Return
finish_host
expect_output 2
echo "passed"
