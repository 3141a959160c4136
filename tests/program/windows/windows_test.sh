#!/usr/bin/env bash
# Tests the cross-built Windows programs under Wine on a virtual screen: every test program, then quorvane.exe
# from its start to its end. Says so and passes where Wine cannot be had.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../../.."

if ! command -v wine >/dev/null || ! command -v Xvfb >/dev/null; then
    echo "SKIPPED: no Wine or no virtual screen on this machine (Debian: wine, wine64, xvfb); nothing of Windows was run"
    exit 0
fi
. tests/program/windows/wine_session.sh

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# What a Windows of any age brings along itself.
check_imports() {
    local known='advapi32 comctl32 comdlg32 gdi32 kernel32 msimg32 msvcrt ole32 oleaut32 shell32 user32 winmm
        windowscodecs quartz'
    local file library
    for file in quorvane quorvanectl; do
        for library in $(x86_64-w64-mingw32-objdump -p "build/windows/$file.exe" |
            sed -n 's/.*DLL Name: \(.*\)\.[dD][lL][lL]$/\1/p' | tr '[:upper:]' '[:lower:]'); do
            grep -qw "$library" <<<"$known" || fail "$file.exe needs $library.dll beside it"
        done
    done
}

# same WHAT ONE OTHER FUZZ: fails where a pixel differs by more than FUZZ.
same() {
    local different
    different=$(compare -metric AE -fuzz "$4" "$2" "$3" null: 2>&1) || true
    [ "${different%% *}" = 0 ] || fail "$1: $different pixels differ"
    echo "ok: $1"
}

has_value() { # KEY NAME DATA
    local shown
    shown=$(wine_run reg query "$1" /v "$2") || true
    grep -qiF "$3" <<<"$shown" || fail "the registry's $1, $2, is not $3: $shown"
    echo "ok: registry $1, $2"
}

check_imports
begin_session 1024x768
ctest --preset windows
rm -rf "$home/pictures" && mkdir -p "$home/pictures"
cp samples/moonrise.png "$home/pictures/"
wine_run reg delete 'HKCU\Software\Quorvane' /f >/dev/null 2>&1 || true
choose_pictures
ctl 'General\Change wallpaper periodically' 0
ctl 'General\Paint calendar' 0
ctl 'General\Wallpaper position' 4

start_program
until_true "The wallpaper file" test -s "$home/Wallpaper.bmp"
stop_program
has_value 'HKCU\Control Panel\Desktop' Wallpaper "$home_windows\\Wallpaper.bmp"
has_value 'HKCU\Control Panel\Desktop' WallpaperStyle 2
has_value 'HKCU\Software\Quorvane\General' 'First RUN' False

wine_run "$home/quorvanectl.exe" render --out "$home_windows\\rendered.bmp" \
    --picture "$home_windows\\pictures\\moonrise.png" --size 1024x768
same "quorvane.exe and quorvanectl.exe give the same wallpaper" "$home/Wallpaper.bmp" "$home/rendered.bmp" 0

wine_run "$home/quorvanectl.exe" settings export "$home_windows\\settings.reg"
[ -x build/linux/quorvanectl ] || {
    cmake --preset linux >/dev/null
    cmake --build --preset linux -j "$(nproc)" --target quorvanectl
}
build/linux/quorvanectl render --settings "$home/settings.reg" --out "$work/linux.bmp" \
    --picture samples/moonrise.png --size 1024x768
# A gradient may be rounded to the next shade; the picture, which is no JPEG, must be the same.
same "the Linux program gives the same geometry and colours" "$home/Wallpaper.bmp" "$work/linux.bmp" 0.5%

ctl 'General\Paint calendar' 1
rm -f "$home/Wallpaper.bmp"
start_program
until_true "The wallpaper file with a calendar" test -s "$home/Wallpaper.bmp"
wine_run "$home/quorvanectl.exe" render --out "$home_windows\\rendered.bmp" \
    --picture "$home_windows\\pictures\\moonrise.png" --size 1024x768
same "the calendar stands in the same place with the same letters" "$home/Wallpaper.bmp" "$home/rendered.bmp" 0

# The running program, asked from a shell.
says() { # TEXT WORDS...
    local text=$1 said
    shift
    said=$(wine_run "$home/quorvanectl.exe" "$@" 2>&1 | tr -d '\r') || true
    grep -qF "$text" <<<"$said" || fail "$* does not say $text: $said"
    echo "ok: $*"
}
says '"candidates": 1,' status --json
wine_run "$home/quorvanectl.exe" do favourite
says moonrise.png favourites list
has_value 'HKCU\Software\Quorvane\Favorites' 'Favorites source #1' moonrise.png
ctl 'General\Week name' Asked
has_value 'HKCU\Software\Quorvane\General' 'Week name' Asked
answers_as() { # IS|IS-NOT PID: whether the copy of this number answers
    local pid
    pid=$(wine_run "$home/quorvanectl.exe" status --json | sed -n 's/^{"pid": \([0-9]*\),.*/\1/p')
    [ -n "$pid" ] && if [ "$1" = IS ]; then [ "$pid" = "$2" ]; else [ "$pid" != "$2" ]; fi
}
first=$(wine_run "$home/quorvanectl.exe" status --json | sed 's/^{"pid": \([0-9]*\),.*/\1/')
start_program
until_true "The second copy" answers_as IS-NOT "$first"
says moonrise.png favourites list --pid "$first"
wine_run "$home/quorvanectl.exe" do exit
until_true "The first copy, alone" answers_as IS "$first"
says Asked settings get 'General\Week name'

# Killed while it works on an answer: a scan of all that the machine has takes longer than that.
wine_run "$home/quorvanectl.exe" sources add 'Z:\'
timeout 60 tests/program/windows/wine.sh "$home/quorvanectl.exe" do rescan >"$work/rescan" 2>&1 &
asking=$!
sleep 1
wine_run taskkill /im quorvane.exe /f >/dev/null
status=0
wait "$asking" || status=$?
[ "$status" = 1 ] && grep -q 'gave no answer' "$work/rescan" || fail "the client of a killed program: $status, $(cat "$work/rescan")"
echo "ok: killed during an answer"
wine_run "$home/quorvanectl.exe" sources remove 2
says 'Quorvane is not running' status
says Asked settings get 'General\Week name'
has_value 'HKCU\Software\Quorvane\General' 'First RUN' False # a killed program leaves a whole tree
echo "Windows: everything passed"
