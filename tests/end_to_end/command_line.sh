#!/usr/bin/env bash
# --help and --version of all programs, switches that do not exist, an unwritable QUILLON_RECORD or log, a device
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
grep -qx 'on the screen: V[0-9.]*' "$home/version" || fail 'the version that the screen shows is not told'
for name in quillon generator-sim quillon-scenario quillon-replay; do
    "$QUILLON_BIN_DIR/$name" -h >"$home/short" || fail "$name -h ends with $?"
    "$QUILLON_BIN_DIR/$name" --help | cmp -s - "$home/short" || fail "$name: --help and -h differ"
    "$QUILLON_BIN_DIR/$name" --version | head -n 1 >"$home/one"
    [[ $(<"$home/one") == "$name $(sed -n 's/^quillon //p' "$home/version")" ]] || fail "$name: $(<"$home/one")"
    [[ $name != quillon ]] || continue # every word is a switch of the console's: it hints, and starts
    status=0
    "$QUILLON_BIN_DIR/$name" --wibble </dev/null >"$home/out" 2>&1 || status=$?
    ((status == 2)) && grep -qF "$name --help" "$home/out" || fail "$name --wibble: $status, $(<"$home/out")"
done

plug_in startphase=2
printf '[CONFIG]\nPORT=1\n[PORTS]\nCOM1=%s\n' "$link" >"$home/Quillon.ini"
QUILLON_RECORD=$home/no/such/folder/session.scn "$program" --tour "$home/pictures" >"$home/program.out" 2>&1 3>&- ||
    fail 'a session that cannot be recorded does not run'
grep -q 'The recording cannot be written' "$home/program.out" || fail 'nobody says that nothing is recorded'

printf '[PORTS]\nCOM1=%s/none\n' "$home" >"$home/Quillon.ini"
mkdir "$home/log.txt"
"$program" --tour "$home/pictures" -logfile -fittoscreen >"$home/program.out" 2>&1 3>&- &
program_pid=$!
wait_for 10 'nobody says that there is no log' grep -q "log.txt cannot be written: " "$home/program.out"
wait_for 10 'no hint' grep -q '"-fittoscreen" is no switch; it is written -FitToScreen' "$home/program.out"
kill "$program_pid" && wait "$program_pid" || true
rmdir "$home/log.txt"

"$program" --tour "$home/pictures" -logFile >"$home/program.out" 2>&1 3>&- &
program_pid=$!
reason="COM1: $home/none: No such file or directory"
wait_for 10 'nobody says why the port cannot be opened' grep -qxF "quillon: $reason" "$home/program.out"
wait_for 10 'the box does not say what it always said' grep -q ': Cannot Open Port: 1$' "$home/program.out"
tr -d '\r' <"$home/log.txt" | grep -qxF -- "(--)$reason" || fail 'the log does not say why'
