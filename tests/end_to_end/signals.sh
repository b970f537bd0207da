#!/usr/bin/env bash
# A signal ends the console as "Close" does: the mode is left, X-rays are allowed again, the port is closed, and the
# exit status is 0. A second signal is not kept waiting.
set -euo pipefail

# One signal on a display of its own.
ended_by() {
    source "$(dirname "${BASH_SOURCE[0]}")/lib_window.bash"
    local signal=$1 begin
    # What runs in the background here has the signal of the keyboard ignored.
    printf '#!/bin/sh\nexec env --default-signal=INT,HUP %q "$@"\n' "$program" >"$home/quillon"
    chmod +x "$home/quillon"
    program=$home/quillon
    ended() { ! kill -0 "$program_pid" 2>/dev/null; }
    begin_ready() {
        : >"$home/wire"
        start_window
        wait_for 20 'the refresh is not over' said 'VR?'
        sleep 1
    }
    expect_end() {
        wait_for "$1" "the program goes on after SIG$signal $2" ended
        local status=0
        wait "$program_pid" || status=$?
        program_pid=''
        ((status == 0)) || fail "it ended with status $status after SIG$signal $2"
        sleep 0.3
    }
    rays() { grep -o ' rx "RX[01]' "$home/wire" | grep -o '[01]$' | tr -d '\n' || true; }

    plug_in startphase=2
    begin_ready
    tell 'phase 6'
    sleep 2
    kill -s "$signal" "$program_pid"
    expect_end 5 'in Calibration'
    said CA0 || fail 'the generator was not told to leave Calibration'
    [[ $(rays) == 1 ]] || fail "X-rays were left as RX$(rays)"
    [[ $(grep -o ' tx "ST[0-9]*' "$home/wire" | tail -n 1) == *ST2 ]] || fail 'the generator is not back in Ready'

    begin_ready
    point close
    xdotool mousedown 1
    sleep 0.6
    kill -s "$signal" "$program_pid"
    expect_end 3 'while the key was down'
    xdotool mouseup 1
    [[ $(rays) == 01 ]] || fail "the key held X-rays back: RX$(rays)"

    begin_ready
    press close 4.5
    sleep 0.5
    kill -s "$signal" "$program_pid"
    expect_end 3 'under the question of Close'

    begin_ready
    tell 'phase 6'
    sleep 2
    begin=${EPOCHREALTIME/[.,]/}
    kill -s "$signal" "$program_pid"
    sleep 0.8
    kill -s "$signal" "$program_pid"
    expect_end 3 'and another'
    (((${EPOCHREALTIME/[.,]/} - begin) / 1000 < 2200)) || fail 'the second signal was kept waiting'
}

if (($#)); then
    ended_by "$1"
    exit
fi
runs=()
for signal in TERM INT HUP; do
    bash "$0" "$signal" &
    runs+=($!)
done
status=0
for run in "${runs[@]}"; do
    wait "$run" || status=$?
done
exit "$status"
