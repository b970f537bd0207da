#!/usr/bin/env bash
# A random session that is printed as a scenario brings the same frames on the line at the same times when the
# scenario runner plays it: a failure that a session finds can be looked at again.
set -euo pipefail

soak=$QUILLON_BIN_DIR/quillon-soak runner=$QUILLON_BIN_DIR/quillon-scenario
[[ -x $soak && -x $runner ]] || exit 77
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"

for seed in 3 31 77; do
    "$soak" print "$seed" 120 >session.scn 2>wanted
    "$runner" session.scn | grep '^[0-9]* tx ' >played
    [[ -s played ]] || { echo "seed $seed: nothing was sent"; exit 1; }
    diff wanted played || { echo "seed $seed: played otherwise than printed"; exit 1; }
done
