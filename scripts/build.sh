#!/usr/bin/env bash
# build.sh [PRESET [TARGET...]]: configures and builds a preset (default: linux).
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-linux}
shift $(($# > 0 ? 1 : 0))

cmake --preset "$preset" >/dev/null
cmake --build "build/$preset" ${1:+--target "$@"}
