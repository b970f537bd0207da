#!/usr/bin/env bash
# docs/safety.md names a guard for each hazard: every one must exist. What it says of networks and shells must hold.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

failures=0 checked=0
missing() {
    echo "missing: $*"
    failures=1
}

while read -r name; do
    checked=$((checked + 1))
    if [[ $name == */* ]]; then
        [[ -e $name ]] || missing "$name"
        continue
    fi
    grep -rqE "^TEST(_F|_P)?\(${name%.*}, ${name#*.}\)" tests --include='*.cpp' || missing "$name"
done < <(grep -oE '`([A-Za-z_]+\.[A-Za-z]+|(tests|scripts)/[A-Za-z_/.]+)`' docs/safety.md | tr -d '`' | grep -vE '\.(txt|ini)$' | sort -u)
((checked > 25)) || missing "the table: only $checked names were found in it"

if grep -rnE '\b(QTcp|QUdp|QLocalServer|QNetwork|QProcess)|\b(popen|fork|execl[pe]?|execv[pe]?|std::system|::socket) *\(' \
    src --include='*.h' --include='*.cpp'; then
    missing "the promise of no network and no other program"
fi
if grep -nE '^Exec=.*\b(sh|bash|env)\b' packaging/quillon.desktop; then
    missing "the promise of no shell in the menu's entry"
fi
exit "$failures"
