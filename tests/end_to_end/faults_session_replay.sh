#!/usr/bin/env bash
# A walk that is printed as a scenario brings the same frames on the line at the same times when the
# scenario runner plays it: what a search finds can be looked at again.
set -euo pipefail

explore=$QUILLON_BIN_DIR/quillon-explore runner=$QUILLON_BIN_DIR/quillon-scenario
[[ -x $explore && -x $runner ]] || exit 77
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cd "$directory"

for walk in "simulated 3" "simulated 31" "told 77"; do
    read -ra words <<<"$walk"
    "$explore" print "${words[@]}" >session.scn 2>wanted
    "$runner" session.scn | grep '^[0-9]* tx ' >played
    [[ -s played ]] || { echo "$walk: nothing was sent"; exit 1; }
    diff wanted played || { echo "$walk: played otherwise than printed"; exit 1; }
done
