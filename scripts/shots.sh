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

# The list dialog, its corner dragged to 600 by 380, a row chosen by typing its first letter.
shot_after list-resized 'Mosa_ListDialog ( "-NoteIcon -dialogName=Offices. -Button1NeedsSelection" ; "Which office should handle the order? Type a letter to jump to a city." ; "Choose" ; "Cancel" ; "" ; "" ; "Amsterdam|Athens|Berlin|Brussels|Copenhagen|Dublin|Helsinki|Lisbon|Ljubljana|London|Madrid|Oslo|Paris|Prague|Rome|Stockholm|Tallinn|Vienna|Warsaw|Zagreb" )' \
  'resize 600 380' 'key l' 'key l' 'click 1'

# The ones the README shows.
cp "$out/caution.png" docs/dialog-caution.png
cp "$out/long-message.png" docs/dialog-long-message.png
cp "$out/custom-icon.png" docs/dialog-custom-icon.png
cp "$out/big-input.png" docs/big-input.png
cp "$out/list-resized.png" docs/list-dialog-resized.png
