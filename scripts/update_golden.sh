#!/usr/bin/env bash
# update_golden.sh: builds, and renders the golden pictures of tests/packages/golden/ anew where the
# shipped packages look different now. Prints what changed. Look at every picture before you commit it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh linux update_golden krvAudioVisualPlugin
LIBGL_ALWAYS_SOFTWARE=1 build/linux/tests/update_golden build/linux/krvAudioVisualPlugin.krv \
  packages tests/packages/golden
