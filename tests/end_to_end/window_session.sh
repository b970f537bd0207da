#!/usr/bin/env bash
# A short session in a real window: configuration and counters by the keys, then the end. Afterwards there is no
# process, the port is free, and "log.txt" holds what went over the line, all of it and in its order.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_window.bash"

last_phase() { [[ $(grep -o ' tx "ST[0-9]*' "$home/wire" | tail -n 1) == " tx \"ST$1" ]]; }

plug_in startphase=2
start_window -P1 -FitToScreen -logFile
sleep 1.5
press log-ok
wait_for 20 'no report' told ST2
sleep 14 # the refresh is over and the mode keys are alive
press configuration
wait_for 10 'configuration was not reached' told ST8
sleep 4
press configuration
wait_for 10 'configuration was not left' last_phase 2
sleep 8
press counters
wait_for 15 'the last counter was not read' told TC2
sleep 1
press counters
sleep 2
readlink /proc/"$program_pid"/fd/* | grep -qxF "$(readlink "$link")" || fail 'the port is not open while it works'
press close
expect_end 5 'of Close'

# Both sides of the line, one message a row. What the generator says after the end nobody can log.
sed -n 's/^[0-9]* \([rt]\)x "\(.*\)"$/\1 \2/p' "$home/wire" | sed 's/\\x03$//; s/\\x0D\\x0A$//' >"$home/line"
tr -d '\r' <"$home/log.txt" | sed -n 's/^(Tx)/r /p; s/^(Rx)/t /p' >"$home/log"
for side in r t; do
    grep "^$side" "$home/line" >"$home/line.$side"
    grep "^$side" "$home/log" >"$home/log.$side"
done
cmp "$home/line.r" "$home/log.r" || fail 'what was sent is not what the log says'
cmp <(head -n "$(wc -l <"$home/log.t")" "$home/line.t") "$home/log.t" || fail 'what was heard is not what the log says'
unheard=$(($(wc -l <"$home/line.t") - $(wc -l <"$home/log.t")))
((unheard <= 2)) || fail "$unheard answers are missing in the log"
printf '%d messages sent and %d heard, all of them in the log; %d came after the end\n' \
    "$(wc -l <"$home/log.r")" "$(wc -l <"$home/log.t")" "$unheard"
