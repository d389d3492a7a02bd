#!/usr/bin/env bash
# run.sh [FRAMES]: builds, and prints what a frame of the outline points costs beside one of the
# bars with software OpenGL, 1920 x 1080 pixels, and what tracing and upload cost of it.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
"$root/scripts/build.sh" linux krvAudioVisualPlugin mask_shape_bench
LIBGL_ALWAYS_SOFTWARE=1 "$root/build/linux/bench/mask_shape_bench" \
  "$root/build/linux/krvAudioVisualPlugin.krv" "$root/packages" "$@"
