#!/usr/bin/env bash
# package.sh: makes build/windows/krvAudioVisualPlugin-VERSION-windows-x64.zip with the plug-ins, the
# program, the effect packages and the licences of everything linked into them.
set -euo pipefail
exec "$(dirname "$0")/../package.sh" windows
