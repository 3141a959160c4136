#!/usr/bin/env bash
# Builds Quorvane and starts it. Without a display it shows itself on a virtual one and leaves screenshots.
#
#   ./run.sh             the Linux program
#   ./run.sh --windows   the Windows program, on a virtual screen under Wine
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"

build() {
    local preset=$1
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -j "$(nproc)" --target quorvane quorvanectl
}

case "${1:-}" in
--windows)
    setup/install.sh build demo windows wine
    build windows
    exec demo/windows_demo.sh
    ;;
"") ;;
*)
    sed -n '2,5s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac

setup/install.sh build
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    build linux
    exec build/linux/quorvane
fi
setup/install.sh demo
build linux
exec demo/demo.sh
