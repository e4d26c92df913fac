#!/bin/bash
# A display that cannot be reached never brings the host down: one message naming it, the run
# goes on headless, and a dialog that needs a person ends it with status 4, never a signal.
source "$(dirname "$0")/lib.sh"
start_display
n=5000
while [ -e "/tmp/.X11-unix/X$n" ]; do n=$((n + 1)); done
export DISPLAY=:$n  # a display nobody serves
"$host_program" --plugin "$plugin" --eval '1+1' >"$work/out" 2>"$work/err"
status=$?
[ "$status" = 0 ] || fail "a calculation ended with status $status"
expect_output 2
grep -q "the display \"$DISPLAY\" cannot be opened" "$work/err" || fail "no message names $DISPLAY"
[ "$(wc -l <"$work/err")" = 1 ] || fail "the message is not said once"

run_host <<'SCRIPT'
Mosa_Dialog ( "" ; "Nobody can see this." )
SCRIPT
finish_host 4
grep -q "the display \"$DISPLAY\" cannot be opened" "$work/err" || fail "no message names $DISPLAY"
grep -q "dialog 24272 waits for a person, and the display cannot be used" "$work/err" ||
  fail "the run stopped without saying why"
# Answers still drive a run where the display cannot be used.
run_host --answer "click 1" <<'SCRIPT'
Mosa_Dialog ( "" ; "Answered." )
SCRIPT
finish_host 0
expect_output 1
echo "passed"
