#!/usr/bin/env bash
# Runs a Windows program under Wine in a prefix of the project's own: wine.sh PROGRAM ARGUMENTS...
# The prefix is $QUORVANE_WINEPREFIX, else build/wine; it is made at first use. Without a display the program
# gets a virtual screen of its own, and everything of Wine is ended behind it, since a later screen could not
# take over what the first one left.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../../.." && pwd)
export WINEPREFIX=${QUORVANE_WINEPREFIX:-$root/build/wine}
export WINEARCH=win64 WINEDEBUG=-all LC_ALL=C.UTF-8
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
command -v wine >/dev/null || { echo "wine.sh: Wine is not installed (Debian: wine, wine64)" >&2; exit 127; }

if [ -z "${DISPLAY:-}" ]; then
    status=0
    xvfb-run -a -s "-screen 0 1280x1024x24" "${BASH_SOURCE[0]}" "$@" || status=$?
    wineserver -k || true
    wineserver -w || true
    exit "$status"
fi
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    mkdir -p "$WINEPREFIX"
    wine wineboot -i >/dev/null 2>&1
    # A crash is told on standard error; a window about it would wait for somebody.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null
    # One virtual screen holds all windows: no window manager is needed, and pictures of it show them all.
    wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null
    wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d 1280x1024 /f >/dev/null
    wineserver -w
fi
exec wine "$@"
