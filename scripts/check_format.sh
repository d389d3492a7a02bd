#!/usr/bin/env bash
# Fails when a C++ source is not laid out as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -z '*.h' '*.cpp' | xargs -0 -r clang-format --dry-run --Werror
