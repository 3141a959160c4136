#!/usr/bin/env bash
# Shows the Windows program under Wine on a virtual screen: three wallpapers from samples/ at a short interval, a
# screenshot of each and one of the open menu under build/demo/windows/.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
. tests/program/windows/wine_session.sh

size=1366x768
out=build/demo/windows
rm -rf "$out"
mkdir -p "$out"

begin_session "$size"
cp samples/*.jpg samples/*.png "$home/pictures/"
choose_pictures
# A week that begins on Monday, as the columns of the calendar do.
wine_run reg add 'HKCU\Control Panel\International' /v iFirstDayOfWeek /d 0 /f >/dev/null
ctl 'General\Change wallpaper periodically' 1
ctl 'General\Wallpaper change interval' 6
ctl 'General\Wallpaper change interval (current)' 6
. demo/look.sh

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
