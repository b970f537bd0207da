#!/usr/bin/env bash
# What the program says of itself: its help, a session which cannot be recorded and is no reason to stop, a device
# that is not there.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"

"$program" --help >"$home/help"
head -n 1 "$home/help" | grep -qx 'Usage: quillon \[SWITCH...\]' || fail 'the help does not begin with the usage'
for switch in -P -S -FitToScreen -ResetCounters -ORLA -logFile -swsync -d; do
    grep -q -- "^  $switch" "$home/help" || fail "the help does not tell $switch"
done
"$program" --version >"$home/version"
grep -qxE 'quillon [0-9]+(\.[0-9]+)+' "$home/version" || fail "version: $(<"$home/version")"

plug_in startphase=2
printf '[CONFIG]\nPORT=1\n[PORTS]\nCOM1=%s\n' "$link" >"$home/Quillon.ini"
QUILLON_RECORD=$home/no/such/folder/session.scn "$program" --tour "$home/pictures" >"$home/program.out" 2>&1 3>&- ||
    fail 'a session that cannot be recorded does not run'
grep -q 'The recording cannot be written' "$home/program.out" || fail 'nobody says that nothing is recorded'

printf '[PORTS]\nCOM1=%s/none\n' "$home" >"$home/Quillon.ini"
"$program" --tour "$home/pictures" -logFile >"$home/program.out" 2>&1 3>&- &
program_pid=$!
reason="COM1: $home/none: No such file or directory"
wait_for 10 'nobody says why the port cannot be opened' grep -qxF "quillon: $reason" "$home/program.out"
wait_for 10 'the box does not say what it always said' grep -q ': Cannot Open Port: 1$' "$home/program.out"
tr -d '\r' <"$home/log.txt" | grep -qxF -- "(--)$reason" || fail 'the log does not say why'
