#!/usr/bin/env bash
# instructions.sh [PACKAGE]: counts the instructions of one frame (package bars by default), and of
# one audio block beside those of the bare transform with its logarithms, with callgrind. Frames are
# in memory; software OpenGL draws on the calling thread. SIZES: of the frames (default "1280x720
# 1920x1080").
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
package=${1:-$root/packages/bars}
command -v valgrind >/dev/null || { echo "instructions: install the package valgrind" >&2; exit 1; }
"$root/scripts/build.sh" linux krvAudioVisualPlugin instruction_work >&2
work=$root/build/linux/bench/instruction_work
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export LIBGL_ALWAYS_SOFTWARE=1 LP_NUM_THREADS=0 MESA_SHADER_CACHE_DISABLE=true

# counted FEW MANY ARGUMENTS...: the split of MANY - FEW times of what the arguments say.
counted() {
  local few=$1 many=$2
  shift 2
  for times in "$few" "$many"; do
    valgrind --tool=callgrind --callgrind-out-file="$scratch/$times" "$work" "$@" "$times" \
      >"$scratch/log" 2>&1 || { cat "$scratch/log" >&2; exit 1; }
  done
  python3 "$root/bench/instructions/count.py" "$scratch/$few" "$scratch/$many" $((many - few))
}

for size in ${SIZES:-1280x720 1920x1080}; do
  set -- "${size%x*}" "${size#*x}"
  echo "Instructions of one frame of $(basename "$package"), $1 x $2, in memory:"
  counted 2 4 frames "$root/build/linux/krvAudioVisualPlugin.krv" "$package" "$1" "$2" memory
done
for samples in 1600 1764 1601,1602; do
  for what in audio fft; do
    echo "Instructions of one $what block of $samples samples:"
    counted 40 80 "$what" "$samples" | tail -1
  done
done
