#!/bin/bash
# A message too long for the screen scrolls: Page Down, End and Home move it, and a person can
# select part of it with the mouse and copy it.
source "$(dirname "$0")/lib.sh"
start_display
run_host <<'SCRIPT'
Let ( [ line = "Every line of this long message is the same, to be read and copied.¶" ; eight = line & line & line & line & line & line & line & line ] ; Mosa_Dialog ( "" ; "First line to copy.¶" & Substitute ( "xxxxxxxxxx" ; "x" ; eight ) & "Last line." ) )
SCRIPT
one=$(dialog_window) || fail "the window manager never showed the dialog"
wait_active "$one"
# Select the start of the first line (the message begins at 72,16) and copy it.
xdotool mousemove --window "$one" 73 22 mousedown 1 mousemove --window "$one" 160 22 mouseup 1
xdotool key ctrl+c
copied() {
  local text
  text=$(xclip -o -selection clipboard 2>/dev/null)
  [ ${#text} -ge 5 ] && [[ "First line to copy." == "$text"* ]]
}
poll 5 copied || fail "the clipboard holds \"$(xclip -o -selection clipboard 2>&1)\""
picture_differs() {
  picture "$one" "$work/now.xwd"
  ! cmp -s "$work/now.xwd" "$1" && cp "$work/now.xwd" "$2"
}
picture "$one" "$work/top.xwd"
xdotool key Next
poll 5 picture_differs "$work/top.xwd" "$work/page.xwd" || fail "Page Down did not scroll"
xdotool key End
poll 5 picture_differs "$work/page.xwd" "$work/end.xwd" || fail "End did not scroll further"
xdotool key Home
poll 5 picture_differs "$work/end.xwd" "$work/home.xwd" || fail "Home did not scroll back"
cmp -s "$work/top.xwd" "$work/home.xwd" || fail "Home did not bring back the top"
xdotool key Return
finish_host
expect_output 1
echo "passed"
