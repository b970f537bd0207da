#!/usr/bin/env bash
# The far end reads nothing for a while and its buffers are full. When it reads again it gets no old frames in a
# bunch, and "log.txt" tells which were sent and which were not.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"
trap 'kill -CONT "$generator_pid" 2>/dev/null || true; finish' EXIT

logged() { tr -d '\r' <"$home/log.txt" | grep -cE "^\($1\)(ST|HU)$" || true; }
polls() { grep -cE ' rx "[^"]*(ST|HU)\\x0D' "$home/wire" || true; }
heard_more_than() { (($(polls) > $1)); }
sent_one() { (($(logged Tx) > 0)); }

plug_in startphase=2 line=0 # what fills the buffers is not to take its time
kill -STOP "$generator_pid"
exec 4<>"$link" # a way to the far end's buffers beside the program
start_program --tour "$home/pictures" -logFile
wait_for 10 'no poll' sent_one
# The system moves what it has taken on from one buffer to the next: more fits a moment later.
for _ in 1 2 3; do
    yes "$(printf 'x%.0s' {1..98})" | tr '\n' '\003' | dd bs=99 iflag=fullblock oflag=nonblock status=none >&4 2>/dev/null || true
    sleep 0.2
done
taken=$(logged Tx)
sleep 7.5
alive
# A poll goes out each 1.35 s: five or six in that time, and two at most are younger than 2 s.
lost=$(logged Nx)
((lost >= 3)) || fail "$lost polls are told as not sent"
(($(logged Tx) == taken)) || fail 'polls are told as sent to a far end whose buffers are full'
kill -CONT "$generator_pid"
sleep 0.7
late=$(($(polls) - taken))
((late <= 2)) || fail "$late polls came in a bunch"
wait_for 5 'the console does not ask on' heard_more_than $((taken + late))
printf '%d polls were not sent, %d came when the far end read again\n' "$lost" "$late"
