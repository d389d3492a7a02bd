#!/usr/bin/env bash
# build.sh [PRESET [TARGET...]]: configures and builds a preset (default: linux), the libraries of
# the preset `windows` first.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-linux}
shift $(($# > 0 ? 1 : 0))

[ "$preset" != windows ] || scripts/windows/dependencies.sh
cmake --preset "$preset" >/dev/null
cmake --build "build/$preset" ${1:+--target "$@"}
