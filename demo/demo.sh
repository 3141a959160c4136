#!/usr/bin/env bash
# Shows the program on a virtual screen with a window manager and a panel: three wallpapers from samples/ at a
# short interval, a screenshot of each and one of the open menu under build/demo/.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

programs=${QUORVANE_BUILD:-build/linux}
size=1366x768
interval=4   # seconds between two changes
patience=300 # tenths of a second that anything may take

out=build/demo
rm -rf "$out"
mkdir -p "$out"
work=$(mktemp -d)
started=()

end() {
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
    rm -rf "$work"
}
trap end EXIT

# until_true WHAT COMMAND...: asks the command again and again, and gives up on WHAT after a while.
until_true() {
    local what=$1
    shift
    for ((try = 0; try < patience; try++)); do
        if "$@"; then
            return 0
        fi
        sleep 0.1
    done
    echo "$what did not come up; what the programs said:" >&2
    cat "$work"/*.log >&2
    exit 1
}

# A home of its own, and no bus: nothing of the person's desktop is touched.
export HOME="$work/home" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" XDG_STATE_HOME="$work/state"
export XDG_CURRENT_DESKTOP= DBUS_SESSION_BUS_ADDRESS=disabled:
unset WAYLAND_DISPLAY QT_QPA_PLATFORM
mkdir -p "$HOME"

Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp -noreset 3>"$work/display" >"$work/xvfb.log" 2>&1 &
started+=($!)
until_true "The virtual screen" test -s "$work/display"
DISPLAY=:$(cat "$work/display")
export DISPLAY

openbox >"$work/openbox.log" 2>&1 &
started+=($!)
until_true "The window manager" sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'
tint2 -c demo/tint2rc >"$work/tint2.log" 2>&1 &
started+=($!)
until_true "The panel" sh -c 'xdotool search --class tint2 >/dev/null 2>&1'

ctl() { "$programs/quorvanectl" settings set "$@"; }
ctl 'Wallpaper sources\Wallpaper sources counter' 1
ctl 'Wallpaper sources\Wallpaper source #1' "$PWD/samples/"
ctl 'Wallpaper sources\Is active wallpaper source #1' True
ctl 'Wallpaper sources\Wallpaper source #1 pattern' '*.jpg;*.png;*.bmp;*.gif;*.svg;*.webp'
ctl 'Wallpaper sources\Wallpaper source #1 scan level' 0
ctl 'General\First RUN' False
ctl 'General\Change wallpaper at startup' 1
ctl 'General\Change wallpaper periodically' 1
ctl 'General\Wallpaper change interval' "$interval"
ctl 'General\Wallpaper change interval (current)' "$interval"
ctl 'General\Use gradient background fill' 1
ctl 'Colors\Left Upper color' 5252640
ctl 'Colors\Right Upper color' 1841180
ctl 'Colors\Left Lower color' 1841180
ctl 'Colors\Right Lower color' 5252640
. demo/look.sh

root_pixmap() { xprop -root _XROOTPMAP_ID 2>/dev/null | grep -o '0x.*' || true; }
changed() {
    now=$(root_pixmap)
    [ -n "$now" ] && [ "$now" != "$shown" ]
}

shown=$(root_pixmap)
"$programs/quorvane" >"$work/quorvane.log" 2>&1 &
program=$!
started+=("$program")
for number in 1 2 3; do
    until_true "Wallpaper $number" changed
    shown=$(root_pixmap)
    sleep 0.8 # the desktop has painted itself
    import -window root "$out/wallpaper-$number.png"
done

# The icon is the one window of the program that stands in the panel; a right click opens its menu.
show_menu() {
    local id
    for id in $(xdotool search --onlyvisible --class quorvane); do
        eval "$(xdotool getwindowgeometry --shell "$id")"
        if [ "$Y" -gt $((${size#*x} - 40)) ] && [ "$HEIGHT" -le 34 ]; then
            xdotool mousemove $((X + WIDTH / 2)) $((Y + HEIGHT / 2)) click 3
            return 0
        fi
    done
    return 1
}
if show_menu; then
    sleep 0.8
    import -window root "$out/menu.png"
    xdotool key Escape
fi
kill "$program"
status=0
wait "$program" || status=$?
echo "The program ended with status $status. Screenshots:"
ls -1 "$PWD/$out"/*.png
