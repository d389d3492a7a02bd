#!/usr/bin/env bash
# test.sh [PRESET...]: sets up, builds and runs every test of each preset (linux, windows, debug, asan
# or tsan; default: linux and windows). Ends with the summaries of ctest; a failure in one preset ends
# the run.
set -euo pipefail
cd "$(dirname "$0")/.."

# Leaks are looked for at the end of whole test programs: at the end of each of a thousand short
# processes the checker dies now and then of driver threads that are just starting or ending.
find_leaks() {
  export LIBGL_ALWAYS_SOFTWARE=1 ASAN_OPTIONS=detect_leaks=1
  export LSAN_OPTIONS="suppressions=$PWD/tests/sanitizers/lsan.supp:print_suppressions=0"
  local program
  for program in build/asan/tests/*_test build/asan/tests/*_tests; do
    # This one needs a library path that only ctest gives it.
    [ "$program" != build/asan/tests/external_implementation_test ] || continue
    echo "leaks: $program"
    "$program" --gtest_brief=1
  done
}

test_preset() {
  local preset=$1 screen=()
  scripts/setup.sh "$preset"
  scripts/build.sh "$preset"
  # One screen for the whole run.
  [ "$preset" != windows ] || screen=(xvfb-run -a -s "-screen 0 1280x720x24")
  echo "== tests of the preset $preset =="
  "${screen[@]}" ctest --preset "$preset" --parallel "$(nproc)"
  cmake --preset "$preset" | grep '^-- Not tested' || true
  [ "$preset" != asan ] || (find_leaks)
}

[ $# -gt 0 ] || set -- linux windows
scripts/setup.sh
scripts/check_format.sh
for preset; do test_preset "$preset"; done
