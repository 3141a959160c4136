#!/usr/bin/env bash
# Runs the checks and tests, every stage or those named:
#
#   ./test.sh [checks] [linux] [asan] [tsan] [fuzz] [windows] [windows32] [desktops [NAME...]]
#
# Without a name all of them. The words behind `desktops` name the real desktops that are started
# (tests/program/desktops/README.md); without one, the cheap ones.
# QUORVANE_FUZZ_SECONDS is how long each fuzz target runs (30 unless told).
set -uo pipefail
cd "$(dirname "$(readlink -f "$0")")"

stages=()
desktops=()
while [ $# -gt 0 ]; do
    stages+=("$1")
    [ "$1" != desktops ] || { desktops=("${@:2}") && break; }
    shift
done
[ ${#stages[@]} -gt 0 ] || stages=(checks linux asan tsan fuzz windows windows32 desktops)
export CTEST_OUTPUT_ON_FAILURE=1

# build PRESET [TARGET...]
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" -j "$(nproc)" ${1:+--target "$@"}
}

stage_checks() {
    tests/checks/includes.sh && tests/checks/words.sh && tests/checks/format.sh
}

stage_linux() {
    build linux && ctest --preset linux
}

stage_asan() {
    build linux-asan && ctest --preset linux-asan
}

# What several threads reach: few tests, since the toolkit itself is not watched.
stage_tsan() {
    build linux-tsan test_platform_linux_threads && ctest --preset linux-tsan
}

stage_fuzz() {
    build linux-fuzz fuzzers || return 1
    printf '%s\n' build/linux-fuzz/fuzz_* | grep -v '\.' | xargs -P "$(nproc)" -I {} bash -c 'fuzz {}'
}

# One target over its corpora, the grown one and the committed one; what it found wrong lies beside it.
fuzz() {
    local name=${1##*/fuzz_} grown=build/linux-fuzz/corpus/${1##*/fuzz_}
    mkdir -p "$grown"
    echo "fuzzing $name"
    "$1" -max_total_time="${QUORVANE_FUZZ_SECONDS:-30}" -rss_limit_mb=2048 -timeout=20 -print_final_stats=0 \
        -verbosity=0 -artifact_prefix="build/linux-fuzz/$name-" "$grown" $([ -d "fuzz/corpus/$name" ] && echo "fuzz/corpus/$name")
}
export -f fuzz

# Without Wine the programs are built all the same, and windows_test.sh says that they were not run.
stage_windows() {
    setup/install.sh wine || true
    build windows && tests/program/windows/windows_test.sh
}

# Compiled and linked; there is no 32-bit Wine in a 64-bit Debian without its second architecture.
stage_windows32() {
    build windows32 quorvane quorvanectl
}

stage_desktops() {
    build linux quorvane quorvanectl && tests/program/desktops/run.sh "${desktops[@]}"
}

packages=(build)
for stage in "${stages[@]}"; do
    case $stage in
    checks | fuzz | tsan) packages+=(test) ;;
    desktops) packages+=(desktops) ;;
    linux | asan) packages+=(test demo bench) ;;
    windows | windows32) packages+=(windows demo) ;;
    *)
        sed -n '2,8s/^# \{0,1\}//p' "$0" >&2
        exit 2
        ;;
    esac
done
mapfile -t packages < <(printf '%s\n' "${packages[@]}" | sort -u)
setup/install.sh "${packages[@]}" || exit 1

passed=0
failed=()
for stage in "${stages[@]}"; do
    echo "=== $stage"
    started=$SECONDS
    if "stage_$stage"; then
        passed=$((passed + 1))
        echo "=== $stage passed in $((SECONDS - started)) s"
    else
        failed+=("$stage")
        echo "=== $stage FAILED after $((SECONDS - started)) s"
    fi
done
[ ${#failed[@]} -eq 0 ] || echo "failed: ${failed[*]}"
echo "stages: $passed passed, ${#failed[@]} failed"
[ ${#failed[@]} -eq 0 ]
