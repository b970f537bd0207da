#!/usr/bin/env bash
# A session of the real program over a pseudo-terminal is recorded; played by the scenario runner it gives the
# same frames at the same milliseconds. The switch for the log brings a warning before there is a window: nobody sits
# there, and the tour goes on.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"
runner=$QUILLON_BIN_DIR/quillon-scenario lister=$QUILLON_BIN_DIR/quillon-replay
[[ -x $runner && -x $lister ]] || exit 77

plug_in
cd "$home"
printf '[PORTS]\nCOM2=%s\n' "$link" >Quillon.ini
(sleep 4 && tell 'send HE99999') & # a report that no handler can finish
QUILLON_RECORD=session.scn "$program" --tour pictures -P2 -logFile >program.out 2>&1 3>&- || fail "the tour failed"
grep -q 'message box .*Remember to remove -logFile' program.out || fail "the warning did not come"

for file in program.out session.scn; do
    grep -q 'fault 6 ended message "HE99999" (fmessHU)$' "$file" || fail "the fault is not told in $file"
done
grep -q '^# [0-9]* run nothing -> entering configuration by key Quillon.cmbConfiguration$' session.scn ||
    fail "the change of the run is not told"

sed -n 's/^# \([0-9]* tx .*\)/\1/p' session.scn >sent
"$runner" session.scn >played.log 2>&1 || fail "the recording cannot be played"
grep -E '^[0-9]+ tx ' played.log >played || true
diff sent played >difference || fail "the frames differ: $(<difference)"
(($(wc -l <sent) >= 12)) || fail "only $(wc -l <sent) frames were sent"
grep -q ' tx "CF1"$' sent || fail "the key did not reach the generator"
! grep -q ' refused ' played.log || fail "a key could not be reached again"
# Into a file: a pipe that grep leaves early would end the program with a signal.
"$lister" session.scn >listing || fail "the recording cannot be listed"
grep -q 'CF1 .*configuration: on .*acknowledged after [0-9]* ms by' listing || fail "the listing does not tell the command"
