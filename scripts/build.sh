#!/usr/bin/env bash
# build.sh [PRESET [TARGET...]]: configures and builds a preset (default: linux).
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-linux}
shift $(($# > 0 ? 1 : 0))

cmake --preset "$preset" >"/tmp/krv-configure-$$.log" 2>&1 || {
  cat "/tmp/krv-configure-$$.log" >&2
  rm -f "/tmp/krv-configure-$$.log"
  exit 1
}
rm -f "/tmp/krv-configure-$$.log"
cmake --build "build/$preset" ${1:+--target "$@"}
