#!/usr/bin/env bash
# coverage.sh: runs the whole suite in a build of its own and says which lines and branches of
# plugins/ it reaches; build/coverage/plugins.html shows them. Fails below 95 % of the lines or 85 %
# of the branches. Branches that only exceptions of the standard library take are not counted.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh coverage
scripts/build.sh coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)"
gcovr --root . --filter plugins/ --exclude '.*/platform/windows/.*' \
  --exclude-throw-branches --exclude-unreachable-branches --print-summary --sort-percentage \
  --html-details build/coverage/plugins.html --txt build/coverage/plugins.txt \
  --fail-under-line 95 --fail-under-branch 85 build/coverage
