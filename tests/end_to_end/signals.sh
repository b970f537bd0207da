#!/usr/bin/env bash
# A signal ends the console as "Close" does: the mode is left, X-rays are allowed again, the port is closed, and the
# exit status is 0. A second signal is not kept waiting.
set -euo pipefail
(($#)) || source "$(dirname "${BASH_SOURCE[0]}")/lib_each.bash" TERM INT HUP
source "$(dirname "${BASH_SOURCE[0]}")/lib_window.bash"

# What runs in the background here has the signal of the keyboard ignored.
printf '#!/bin/sh\nexec env --default-signal=INT,HUP %q "$@"\n' "$program" >"$home/quillon"
chmod +x "$home/quillon"
program=$home/quillon
signal() { kill -s "$1" "$program_pid"; }

plug_in startphase=2
begin_ready
tell 'phase 6'
sleep 2
signal "$1"
expect_end 5 "of SIG$1 in Calibration"
said CA0 || fail 'the generator was not told to leave Calibration'
[[ $(rays) == 1 ]] || fail "X-rays were left as RX$(rays)"
[[ $(grep -o ' tx "ST[0-9]*' "$home/wire" | tail -n 1) == *ST2 ]] || fail 'the generator is not back in Ready'

begin_ready
point close
xdotool mousedown 1
sleep 0.6
signal "$1"
expect_end 3 "of SIG$1 while the key was down"
xdotool mouseup 1
[[ $(rays) == 01 ]] || fail "the key held X-rays back: RX$(rays)"

begin_ready
press close 4.5
sleep 0.5
signal "$1"
expect_end 3 "of SIG$1 under the question of Close"

begin_ready
tell 'phase 6'
sleep 2
begin=${EPOCHREALTIME/[.,]/}
signal "$1"
sleep 0.8
signal "$1"
expect_end 3 "of two SIG$1"
(((${EPOCHREALTIME/[.,]/} - begin) / 1000 < 2200)) || fail 'the second signal was kept waiting'
