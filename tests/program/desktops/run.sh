#!/usr/bin/env bash
# Tries Quorvane on real desktops, each on a virtual screen with a bus and a home of its own.
#
#   run.sh [--build DIR] [--out DIR] [NAME...]   the desktops named, `all`, or without a name the cheap ones
#   run.sh --list                                the names
#
# --build  the folder of quorvane and quorvanectl (build/linux)
# --out    where screenshots and logs go (build/desktops)
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
cd "$here/../../.."
limit=240 # seconds for one desktop, which takes half of it
cheap=(i3 sway sway-default)

usage() {
    sed -n '4,8s/^# \{0,1\}//p' "$here/run.sh"
    exit 2
}
names() { for file in "$here"/desktop-*.sh; do basename "$file" .sh | cut -d- -f2-; done; }

# Everything that the desktop needs is copied, so that any user can read it and a build may go on meanwhile.
try_desktop() { # NAME
    local name=$1 as_user=() packages='' user=''
    eval "$(sed -n '/^packages=/p;/^user=/p' "$here/desktop-$name.sh")"
    rm -rf "${out:?}/$name"
    mkdir -p "$out/$name"
    # shellcheck disable=SC2086 # a list of words
    setup/install.sh desktops $(printf '+%s ' $packages) ||
        { echo "FAILED  $name: its packages can be installed" | tee "$out/$name/checks" && return; }
    work=$(mktemp -d)
    mkdir "$work/bin" "$work/out"
    cp "$build/quorvane" "$build/quorvanectl"* "$work/bin"
    cp -r samples packaging/icons/quorvane.svg "$here"/*.sh "$here/watch.py" "$work"
    if [ -n "$user" ] && [ "$(id -u)" -eq 0 ]; then
        as_user=(setpriv --reuid="$user" --regid="$user" --clear-groups)
        chown -R "$user:$user" "$work"
    fi
    (cd "$work" && exec timeout --kill-after=20 "$limit" "${as_user[@]}" bash "$work/lib.sh" "$name" "$work") &
    session=$!
    wait "$session" || true
    session=
    cp -r "$work/out/." "$out/$name"
    rm -rf "$work"
    grep -qs '^end$' "$out/$name/checks" ||
        echo "FAILED  $name: the run came to its end within $limit s" | tee -a "$out/$name/checks"
}
session='' work=''
trap '[ -z "$session" ] || { kill "$session" && wait "$session"; } || true; rm -rf "$work"' EXIT
trap 'exit 130' INT TERM

build=build/linux
out=build/desktops
wanted=()
while [ $# -gt 0 ]; do
    case $1 in
    --list) names && exit ;;
    --build) build=${2:?} && shift ;;
    --out) out=${2:?} && shift ;;
    all) mapfile -t wanted < <(names) ;;
    -*) usage ;;
    *)
        [ -f "$here/desktop-$1.sh" ] || { echo "There is no desktop '$1' here: $(names | xargs)" >&2 && exit 2; }
        wanted+=("$1")
        ;;
    esac
    shift
done
[ ${#wanted[@]} -gt 0 ] || wanted=("${cheap[@]}")
for needed in "$build/quorvane" "$build/quorvanectl"; do
    [ -e "$needed" ] || { echo "There is no $needed; build it first." >&2 && exit 2; }
done
mkdir -p "$out"
out=$(readlink -f "$out")
echo "Screenshots and logs: $out"

for name in "${wanted[@]}"; do
    try_desktop "$name"
done
all=()
for name in "${wanted[@]}"; do all+=("$out/$name/checks"); done
passed=$(cat "${all[@]}" | grep -c '^ok' || true)
failed=$(cat "${all[@]}" | grep -c '^FAILED' || true)
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
