#!/usr/bin/env bash
# install.sh SET|+PACKAGE...: installs what setup/packages-SET.txt names, and the packages that are named
# themselves, where this machine lacks them.
# Asks the package manager nothing where everything is there, so that a second run starts at once.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")

wanted=()
for set in "$@"; do
    [[ $set != +* ]] || { wanted+=("${set#+}") && continue; }
    mapfile -t names < <(grep -v '^#' "$here/packages-$set.txt")
    wanted+=("${names[@]}")
done

missing=()
for name in "${wanted[@]}"; do
    state=$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$name")
done
[ ${#missing[@]} -gt 0 ] || exit 0

command -v apt-get >/dev/null || {
    echo "Please install these packages first: ${missing[*]}" >&2
    exit 1
}
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "Please install these packages as root first: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}"
log=$(mktemp)
if ! { "${as_root[@]}" apt-get update &&
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 \
        install -y --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "The packages could not be installed; the whole log is in $log" >&2
    exit 1
fi
rm -f "$log"
