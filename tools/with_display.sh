#!/bin/sh
# Runs a command on a display of its own, with a window manager: tools/with_display.sh COMMAND...
# Nothing of it stays behind, also when it is killed.
set -eu
fail() {
    echo "with_display.sh: $*" >&2
    cat "$folder"/*.log >&2 2>/dev/null || true
    exit 1
}
# What it starts ends when this shell does, however that happens.
bound='setpriv --pdeathsig KILL'

folder=$(mktemp -d)
server='' manager='' command=''
clean() {
    trap - EXIT HUP INT TERM
    for process in $command $manager $server; do
        kill "$process" 2>/dev/null && wait "$process" 2>/dev/null
    done
    rm -rf "$folder"
}
trap clean EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

for program in Xvfb openbox setpriv; do
    command -v "$program" >/dev/null || fail "there is no $program; ./check installs it (packages.txt)"
done
mkfifo "$folder/number" "$folder/ready"
$bound Xvfb -displayfd 3 -screen 0 3200x2000x24 -nolisten tcp -noreset 3>"$folder/number" >"$folder/Xvfb.log" 2>&1 &
server=$!
read -r number <"$folder/number" || fail "Xvfb did not start"
export DISPLAY=":$number" QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY SESSION_MANAGER XAUTHORITY
# The user's own settings of the window manager do not count.
export XDG_CONFIG_HOME="$folder"
$bound openbox --sm-disable --startup "sh -c 'echo ready >$folder/ready'" 3>"$folder/ready" >"$folder/openbox.log" 2>&1 &
manager=$!
read -r _ <"$folder/ready" || fail "openbox did not start"
unset XDG_CONFIG_HOME
$bound "$@" &
command=$!
status=0
wait "$command" || status=$?
command=''
exit $status
