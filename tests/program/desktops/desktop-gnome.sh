# GNOME on X: its session manager with the shell, and the extension that gives it a notification area.
packages="gnome-shell gnome-session-bin gnome-shell-extension-appindicator python3-dbusmock dconf-service dconf-gsettings-backend"
shell="gnome-shell --x11"
type=x11
wayland= # the compositor's socket
desktop() {
    export XDG_CURRENT_DESKTOP=GNOME XDG_SESSION_DESKTOP=gnome DESKTOP_SESSION=gnome XDG_SESSION_TYPE=$type \
        XDG_DATA_DIRS=$work/data:$XDG_DATA_DIRS GSETTINGS_BACKEND=dconf
    start_screen
    start_bus
    start_logind
    gsettings set org.gnome.desktop.interface enable-animations false
    gsettings set org.gnome.shell welcome-dialog-last-shown-version 99
    gsettings set org.gnome.shell enabled-extensions "['ubuntu-appindicators@ubuntu.com']"
    mkdir -p "$work/data/gnome-session/sessions" "$work/data/applications"
    printf '%s\n' '[GNOME Session]' 'Name=GNOME' 'RequiredComponents=org.gnome.Shell' \
        >"$work/data/gnome-session/sessions/quorvane.session"
    sed "s#^Exec=.*#Exec=$shell#" /usr/share/applications/org.gnome.Shell.desktop >"$work/data/applications/org.gnome.Shell.desktop"
    start desktop gnome-session --builtin --disable-acceleration-check --session=quorvane
    wait_for $patience answers org.gnome.Shell /org/gnome/Shell || return 1
    wait_for $patience answers org.kde.StatusNotifierWatcher /StatusNotifierWatcher
    wait_for $patience overview_closes
    sleep 8
    wait_for $patience overview_closes
    sleep 2
    join_session gnome-shell
    [ -z "$wayland" ] || { export WAYLAND_DISPLAY=$wayland && unset DISPLAY; }
}
overview_closes() { # it opens by itself at the start, some time after the shell answers
    gdbus call --session -d org.gnome.Shell -o /org/gnome/Shell -m org.freedesktop.DBus.Properties.Set \
        org.gnome.Shell OverviewActive '<false>'
}
logout() { gnome-session-quit --logout --no-prompt; }
