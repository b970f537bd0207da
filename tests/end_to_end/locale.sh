#!/usr/bin/env bash
# In a country that writes a comma the console shows the numbers of the generator with a point all the same.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"
command -v localedef >/dev/null || exit 77

mkdir "$home/locales"
localedef -i de_DE -f UTF-8 "$home/locales/de_DE.UTF-8" || exit 77
# This shell cannot take the locale over, so another one sets it for the program.
printf '#!/bin/sh\nexport LOCPATH=%q LC_ALL=de_DE.UTF-8\nexec "$@"\n' "$home/locales" >"$home/there"
printf '#!/bin/sh\nexec %q %q "$@"\n' "$home/there" "$program" >"$home/quillon"
chmod +x "$home/there" "$home/quillon"
[[ $("$home/there" env printf %.1f 1,5) == 1,5 ]] || fail 'the locale is not in force'
program=$home/quillon

plug_in startphase=2
start_program --tour "$home/pictures"
told() { grep -q "$1" "$home/program.out"; }
wait_for 20 'the console hears nothing' told 'phase: [^(]'
tell 'send DO125-01'
tell 'send WSF12.5'
wait_for 5 'the dose is not shown with a point' told ' dose: 12\.5$'
wait_for 5 'the fail-safe time is not shown with a point' told ' fail-safe: 12\.5$'
