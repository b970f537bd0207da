# What the runs of the real program share: a home, a simulated generator on a pseudo-terminal, the console without
# a display. Sourced by the runs.

program=$QUILLON_BIN_DIR/quillon generator=$QUILLON_BIN_DIR/generator-sim
[[ -x $program && -x $generator ]] || exit 77
home=$(mktemp -d)
export QUILLON_HOME=$home XDG_CONFIG_HOME=$home/config QT_QPA_PLATFORM=offscreen
link=$home/generator commands=$home/commands
generator_pid='' program_pid=''

finish() {
    local pid
    for pid in $program_pid $generator_pid; do
        kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null || true
    done
    # What writes the recordings may be at work for a moment longer.
    rm -rf "$home" 2>/dev/null || { sleep 1; rm -rf "$home"; }
}
trap finish EXIT

fail() {
    printf 'FAILED: %s\n' "$*"
    tail -n 20 "$home/wire" "$home/program.out" 2>/dev/null | cut -c 1-160 || true
    exit 1
}

# plug_in [KEY=VALUE...]: the generator takes the other end of the line, whose bytes take their time as on a real
# one, so that messages come in pieces; the wire's traffic goes to $home/wire.
plug_in() {
    [[ -p $commands ]] || { mkfifo "$commands"; exec 3<>"$commands"; }
    "$generator" --link "$link" --verbose line=19200 "$@" <"$commands" >"$home/sim.out" 2>>"$home/wire" 3>&- &
    generator_pid=$!
    wait_for 5 'the generator did not start' test -e "$link"
}

# The cable is pulled: the device goes away without a word.
pull_out() {
    kill -KILL "$generator_pid"
    wait "$generator_pid" 2>/dev/null || true
    generator_pid=''
    rm -f "$link"
}

tell() { printf '%s\n' "$*" >&3; }

start_program() {
    printf '[CONFIG]\nPORT=1\n[PORTS]\nCOM1=%s\n' "$link" >"$home/Quillon.ini"
    "$program" "$@" >"$home/program.out" 2>&1 3>&- &
    program_pid=$!
}

# wait_for SECONDS MESSAGE COMMAND...: until the command holds.
wait_for() {
    local until=$((SECONDS + $1)) message=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < until)) || fail "$message"
        sleep 0.1
    done
}

alive() {
    kill -0 "$program_pid" 2>/dev/null && return
    local status=0
    wait "$program_pid" || status=$?
    fail "the program has ended with status $status"
}

# Processor time of the program so far, in hundredths of a second.
processor() { awk '{print $14 + $15}' "/proc/$program_pid/stat"; }

# How many frames of that text the generator has heard.
heard() { grep -c "rx .*\"$1" "$home/wire" || true; }
