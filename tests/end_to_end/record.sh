#!/usr/bin/env bash
# A session of the real program over a pseudo-terminal is recorded; played by the scenario runner it gives the
# same frames at the same milliseconds. The switch for the log brings a warning before there is a window: nobody sits
# there, and the tour goes on.
set -euo pipefail

for program in quillon generator-sim quillon-scenario quillon-replay; do
    [[ -x $QUILLON_BIN_DIR/$program ]] || exit 77
done
directory=$(mktemp -d)
cd "$directory"
trap 'kill "$generator" 2>/dev/null || true; rm -rf "$directory"' EXIT
export QUILLON_HOME=$directory XDG_CONFIG_HOME=$directory
printf '[CONFIG]\nPORT=2\n\n[PORTS]\nCOM2=%s/line\n' "$directory" >Quillon.ini

# The generator lives as long as its input does.
mkfifo commands
exec 3<>commands
"$QUILLON_BIN_DIR/generator-sim" --link "$directory/line" <commands >generator.log 2>&1 3>&- &
generator=$!
for ((tries = 0; tries < 100; ++tries)); do
    [[ -e line ]] && break
    sleep 0.1
done

fail() {
    printf '%s\n' "$*"
    cat generator.log tour.log session.scn
    exit 1
}
QUILLON_RECORD=session.scn "$QUILLON_BIN_DIR/quillon" --tour pictures -P2 -logFile >tour.log 2>&1 || fail "the tour failed"
grep -q 'message box .*Remember to remove -logFile' tour.log || fail "the warning did not come"

sed -n 's/^# \([0-9]* tx .*\)/\1/p' session.scn >sent
"$QUILLON_BIN_DIR/quillon-scenario" session.scn >played.log 2>&1 || fail "the recording cannot be played"
grep -E '^[0-9]+ tx ' played.log >played || true
diff sent played >difference || fail "the frames differ: $(<difference)"
(($(wc -l <sent) >= 12)) || fail "only $(wc -l <sent) frames were sent"
grep -q ' tx "CF1"$' sent || fail "the key did not reach the generator"
! grep -q ' refused ' played.log || fail "a key could not be reached again"
# Into a file: a pipe that grep leaves early would end the program with a signal.
"$QUILLON_BIN_DIR/quillon-replay" session.scn >listing || fail "the recording cannot be listed"
grep -q 'CF1 .*configuration: on .*acknowledged by' listing || fail "the listing does not tell the command"
