#!/usr/bin/env bash
# Every session of the real program is recorded without preparation, whatever becomes of the program, of the process that
# writes and of the disk; and what was recorded plays as it went. Each case runs on its own, all at once.
set -euo pipefail
if (($# == 0)); then
    set -- kills both writer stopped folder starts
    source "$(dirname "${BASH_SOURCE[0]}")/lib_each.bash"
fi
source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"
runner=$QUILLON_BIN_DIR/quillon-scenario lister=$QUILLON_BIN_DIR/quillon-replay
[[ -x $runner && -x $lister ]] || exit 77
unset XDG_RUNTIME_DIR
recordings=$home/recordings

begin() {
    : >"$home/wire"
    start_program
    wait_for 10 'nothing was sent' heard_some
    writer_pid=$(pgrep -P "$program_pid" || true)
}
heard_some() { grep -q ' rx ' "$home/wire"; }
gone() { ! grep -q . "/proc/$1/cmdline"; }
# The program is killed, and what else is named with it.
kill_now() {
    kill -KILL "$program_pid" "$@"
    wait "$program_pid" 2>/dev/null || true
    program_pid=''
    wait_for 5 'the writer does not end' gone "$writer_pid"
}
end_in_order() {
    local status=0
    kill -TERM "$program_pid"
    wait "$program_pid" || status=$?
    program_pid=''
    ((status == 0)) || fail "status $status at the end"
}

# as_it_went NUMBER LOST: the recording has what the generator has heard, but for the last LOST frames, and plays as it is.
as_it_went() {
    local part
    part=$recordings/00000$1.000.scn
    [[ ! -e $part.gz ]] || part+=.gz
    sed -n 's/^[0-9]* rx "\(.*\)"$/\1/p' "$home/wire" | tr -d '\n' | sed 's/\\x0D\\x0A\\x03/\n/g' >"$home/heard"
    "$runner" "$part" >"$home/played.log" 2>"$home/program.out" || fail "$part cannot be played"
    { [[ $part != *.gz ]] && cat "$part" || zcat "$part"; } | sed -n 's/^# \([0-9]* tx .*\)/\1/p' >"$home/sent"
    sed 's/^[0-9]* tx "\(.*\)"$/\1/' "$home/sent" >"$home/recorded"
    { grep -E '^[0-9]+ tx ' "$home/played.log" || true; } >"$home/played"
    local heard recorded played
    heard=$(wc -l <"$home/heard") recorded=$(wc -l <"$home/recorded") played=$(wc -l <"$home/played")
    ((recorded >= heard - $2 && recorded <= heard + 2)) || fail "$heard frames were heard, $recorded are recorded"
    diff <(head -n "$recorded" "$home/heard") <(head -n "$heard" "$home/recorded") || fail 'other frames are recorded'
    # What the last second has brought may stand behind the last time that is told.
    ((played + 3 >= recorded)) || fail "$recorded frames are recorded, $played are played"
    diff <(head -n "$played" "$home/sent") "$home/played" || fail 'it plays otherwise'
}

case $1 in
kills)
    plug_in
    number=0
    for seconds in 0.2 0.9 1.3 0.5; do
        begin
        sleep "$seconds"
        kill_now
        as_it_went $((++number)) 0
        mv "$home/sent" "$home/sent.$number"
    done
    [[ $(stat -c %a "$recordings") == 700 ]] || fail 'others can look into the folder'
    (($("$lister" --list "$recordings" | grep -c '^00000[1-4] ') == 4)) || fail 'the list does not hold them all'
    "$lister" --save "$home" "$recordings" >"$home/program.out" || fail 'the visit cannot be saved'
    saved=$(ls "$home"/quillon-*.scn.gz)
    "$runner" "$saved" | grep -E '^[0-9]+ tx ' >"$home/played" || fail 'the saved visit cannot be played'
    (($(wc -l <"$home/played") >= $(cat "$home"/sent.* | wc -l) - 12)) || fail 'the saved visit is not whole'
    diff <("$lister" --last "$recordings" | grep -v '^==') <("$lister" "$saved" | grep -v '^==') || fail 'it is another'
    ;;
both)
    plug_in
    for number in 1 2; do
        begin
        sleep 0.8
        kill_now "$writer_pid"
        as_it_went "$number" 1
    done
    begin
    wait_for 5 'what a crash has left is not packed' test -e "$recordings/000002.000.scn.gz" -a ! -e "$recordings/000002.000.scn"
    end_in_order
    as_it_went 3 0
    ;;
writer)
    plug_in
    begin
    kill -KILL "$writer_pid"
    sleep 1.2
    alive
    grep -q 'recording has ended before the session' "$home/program.out" || fail 'nobody says that nothing is recorded'
    end_in_order
    ;;
stopped)
    plug_in
    begin
    kill -STOP "$writer_pid"
    sleep 5
    kill -CONT "$writer_pid"
    end_in_order
    as_it_went 1 0
    ! zgrep -q '^gap' "$recordings/000001.000.scn.gz" || fail 'something was lost'
    ;;
folder)
    plug_in
    : >"$recordings" # nothing can lie in there
    begin
    end_in_order
    grep -q "no recording: $recordings: Not a directory" "$home/program.out" || fail 'nobody says why there is none'
    XDG_RUNTIME_DIR=$home/memory begin
    end_in_order
    [[ -s $home/memory/quillon/recordings/000001.000.scn.gz ]] || fail 'nothing is recorded in memory'
    rm "$recordings"
    QUILLON_RECORD=no begin
    end_in_order
    start_program() { # as before, with one more line
        printf '[PORTS]\nCOM1=%s\n[RECORDINGS]\nKEEP=NO\n' "$link" >"$home/Quillon.ini"
        "$program" >"$home/program.out" 2>&1 3>&- &
        program_pid=$!
    }
    begin
    end_in_order
    [[ ! -e $recordings ]] || fail 'it is recorded though it was switched off'
    ;;
starts)
    pids=()
    for _ in {1..10}; do
        "$program" >>"$home/program.out" 2>&1 &
        pids+=($!)
    done
    numbers() { (($(ls "$recordings" | grep -c '^0000[01][0-9]\.000\.scn') == 10)); }
    wait_for 10 'ten starts did not get ten numbers' numbers
    kill -KILL "${pids[@]}"
    wait "${pids[@]}" 2>/dev/null || true
    ;;
esac
