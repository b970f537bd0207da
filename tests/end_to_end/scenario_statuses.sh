#!/usr/bin/env bash
# The scenario runner's exit status and messages: a failed expectation gives status 1.
set -euo pipefail

runner=$QUILLON_BIN_DIR/quillon-scenario
[[ -x $runner ]] || exit 77
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"

failures=0
# check STATUS TEXT SCENARIO: runs it from standard input; TEXT must stand in what it prints or complains of.
check() {
    local status=0 output
    output=$(printf '%b' "$3" | "$runner" - 2>&1) || status=$?
    if ((status != $1)) || [[ $output != *"$2"* ]]; then
        printf 'for %s\nwanted %s and "%s", got %s and\n%s\n\n' "$3" "$1" "$2" "$status" "$output"
        failures=1
    fi
}

check 0 '"19200,n,8,1"' 'start\nexpect 0 opened 1\nreject end\ncount 1 opened'
check 1 '0 fail 2: expect closed 1' 'start\nexpect closed 1\nexpect opened'
check 1 '0 fail 1: reject opened' 'reject opened'
check 1 'fail 1: expect nothing' 'expect nothing\nreject fail\ncount 0 nothing'

check 2 '-:2: no such command: "wibble"' '# comment\nwibble'
check 2 '-:2: no "end"' '\nfile Quillon.ini\n[CONFIG]'
check 2 '-:1: no such control: "Quillon.cmbNo"' 'click Quillon.cmbNo'
check 2 '-:1: fault 450' 'call KVPUp 1'
check 2 '-:1: no such escape: \q' 'msg \\q'
check 2 '-:2: the simulated generator answers "?' 'simulate\nsim wibble'

# Several files: each from a fresh start, and the worst status wins.
printf 'expect closed\n' >fails.scn
printf 'args -P3\nstart\nexpect opened 3\n' >holds.scn
status=0
output=$("$runner" fails.scn missing.scn holds.scn 2>&1) || status=$?
wanted='== fails.scn
0 opened 1 "19200,n,8,1"
0 fail 1: expect closed
== missing.scn
missing.scn:0: cannot be read
== holds.scn
0 opened 3 "19200,n,8,1"'
if ((status != 2)) || [[ $output != "$wanted" ]]; then
    printf 'several files: status %s and\n%s\n' "$status" "$output"
    failures=1
fi
exit "$failures"
