#!/usr/bin/env bash
# Pictures of the dialogs in their variants, drawn by the Qt toolkit off screen: every variant
# into $BUILD/shots/ (BUILD defaults to build-release, built here with the release preset when it
# has no mosa-host yet), and the ones that the README shows into docs/.
set -euo pipefail
cd "$(dirname "$0")/.."
build="${BUILD:-build-release}"
if [ ! -x "$build/bin/mosa-host" ] || [ ! -e "$build/bin/libmosa_toolkit_qt.so" ]; then
  export CCACHE_DIR="${CCACHE_DIR:-$HOME/.cache/ccache}"
  cmake --preset release
  cmake --build --preset release -j "$(nproc)" --target mosa-host Mosa.fmx mosa_toolkit_qt
fi
export QT_QPA_PLATFORM=offscreen
out="$build/shots"
rm -rf "$out" && mkdir -p "$out"

# shot NAME EXPRESSION: the dialog as it opens, answered with a click on button 1.
shot() {
  local name=$1 expr=$2 tmp="$out/.tmp"
  rm -rf "$tmp"
  "$build/bin/mosa-host" --ui qt --answer 'click 1' --shots "$tmp" --eval "$expr" >/dev/null
  mv "$(ls "$tmp"/*-open.png | tail -1)" "$out/$name.png"
  rm -rf "$tmp"
  echo "$out/$name.png"
}

shot note 'Mosa_Dialog ( "-NoteIcon" ; "The import is complete: 1,204 records were added to “Customers”." ; "OK" )'
shot caution 'Mosa_Dialog ( "-CautionIcon" ; "Do you want to save the changes you made to “Invoices”?¶Your changes will be lost if you don’t save them." ; "Save" ; "Cancel" ; "Don’t Save" )'
shot stop 'Mosa_Dialog ( "-StopIcon" ; "The file “Invoices.fmp12” could not be opened because another user has it open." ; "OK" ; "Retry" )'
shot no-icon 'Mosa_Dialog ( "" ; "Continue with the next record?" ; "Continue" ; "Stop" )'
shot four-buttons 'Mosa_Dialog ( "-NoteIcon" ; "Which report would you like to print for the 12 selected records?" ; "Summary" ; "Cancel" ; "Details" ; "Both" )'
shot long-message 'Mosa_Dialog ( "-CautionIcon" ; "The import finished, but 37 of the 1,204 records need your attention. " & Substitute ( "xxxx" ; "x" ; "Some records could not be matched to an existing customer, so they were added as new customers; others had dates that could not be read and were left empty. " ) & "Open the import log to review them." ; "OK" ; "Show Log" )'
shot custom-icon 'Mosa_IconControl ( "-SetCustomIcon" ; ReadFileAsContainer ( "docs/custom-icon.jpg" ) ) & Mosa_Dialog ( "-CustomIcon" ; "Your photo has been added to the contact “Ada Lovelace”." ; "OK" ; "Undo" )'
shot big-input 'Mosa_BigInputDialog ( "-NoteIcon -Width=620 -Height=380 -dialogName=Meeting notes." ; "Notes of today’s meeting. Return starts a new line, Enter saves." ; "Save" ; "Cancel" ; "" ; "" ; "Agenda:¶1. Budget for the autumn: the numbers from Maria, and what the new printer costs.¶2. Hiring: two interviews next week, Köln and Zürich.¶3. Summer party: 12 July, in the garden if the weather allows.¶¶Decisions:¶- The budget stands as drafted.¶- Ana writes to both candidates by Friday.¶" )'

# shot_last NAME KIND EXPRESSION: the last picture of that kind (open, state) the calculation left.
shot_last() {
  local name=$1 kind=$2 expr=$3 tmp="$out/.tmp"
  rm -rf "$tmp"
  "$build/bin/mosa-host" --ui qt --answer 'click 1' --shots "$tmp" --eval "$expr" >/dev/null
  mv "$(ls "$tmp"/*-"$kind".png | tail -1)" "$out/$name.png"
# shot_after NAME EXPRESSION ANSWER...: the dialog after the answers but the last one.
shot_after() {
  local name=$1 expr=$2 tmp="$out/.tmp" answers=()
  shift 2
  for answer in "$@"; do answers+=(--answer "$answer"); done
  rm -rf "$tmp"
  "$build/bin/mosa-host" --ui qt "${answers[@]}" --shots "$tmp" --eval "$expr" >/dev/null
  mv "$(ls "$tmp"/*-state.png | tail -1)" "$out/$name.png"
  rm -rf "$tmp"
  echo "$out/$name.png"
}

shot_last progress state 'Mosa_ProgressBar ( "" ; "show" ; 120 ; "Copying 120 invoices to “Archive 2024”…" ) & Mosa_ProgressBar ( "" ; "incr" ; 45 ) & Mosa_ProgressBar ( "" ; "stop" )'
shot_last progress-busy state 'Mosa_ProgressBar ( "" ; "show" ; 0 ; "Waiting for the server to answer…" ) & Mosa_ProgressBar ( "" ; "incr" ; 1 ) & Mosa_ProgressBar ( "" ; "stop" )'
shot_last flash open 'Mosa_FlashDialog ( "-NoteIcon" ; 60 ; "Saved: 12 records were exported to “Invoices.csv”." )'

shot long-titles 'Mosa_Dialog ( "-CautionIcon" ; "Close every window of the solution?" ; "Save and Close All Windows" ; "Cancel" ; "Close Without Saving Any of the Changes" )'
for icon in note caution stop; do
  QT_SCALE_FACTOR=2 shot "$icon-2x" "Mosa_Dialog ( \"-${icon}Icon\" ; \"Drawn from the icon theme at twice the size.\" ; \"OK\" )"
done

# The focus is drawn in the active window only, so this picture is taken on a display of its own
# (Xvfb with openbox) after two Tabs.
focus_shot() {
  if ! command -v Xvfb >/dev/null || ! command -v openbox >/dev/null; then
    echo "no Xvfb and openbox: docs/dialog-focus.png stays as it is"
    return
  fi
  local tmp="$out/.focus" number
  mkdir -p "$tmp"
  Xvfb -displayfd 5 -screen 0 1024x768x24 -nolisten tcp 5>"$tmp/display" 2>/dev/null &
  local xvfb=$!
  for _ in $(seq 100); do [ -s "$tmp/display" ] && break; sleep 0.05; done
  number=$(cat "$tmp/display")
  DISPLAY=":$number" openbox --sm-disable >/dev/null 2>&1 &
  local wm=$!
  sleep 0.5
  DISPLAY=":$number" QT_QPA_PLATFORM=xcb "$build/bin/mosa-host" --ui qt --shots "$tmp" \
    --answer 'wait 30' --answer 'key Tab' --answer 'key Tab' --answer 'click 1' \
    --eval 'Mosa_Dialog ( "-NoteIcon" ; "Tab moves the focus among the buttons; Space presses the one that shows it." ; "Print" ; "Cancel" ; "Preview" )' >/dev/null
  kill "$wm" "$xvfb"
  cp "$(ls "$tmp"/*-state.png | tail -1)" "$out/focus.png"
  cp "$out/focus.png" docs/dialog-focus.png
  rm -rf "$tmp"
}
focus_shot
# The list dialog, its corner dragged to 600 by 380, a row chosen by typing its first letter.
shot_after list-resized 'Mosa_ListDialog ( "-NoteIcon -dialogName=Offices. -Button1NeedsSelection" ; "Which office should handle the order? Type a letter to jump to a city." ; "Choose" ; "Cancel" ; "" ; "" ; "Amsterdam|Athens|Berlin|Brussels|Copenhagen|Dublin|Helsinki|Lisbon|Ljubljana|London|Madrid|Oslo|Paris|Prague|Rome|Stockholm|Tallinn|Vienna|Warsaw|Zagreb" )' \
  'resize 600 380' 'key l' 'key l' 'click 1'

# The ones the README shows.
cp "$out/caution.png" docs/dialog-caution.png
cp "$out/long-message.png" docs/dialog-long-message.png
cp "$out/custom-icon.png" docs/dialog-custom-icon.png
cp "$out/long-titles.png" docs/dialog-long-titles.png
for icon in note caution stop; do cp "$out/$icon-2x.png" "docs/dialog-$icon-2x.png"; done
cp "$out/big-input.png" docs/big-input.png
cp "$out/progress.png" docs/progress.png
cp "$out/progress-busy.png" docs/progress-busy.png
cp "$out/flash.png" docs/flash-note.png

# The input dialog with all nine inputs: edit fields, two pop-ups, two bullet fields, two check
# boxes.
shot input-nine 'Mosa_SetLabels ( "" ; "Name" ; "E-mail" ; "Phone" ; "Country" ; "Plan" ; "Password" ; "Confirm" ; "Send me the monthly newsletter" ; "I accept the terms of service" ) & Mosa_SetInput ( "" ; "Ada Lovelace" ; "ada@example.org" ; "" ; "United Kingdom" ; "Team" ; "analytical" ; "analytical" ; "1" ; "0" ) & Mosa_SetPopup ( "-popup4" ; "France¶Germany¶Norway¶United Kingdom¶-¶Other" ) & Mosa_SetPopup ( "-popup5" ; "Personal¶Team¶Enterprise" ) & Mosa_InputDialog ( "-NoteIcon -popup4 -popup5 -Bullet6 -Bullet7 -Checkbox8 -Checkbox9 -dialogName=New account" ; 9 ; "Create an account for the new colleague. The password must be typed twice." ; "Create" ; "Cancel" )'
cp "$out/input-nine.png" docs/input-dialog.png
cp "$out/list-resized.png" docs/list-dialog-resized.png
