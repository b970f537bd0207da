#!/usr/bin/env bash
# What a screen reader finds: calibration with a value stored, and configuration with one step, by the keys that the
# accessibility bus lists, and what is told of them. On the way nothing that is hidden or covered is listed, nothing is
# without a name, and all keys on show are. The counters are read by the keyboard alone.
set -euo pipefail
if [[ -z ${QUILLON_OWN_BUS:-} ]]; then
    command -v dbus-run-session >/dev/null || exit 77
    QUILLON_OWN_BUS=1 exec dbus-run-session -- bash "${BASH_SOURCE[0]}"
fi
source "$(dirname "${BASH_SOURCE[0]}")/lib_window.bash"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
for python in python3 /usr/bin/python3; do
    "$python" -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null && break || python=''
done
[[ -n $python ]] && dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.a11y.Bus.GetAddress \
    >/dev/null 2>&1 || { echo 'the accessibility bus cannot be read here'; exit 77; }


plug_in startphase=6
start_window -P1 -FitToScreen
"$python" - 3>&- 9>&- <<'END' || fail 'a screen reader does not find its way'
import subprocess
import sys
import time
import gi
gi.require_version('Atspi', '2.0')
from gi.repository import Atspi

def nodes(node):
    yield node
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child:
            yield from nodes(child)

def program():
    desktop = Atspi.get_desktop(0)
    every = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
    return next((one for one in every if one and one.get_name() == 'Quillon'), None)

def has(node, state):
    return node.get_state_set().contains(state)

def listed():
    return [node for node in nodes(program()) if node.get_role() != Atspi.Role.APPLICATION]

def keys():
    roles = (Atspi.Role.PUSH_BUTTON, Atspi.Role.CHECK_BOX, Atspi.Role.RADIO_BUTTON)
    return [node for node in listed() if node.get_role() in roles]

def key(name):
    return next((k for k in keys() if k.get_name() == name and has(k, Atspi.StateType.ENABLED)), None)

def wait(what, holds):
    end = time.monotonic() + 25
    while not (found := holds()):
        if time.monotonic() > end:
            sys.exit(f'{what}; there are {[node.get_name() for node in listed()]}')
        time.sleep(0.1)
    return found

def expect_keys(count, *names):
    stray = [node.get_role_name() for node in listed() if not node.get_name() or not has(node, Atspi.StateType.SHOWING)]
    shown = [k.get_name() for k in keys()]
    if stray or len(shown) != count or not set(names) <= set(shown):
        sys.exit(f'without a name or not on show: {stray}; keys: {shown}')
    print(f'{len(listed())} nodes, {count} of them keys')

wait('the program is not on the bus', program)
def told(words):
    return any(words in node.get_name() for node in listed() if node.get_role() == Atspi.Role.ALERT)

wait('calibration does not come up', lambda: key('Store') and key('Exit'))
key('Calibration Value +').do_action(0)
wait('it is not told that nothing is stored', lambda: told('changed, not stored'))
key('Store').do_action(0)
wait('it is still told that nothing is stored', lambda: not told('not stored'))
key('Exit').do_action(0)
configuration = wait('calibration was not left', lambda: key('Configuration'))
rest = ['Close', 'Read Exposure Counters', 'Configuration', 'Manual Calibration', 'Auto Calibration', 'RESET ERROR',
        'Records, recording']
expect_keys(7, *rest)
configuration.do_action(0)
wait('the key does not say that it waits', lambda: configuration.get_description() == 'sent, not confirmed')
wait('configuration was not reached', lambda: key('Default Configuration') and key('Tube +') and key('Exit'))
time.sleep(3)  # the last of the values
expect_keys(33, 'Tube -', 'Tube +', 'WS8', 'Fail Safe +', 'Center', 'Exit', 'Auto Calibration')
tube = lambda: next(node.get_name() for node in listed() if node.get_description() == 'Tube')
before = tube()
key('Tube +').do_action(0)
wait('the step is not told', lambda: tube() != before)
key('Exit').do_action(0)
wait('configuration was not left', lambda: key('Close') and key('Configuration'))
expect_keys(7, *rest)

def focused():
    return next((node.get_name() for node in listed() if has(node, Atspi.StateType.FOCUSED)), '')

def strike(name, first):
    """With the keyboard alone: Tab, Right within a choice, Space."""
    for stroke in (first, *['Tab', 'Right'] * 10):
        if focused() == name:
            break
        subprocess.run(['xdotool', 'key', stroke], check=True)
        time.sleep(0.1)
    else:
        sys.exit(f'{name} is not reached with the keyboard')
    subprocess.run(['xdotool', 'key', 'space'], check=True)

strike('Read Exposure Counters', 'Tab')
wait('the counters are not told', lambda: any(node.get_description() == 'TUBE 1 RAD' for node in listed()))
strike('Exit', 'Tab')
wait('the counters were not left', lambda: key('Configuration'))
END
said 'C+' && said CS && said CF1 && said CF0 && said TC || fail 'the generator was not told'
