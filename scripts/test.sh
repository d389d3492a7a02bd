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

# Leaks are looked for at the end of whole test programs: at the end of each of a thousand short
# processes the checker dies now and then of driver threads that are just starting or ending.
if [ "$preset" = asan ]; then
  export LIBGL_ALWAYS_SOFTWARE=1 ASAN_OPTIONS=detect_leaks=1
  export LSAN_OPTIONS="suppressions=$PWD/tests/sanitizers/lsan.supp:print_suppressions=0"
  for program in build/asan/tests/*_test build/asan/tests/*_tests; do
    # This one needs a library path that only ctest gives it.
    [ "$program" != build/asan/tests/external_implementation_test ] || continue
    echo "leaks: $program"
    "$program" --gtest_brief=1
  done
fi
