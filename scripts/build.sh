#!/usr/bin/env bash
# build.sh [PRESET [TARGET...]]: configures and builds a preset (default: linux), the libraries of
# the preset `windows` first.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-linux}
shift $(($# > 0 ? 1 : 0))

fresh=()
if [ "$preset" = windows ]; then
  scripts/windows/dependencies.sh
  # CMake remembers where it has found libraries.
  [ build/windows/CMakeCache.txt -nt build/windows-libraries.txt ] || fresh=(--fresh)
fi
cmake --preset "$preset" "${fresh[@]}" >/dev/null
cmake --build "build/$preset" ${1:+--target "$@"}
