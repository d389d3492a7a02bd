#!/usr/bin/env bash
# check_tidy.sh [PRESET]: runs clang-tidy (package clang-tidy) over every source of a configured
# build (default: linux), but for those of another platform.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-linux}
git ls-files -z 'plugins/*.cpp' 'host/*.cpp' 'tools/*.cpp' ':!*/platform/windows/*' |
  xargs -0 -n 4 -P "$(nproc)" clang-tidy --quiet -p "build/$preset"
