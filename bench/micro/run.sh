#!/usr/bin/env bash
# run.sh [OPTIONS]: builds and runs the micro-benchmarks with software OpenGL; options are Google
# Benchmark's, such as --benchmark_filter=AudioStage.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
"$root/scripts/build.sh" linux krvAudioVisualPlugin krv_benchmarks
LIBGL_ALWAYS_SOFTWARE=1 "$root/build/linux/bench/krv_benchmarks" "$@"
