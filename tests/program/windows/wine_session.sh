# For scripts that show the Windows program: a virtual screen, Wine on it, a folder for the program.
# Sourced from the repository's root; sets `work`, `home` (the program's folder), `home_windows` (the same as
# Windows spells it), and ends everything with the script.

patience=600 # tenths of a second that anything may take
work=$(mktemp -d)
home=$PWD/build/wine/drive_c/Quorvane
home_windows='C:\Quorvane'
started=()

end_session() {
    stop_wineserver
    for ((i = ${#started[@]} - 1; i >= 0; i--)); do
        kill "${started[i]}" 2>/dev/null || true
        wait "${started[i]}" 2>/dev/null || true
    done
    rm -rf "$work"
}

wineserver_of_ours() { WINEPREFIX=$PWD/build/wine wineserver "$@" 2>/dev/null; }

stop_wineserver() {
    wineserver_of_ours -k || true
    wineserver_of_ours -w || true
}

# until_true WHAT COMMAND...: asks the command again and again, and gives up on WHAT after a while.
until_true() {
    local what=$1
    shift
    for ((try = 0; try < patience; try++)); do
        if "$@"; then return 0; fi
        sleep 0.1
    done
    echo "$what did not come" >&2
    return 1
}

wine_run() { timeout 120 tests/program/windows/wine.sh "$@"; }
ctl() { wine_run "$home/quorvanectl.exe" settings set "$@"; }

begin_session() {
    local size=$1
    trap end_session EXIT
    unset QUORVANE_WINEPREFIX
    stop_wineserver # whatever an earlier screen left
    Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp -noreset 3>"$work/display" >"$work/xvfb.log" 2>&1 &
    started+=($!)
    until_true "The virtual screen" test -s "$work/display"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
    wine_run reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "$size" /f >/dev/null
    # From here on the server stays: one that ends by itself between two programs can take the second one along.
    stop_wineserver
    wineserver_of_ours -p
    # The program asks for fonts by name and would tell of each that is not there, in a box that waits.
    local font
    for font in Courier 'Monotype Corsiva' 'MS Sans Serif' 'Microsoft Sans Serif' SansSerif Arial; do
        wine_run reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' /v "$font" \
            /d 'Liberation Sans' /f >/dev/null
    done
    wine_run reg delete 'HKCU\Software\Quorvane' /f >/dev/null 2>&1 || true
    rm -rf "$home"
    mkdir -p "$home/pictures"
    cp build/windows/quorvane.exe build/windows/quorvanectl.exe "$home/"
}

# The common settings of a person who has chosen a folder of pictures.
choose_pictures() {
    wine_run "$home/quorvanectl.exe" sources add "$home_windows\\pictures"
    ctl 'General\First RUN' False
    ctl 'General\Change wallpaper at startup' 1
    ctl 'General\Use gradient background fill' 1
    ctl 'Colors\Left Upper color' 5252640
    ctl 'Colors\Right Upper color' 1841180
    ctl 'Colors\Left Lower color' 1841180
    ctl 'Colors\Right Lower color' 5252640
}

start_program() {
    tests/program/windows/wine.sh "$home/quorvane.exe" "$@" >"$work/quorvane.log" 2>&1 &
    program=$!
    started+=("$program")
}

# Asks the program to end as the system's task list does, and waits for it.
stop_program() {
    wine_run taskkill /im quorvane.exe >/dev/null
    until_true "The program's end" sh -c "! kill -0 $program 2>/dev/null"
}
