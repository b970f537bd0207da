#!/usr/bin/env bash
# "Close" in a real window, held for so long and pressed at such a place between two polls: whatever waits for the
# line at that moment, the last that the generator hears of X-rays is that they are allowed.
set -euo pipefail
(($#)) || source "$(dirname "${BASH_SOURCE[0]}")/lib_each.bash" 0.08 0.15 0.3
source "$(dirname "${BASH_SOURCE[0]}")/lib_window.bash"

polls() { grep -cE ' rx "(ST|HU)\\' "$home/wire" || true; }
polled() { (($(polls) > seen)); }
plug_in startphase=2
for delay in 0.05 0.7 1.3 2.0; do
    begin_ready
    seen=$(polls)
    wait_for 10 'the console does not poll' polled
    sleep "$delay"
    press close "$1"
    expect_end 10 'of Close'
    [[ $(rays) =~ ^0+1$ ]] || fail "held $1 s, $delay s behind a poll, the generator heard RX$(rays)"
done
