#!/usr/bin/env bash
# growth.sh [FOLDER]: measures how the cost of a frame grows with its area, the number of bars, of
# figures in one pass and in passes of their own, and of effects in use, with software OpenGL. Writes
# growth.md (tables and fitted laws), growth.json and growth.svg (plots) into FOLDER (default:
# build/bench/growth). REPEATS: how often everything is measured, one after the other (default 3);
# FRAMES: of a round.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
out=${1:-$root/build/bench/growth}
repeats=${REPEATS:-3}
frames=${FRAMES:-10}
"$root/scripts/build.sh" linux krv krvAudioVisualPlugin >&2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$root/bench/packages/make.sh" "$scratch/packages"
export LIBGL_ALWAYS_SOFTWARE=1

# measured SERIES X PACKAGE OPTIONS...: one point, into a file of its own.
measured() {
  local series=$1 x=$2 package=$3
  shift 3
  mkdir -p "$scratch/results/$series"
  "$root/build/linux/krv" bench "$package" --quality medium --rounds 3 --frames "$frames" \
    --json "$scratch/results/$series/$x.$repeat.json" "$@" >/dev/null
}

for ((repeat = 1; repeat <= repeats; repeat++)); do
  echo "growth: $repeat of $repeats" >&2
  for size in 640x360 960x540 1280x720 1600x900 1920x1080 2560x1440 3200x1800 3840x2160; do
    area=$((${size%x*} * ${size#*x}))
    measured area_memory "$area" "$root/packages/bars" --form memory --size "$size"
    measured area_gpu "$area" "$root/packages/bars" --form gpu --size "$size"
  done
  for bars in 8 16 32 64 128 256 384 512; do
    # The bars together cover the same area.
    width=$(awk "BEGIN { print 0.5 * 63 / $bars }")
    [ "$bars" -ge 16 ] || width=1
    measured items "$bars" "$scratch/packages/bars_512" --form memory --size 1080p \
      --param "spectrum_count=$bars" --param "spectrum_width=$width"
  done
  for figures in 1 2 3 4; do
    measured figures_one_pass "$figures" "$scratch/packages/rows_$figures" --form memory --size 1080p
    measured figures_passes "$figures" "$scratch/packages/figures_$figures" --form memory \
      --size 1080p
  done
  for instances in 1 2 3 4 5 6 7 8; do
    measured instances "$instances" "$root/packages/bars" --form memory --size 1080p \
      --instances "$instances"
  done
done
mkdir -p "$out"
python3 "$root/bench/growth/report.py" "$scratch/results" "$out"
cat "$out/growth.md"
