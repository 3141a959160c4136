#!/usr/bin/env bash
# Shows the Windows program under Wine on a virtual screen: three wallpapers from samples/ at a short interval, a
# screenshot of each and one of the open menu under build/demo/windows/.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. packaging/wine_session.sh

size=1366x768
out=build/demo/windows
rm -rf "$out"
mkdir -p "$out"

begin_session "$size"
cp samples/*.jpg samples/*.png "$home/pictures/"
choose_pictures
ctl 'General\Change wallpaper periodically' 1
ctl 'General\Wallpaper change interval' 6
ctl 'General\Wallpaper change interval (current)' 6
# The calendar on a box of its own, so that it can be read on every picture.
ctl 'General\Calendar position' 1
ctl 'General\Use calendar background' 1
ctl 'Colors\Calendar background color' 3815994
ctl 'Colors\Holiday color' 8026879
ctl 'Colors\Holiday color minor' 8026879
ctl 'Colors\Week number color' 7908010
ctl 'Colors\Workday color' 15790320
ctl 'Colors\Caption color' 16777215
ctl 'Colors\Week caption color' 13158600
ctl 'Colors\Sun Ephemeredes color' 10092543
ctl 'Colors\Moon Ephemeredes color' 16766150

last=
changed() {
    local now
    now=$(stat -c %y "$home/Wallpaper.bmp" 2>/dev/null) || return 1
    [ "$now" != "$last" ] && last=$now
}

start_program
for number in 1 2 3; do
    until_true "Wallpaper $number" changed
    sleep 1.5 # the desktop paints itself
    import -window root "$out/wallpaper-$number.png"
done
# The icon stands at the end of the task bar; a right click opens its menu.
xdotool mousemove $((${size%x*} - 12)) $((${size#*x} - 14)) click 3
sleep 1.5
import -window root "$out/menu.png"
xdotool key Escape
stop_program
echo "Screenshots:"
ls -1 "$PWD/$out"/*.png
