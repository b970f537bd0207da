#!/usr/bin/env bash
# "Close" in a real window, held for so long and pressed at such a place between two polls: whatever waits for the
# line at that moment, the last that the generator hears of X-rays is that they are allowed.
set -euo pipefail

# One length of the hold on a display of its own, at four places of the poll.
held() {
    source "$(dirname "${BASH_SOURCE[0]}")/lib_window.bash"
    polls() { grep -cE ' rx "(ST|HU)\\' "$home/wire" || true; }
    polled() { (($(polls) > seen)); }
    ended() { ! kill -0 "$program_pid" 2>/dev/null; }
    local delay seen words
    plug_in startphase=2
    for delay in 0.05 0.7 1.3 2.0; do
        : >"$home/wire"
        start_window
        wait_for 20 'the refresh is not over' said 'VR?'
        seen=$(polls)
        wait_for 10 'the console does not poll' polled
        sleep "$delay"
        press close "$1"
        wait_for 10 'the program does not end' ended
        wait "$program_pid" || fail "it ended with status $?"
        program_pid=''
        sleep 0.3
        words=$(grep -o ' rx "RX[01]' "$home/wire" | grep -o '[01]$' | tr -d '\n')
        [[ $words =~ ^0+1$ ]] || fail "held $1 s, $delay s behind a poll, the generator heard RX$words"
    done
}

if (($#)); then
    held "$1"
    exit
fi
runs=()
for seconds in 0.08 0.15 0.3; do
    bash "$0" "$seconds" &
    runs+=($!)
done
status=0
for run in "${runs[@]}"; do
    wait "$run" || status=$?
done
exit "$status"
