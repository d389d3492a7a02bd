#!/usr/bin/env bash
# test.sh [PRESET]: sets up, builds and runs every test (preset: linux, debug, asan or tsan; default
# linux). Ends with the summary of ctest.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-linux}

scripts/setup.sh
scripts/check_format.sh
scripts/build.sh "$preset"
ctest --preset "$preset" --parallel "$(nproc)"
