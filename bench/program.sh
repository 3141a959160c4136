#!/usr/bin/env bash
# Measures the running program on a virtual desktop: from its start to the icon on an empty tree, the processor
# time and wakings of an idle minute, and the memory before and after changes.
#
#   bench/program.sh [seconds of the idle stretch]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
idle=${1:-60}
programs=${QUORVANE_BUILD:-build/linux}
work=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$work"' EXIT

export HOME="$work" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_STATE_HOME="$work/state"
export XDG_RUNTIME_DIR="$work" XDG_CURRENT_DESKTOP= DBUS_SESSION_BUS_ADDRESS=disabled:
Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset 3>"$work/display" >/dev/null 2>&1 &
until [ -s "$work/display" ]; do sleep 0.05; done
DISPLAY=:$(cat "$work/display")
export DISPLAY
openbox >/dev/null 2>&1 &
until xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; do sleep 0.05; done
tint2 -c demo/tint2rc >/dev/null 2>&1 &
until xdotool search --class tint2 >/dev/null 2>&1; do sleep 0.05; done
sleep 1

now() { date +%s%N; }
icon() { xdotool search --onlyvisible --classname quorvane 2>/dev/null | while read -r id; do
    xdotool getwindowgeometry "$id" | grep -q 'Geometry: 22x22' && echo "$id"
done; }

for run in 1 2 3 4 5; do
    rm -rf "$work/config" "$work/data"
    begin=$(now)
    "$programs/quorvane" &
    program=$!
    until [ -n "$(icon)" ]; do :; done
    echo "start to icon, run $run: $((($(now) - begin) / 1000000)) ms"
    [ "$run" = 5 ] || { kill "$program"; wait "$program"; }
done

ticks() { awk '{ print $14 + $15 }' "/proc/$program/stat"; }
wakings() { cat /proc/"$program"/task/*/status | awk '/^voluntary_ctxt/ { sum += $2 } END { print sum }'; }
sleep 3
busy=$(ticks)
woken=$(wakings)
sleep "$idle"
awk -v ticks=$(($(ticks) - busy)) -v hz="$(getconf CLK_TCK)" -v seconds="$idle" -v woken=$(($(wakings) - woken)) \
    'BEGIN { printf "at rest: %.3f %% of a core, %.1f wakings a second\n", ticks / hz / seconds * 100, woken / seconds }'
kill "$program"
wait "$program"

ctl() { "$programs/quorvanectl" settings set "$@"; }
"$programs/quorvanectl" sources add samples --pattern '*.jpg;*.png;*.webp;*.svg' --level 0
ctl 'General\Change wallpaper periodically' 1
ctl 'General\Wallpaper change interval' 3
ctl 'General\Wallpaper change interval (current)' 6
"$programs/quorvane" &
program=$!
resident() { awk '/^VmRSS/ { print $2 }' "/proc/$program/status"; }
root_pixmap() { xprop -root _XROOTPMAP_ID | grep -o '0x.*' || true; }
sleep 4
echo "resident before the first change: $(resident) KiB"
shown=$(root_pixmap)
for change in 1 2 3 4 5 6; do
    until [ "$(root_pixmap)" != "$shown" ]; do sleep 0.05; done
    shown=$(root_pixmap)
    sleep 1
    echo "after change $change: $(resident) KiB, peak $(awk '/^VmHWM/ { print $2 }' "/proc/$program/status") KiB"
done
kill "$program"
wait "$program"
