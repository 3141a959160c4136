#!/usr/bin/env bash
# A batch of criteria through quorvanectl, good and broken ones mixed: processor time a line in microseconds, the lowest
# of RUNS (5) rounds. It has to stay below 3.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=${BUILD:-build/linux}
runs=${RUNS:-5}
lines=${LINES_OF_BATCH:-500000}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

awk -v lines="$lines" 'BEGIN {
  count = split("hh=12&nn=30&wd<6|hh >= 8 & hh <= 17 ^ nn = 0|-(hh)*2+fsqr(4)|(dd=1&mm=1)^(dd=25&mm=12)|hh=12&nn=|" \
                "((1+2)*3))|{ss/7}*[nn]\\3-hh|hh mm", texts, "|")
  for (line = 0; line < lines; ++line) print texts[line % count + 1]
}' >"$work/criteria"

for json in "" --json; do
  best=
  for ((run = 0; run < runs; ++run)); do
    TIMEFORMAT='%3U %3S'
    spent=$({ time "$build/quorvanectl" criteria compile $json - <"$work/criteria" >"$work/out" 2>"$work/err"; } 2>&1 |
      awk '{ print $1 + $2 }')
    best=$(awk -v a="$spent" -v b="${best:-$spent}" 'BEGIN { print a < b ? a : b }')
  done
  [ "$(wc -l <"$work/out")" -eq "$lines" ]
  awk -v how="${json:-plain}" -v t="$best" -v n="$lines" 'BEGIN {
    printf "%-7s %.2f microseconds a line\n", how, t / n * 1e6
    exit t / n * 1e6 >= 3
  }'
done
