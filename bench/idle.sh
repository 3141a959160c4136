#!/usr/bin/env bash
# Measures an idle minute of the running program, with a tray area and without one, beside a plain Qt program with a
# tray icon and one timer a second: wakings of all threads and processor time. Several of each run at once, since a
# waking that comes just behind another one's finds the machine warm and costs half.
#
#   bench/idle.sh [seconds]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
seconds=${1:-60}
copies=4 # of each
programs=${QUORVANE_BUILD:-build/linux}
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; wait; rm -rf "$work"' EXIT

export XDG_CURRENT_DESKTOP='' DBUS_SESSION_BUS_ADDRESS=disabled:
start_screen() { # NAME: sets DISPLAY
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset 3>"$work/$1" >/dev/null 2>&1 &
    until [ -s "$work/$1" ]; do sleep 0.05; done
    DISPLAY=:$(cat "$work/$1")
    export DISPLAY
    openbox >/dev/null 2>&1 &
    until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; do sleep 0.05; done
}
declare -A pids=()
start() { # NAME PROGRAM: each in a home of its own
    local number home
    for number in $(seq "$copies"); do
        home=$work/home-${1// /-}-$number
        mkdir -p "$home"
        export HOME=$home XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_STATE_HOME=$home/state \
            XDG_RUNTIME_DIR=$home
        "$programs/quorvanectl" settings set 'General\First RUN' False
        "$programs/quorvanectl" settings set 'General\Change wallpaper periodically' -1 # its countdown runs
        "$programs/quorvanectl" settings set 'General\Wallpaper change interval (current)' 86400
        "$2" >/dev/null 2>&1 &
        pids[$1]+=" $!"
    done
}

start_screen tray
tint2 -c demo/tint2rc >/dev/null 2>&1 &
until xdotool search --class tint2 >/dev/null 2>&1; do sleep 0.05; done
start 'quorvane, with a tray area' "$programs/quorvane"
start 'plain Qt, with a tray area' "$programs/idle_peer"
start_screen bare
start 'quorvane, without one' "$programs/quorvane"
start 'plain Qt, without one' "$programs/idle_peer"
sleep 35 # the start, and threads of the toolkit that wait half a minute for more work

tasks() { printf "/proc/%s/task/*/$2 " $1; } # PIDS FILE
wakings() { cat $(tasks "$1" status) | awk '/^voluntary_ctxt/ { sum += $2 } END { print sum }'; }
nanoseconds() { cat $(tasks "$1" schedstat) | awk '{ sum += $1 } END { printf "%.0f\n", sum }'; }
declare -A woken=() busy=()
for name in "${!pids[@]}"; do
    woken[$name]=$(wakings "${pids[$name]}")
    busy[$name]=$(nanoseconds "${pids[$name]}")
done
sleep "$seconds"
for name in "${!pids[@]}"; do
    awk -v name="$name" -v seconds="$((seconds * copies))" -v woken=$(($(wakings "${pids[$name]}") - ${woken[$name]})) \
        -v busy=$(($(nanoseconds "${pids[$name]}") - ${busy[$name]})) \
        'BEGIN { printf "%-28s %.2f wakings a second, %.2f ms of processor time a minute\n", name ":", woken / seconds,
                 busy / 1e6 / seconds * 60 }'
done | sort
