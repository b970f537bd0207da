# What the runs with a real window share, on top of lib_program.bash: a display of their own, and a hand that
# presses keys by name. Sourced by the runs.

source "$(dirname "${BASH_SOURCE[0]}")/lib_program.bash"
for tool in Xvfb xdotool; do
    command -v "$tool" >/dev/null || { echo "$tool is missing"; exit 77; }
done

display_pid=''
exec 9<> <(:)
Xvfb -displayfd 9 -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 3>&- &
display_pid=$!
read -r -t 20 -u 9 display_number || fail 'no display'
export DISPLAY=:$display_number QT_QPA_PLATFORM=xcb

# The window system's helpers keep something of their own until the end; ours is still looked at.
printf 'leak:libdbus\n' >"$home/not-ours"
export LSAN_OPTIONS=suppressions=$home/not-ours:print_suppressions=0

finish_window() {
    finish
    kill "$display_pid" 2>/dev/null && wait "$display_pid" 2>/dev/null || true
}
trap finish_window EXIT

# Where the keys are on the screen of 1024 x 768 that the window covers.
declare -A place=(
    [close]='880 192' [counters]='880 263' [configuration]='880 335' [calibration]='880 406'
    [autocalibration]='880 478' [user]='880 478' [reset]='844 549'
    [workstation-ok]='558 528' [focus-ok]='608 146' [yes]='210 566' [confirm]='473 209' [dismiss]='657 209'
    [remote]='570 700' [orla]='190 700' [kv-up]='92 243' [log-ok]='653 371' [panel-ok]='383 402'
    [counter-reset]='102 572' [counter-yes]='537 645'
    [orla-axis]='128 97' [orla-value]='405 139' [orla-set]='534 139'
)

point() {
    local x y
    read -r x y <<<"${place[$1]}"
    xdotool mousemove "$x" "$y"
}

# press NAME [SECONDS]: presses the key and lets it go, at once or after a while.
press() {
    point "$1"
    xdotool mousedown 1
    sleep "${2:-0.1}"
    xdotool mouseup 1
}

# picture NAME: what the screen shows, kept in $pictures when that names a folder.
picture() {
    [[ -z ${pictures:-} ]] || import -window root "$pictures/$1.png"
}

start_window() {
    printf '[CONFIG]\nPORT=1\nFitToScreen=YES\nREMOTE=YES\n[PORTS]\nCOM1=%s\n' "$link" >"$home/Quillon.ini"
    "$program" "$@" >"$home/program.out" 2>&1 3>&- 9>&- &
    program_pid=$!
}

# said TEXT: the console has sent a message that begins so, since the trace was emptied; told: the generator has.
said() { grep -q " rx \"$1" "$home/wire"; }
told() { grep -q " tx \"$1" "$home/wire"; }

# A window with its mode keys alive; the trace begins with it.
begin_ready() {
    : >"$home/wire"
    start_window
    wait_for 20 'the refresh is not over' said 'VR?'
    sleep 1
}

# expect_end SECONDS OF_WHAT: the program ends by itself and in order.
expect_end() {
    ended() { ! kill -0 "$program_pid" 2>/dev/null; }
    wait_for "$1" "no end $2" ended
    local status=0
    wait "$program_pid" || status=$?
    program_pid=''
    ((status == 0)) || fail "status $status at the end $2"
    sleep 0.3
}

# What the generator has heard of X-rays, as digits.
rays() { grep -o ' rx "RX[01]' "$home/wire" | grep -o '[01]$' | tr -d '\n' || true; }
