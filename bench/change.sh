#!/usr/bin/env bash
# One change from a photograph of 24 megapixels: processor time of whole commands, and their ratio to the floor, which
# is a scaled decode and a file of the bitmap's bytes. Lowest of RUNS (11) rounds, the programs taking turns.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
build=${BUILD:-build/linux}
runs=${RUNS:-11}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
photo=$build/bench-photo.jpg
[ -s "$photo" ] || "$build/change_make_photo" "$photo" 6000 4000

# User and system time of a command in milliseconds.
spent() {
  local TIMEFORMAT='%3U %3S'
  { time "$@" >"$work/said" 2>&1; } 2>&1 | awk '{ printf "%d\n", ($1 + $2) * 1000 }'
}

for size in 1920x1080 3840x2160; do
  width=${size%x*} height=${size#*x}
  declare -A commands=(
    [floor]="$build/change_floor $photo $work/floor.raw $width $height"
    [drawing alone]="$build/change_change $photo $work/change.bmp $width $height"
    [plain Qt]="$build/change_plain_qt $photo $work/qt.bmp $width $height"
  )
  names=(floor "drawing alone" "plain Qt")
  if [ -x "$build/quorvanectl" ] && "$build/quorvanectl" render --out "$work/probe.bmp" --picture "$photo" --size 640x480 \
      >/dev/null 2>&1; then
    commands[quorvanectl render]="$build/quorvanectl render --out $work/render.bmp --picture $photo --size $size"
    names+=("quorvanectl render")
  fi
  if command -v convert >/dev/null; then
    commands[ImageMagick]="convert -size $((width + 4))x$((height + 4)) gradient:blue-red ( $photo -resize $size ) \
      -gravity center -composite BMP3:$work/magick.bmp"
    names+=(ImageMagick)
  fi
  declare -A best=()
  for ((run = 0; run < runs; ++run)); do
    for name in "${names[@]}"; do
      # The slow one need not go every round.
      [[ $name == ImageMagick && $run -gt 2 ]] && continue
      milliseconds=$(spent ${commands[$name]})
      [[ -n ${best[$name]:-} && ${best[$name]} -le $milliseconds ]] || best[$name]=$milliseconds
    done
  done
  echo "$size"
  for name in "${names[@]}"; do
    awk -v n="$name" -v t="${best[$name]}" -v f="${best[floor]}" 'BEGIN { printf "  %-20s %5d ms  %5.2f\n", n, t, t / f }'
  done
done
read -r before highest after < <("$build/change_change" "$photo" "$work/change.bmp" 3840 2160 3)
echo "memory at 3840x2160: $(((highest - before) / 1024)) MiB above rest at the highest, $((after - before)) KiB after three changes"
