#!/usr/bin/env bash
# The real program's polls against their nominal pace of 1350 ms, as the generator's end sees them. On a machine
# that is busy with other things lateness is that machine's, so only a pace that is wrong fails.
# timing_frames.sh [SECONDS]
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"

seconds=${1:-15}
plug_in startphase=2
start_program
wait_for 20 'no poll on the line' grep -q 'rx "HU' "$home/wire"
sleep 12 # the refresh after the first report is over
: >"$home/wire"
sleep "$seconds"
alive
# Lines are "MS rx "HU..."; every frame on an idle line is a poll.
awk '/ rx "(HU|ST)/ { if (last != "") print $1 - last - 1350; last = $1 }' "$home/wire" | sort -n >"$home/late"
count=$(wc -l <"$home/late")
((count >= seconds * 1000 / 1350 / 2)) || fail "only $count polls in $seconds s"
at() { sed -n "$((count * $1 / 100 + 1))p" "$home/late"; }
median=$(at 50) late=$(at 99) early=$(sed -n 1p "$home/late")
printf '%d intervals; from nominal in ms: earliest %s, median %s, 99 %% %s\n' "$count" "$early" "$median" "$late"
((median >= -5 && median <= 100)) || fail "the median poll is $median ms off"
