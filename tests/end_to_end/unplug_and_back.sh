#!/usr/bin/env bash
# The line is pulled out and plugged in again, first at rest, then in Configuration, then while the console asks for
# all values after a power-up: it lives, it does not spin, and it asks on as soon as there is somebody to answer.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"

plug_in startphase=2
start_program
heard_more_than() { (($(heard "$1") > $2)); }
wait_for 20 'no poll on the line' heard_more_than ST 1

for round in rest configuration power-up; do
    case $round in
    configuration)
        tell phase 8
        wait_for 10 'no report of the configuration' grep -q 'tx "ST8' "$home/wire"
        sleep 1
        ;;
    power-up)
        tell power off
        tell power on
        wait_for 20 'no refresh after the power-up' heard_more_than FLF 0
        ;;
    esac
    pull_out
    sleep 1
    before=$(processor)
    sleep 4
    alive
    used=$(($(processor) - before))
    # Sanitizers make the program slower, not busy.
    ((used < 120)) || fail "$used hundredths of a second of processor in 4 s without a line"
    : >"$home/wire"
    plug_in startphase=2
    wait_for 20 "$round: the console did not come back" heard_more_than ST 1
    alive
    printf '%s: back; %d hundredths of a second of processor in 4 s without a line\n' "$round" "$used"
done

# Begun without a device, it opens the port when one comes, whether its box was answered or not.
pull_out
kill "$program_pid"
wait "$program_pid" || true
start_program
wait_for 10 'the missing device is not told' grep -q 'COM1: .*No such file' "$home/program.out"
: >"$home/wire"
plug_in startphase=2
wait_for 20 'a device that came late was not opened' heard_more_than ST 1
alive
