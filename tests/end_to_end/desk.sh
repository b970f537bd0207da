#!/usr/bin/env bash
# The machine's window and the console: pictures of both come from a tour; whichever is asked to end, both are gone
# within 5 s, and the generator is given back. In a lesson the machine stays when the console closes.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"
desk=$QUILLON_BIN_DIR/generator-desk
[[ -x $desk ]] || exit 77
mkfifo "$commands"
exec 3<>"$commands"

# start_both [ARGUMENT...]: the console writes down what it sends.
start_both() {
    rm -f "$home/record"
    QUILLON_RECORD=$home/record env --default-signal=INT "$desk" --home "$home" --console "$program" "$@" \
        <"$commands" >"$home/program.out" 2>&1 3>&- &
    program_pid=$!
    wait_for 10 'the console does not start' console
}
console() { pgrep -P "$program_pid" -x quillon >/dev/null; }
sent() { grep -q " tx \"$1\"" "$home/record"; }
gone() { ! kill -0 "$program_pid" 2>/dev/null; }

# expect_both_gone HOW
expect_both_gone() {
    wait_for 5 "not both are gone $1" gone
    local status=0
    wait "$program_pid" || status=$?
    program_pid=''
    ((status == 0)) || fail "status $status $1"
}
# What the console leaves behind: Calibration, and X-rays allowed.
expect_given_back() {
    sent CA0 || fail "Calibration was not left $1"
    [[ $(grep -o ' tx "RX[01]' "$home/record" | tail -n 1) == *1 ]] || fail "X-rays were not allowed $1"
}

start_both --tour "$home"
wait_for 10 'no pictures of both' test -s "$home/2-generator-answers-desk.png"
kill -INT "$program_pid"
wait_for 5 'the tour did not end' gone
program_pid=''

start_both startphase=6
wait_for 10 'nothing was asked' sent ST
kill -INT "$program_pid"
expect_both_gone 'after SIGINT'
expect_given_back 'after SIGINT'

start_both startphase=6
wait_for 10 'nothing was asked' sent ST
pkill -TERM -P "$program_pid" -x quillon
expect_both_gone 'after the end of the console'
expect_given_back 'after the end of the console'

printf 'title T\nstep phase = off : Off\n' >"$home/off.lesson"
start_both --lesson "$home/off.lesson"
wait_for 10 'nothing was asked' sent ST
pkill -TERM -P "$program_pid" -x quillon
closed() { ! console; }
wait_for 5 'the console does not end' closed
sleep 0.3
gone && fail 'the machine went with the console in the middle of a lesson'
echo 'power off' >&3
wait_for 5 'the lesson is not solved' grep -q 'lesson solved 100' "$home/program.out"
kill -TERM "$program_pid"
expect_both_gone 'in a lesson'
