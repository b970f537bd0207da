#!/usr/bin/env bash
# What the program says of itself, and that a session which cannot be recorded is said, and is no reason to stop.
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
