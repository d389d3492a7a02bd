#!/usr/bin/env bash
# package.sh [PRESET...]: makes the packages of the presets linux and windows (default: both), which are
# build/linux/krv_VERSION-0krv1_amd64.deb and
# build/windows/krvAudioVisualPlugin-VERSION-windows-x64.zip.
# The same sources make the same Debian package: its times are those of the last commit.
set -euo pipefail
cd "$(dirname "$0")/.."

umask 022
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
[ $# -gt 0 ] || set -- linux windows
for preset; do
  scripts/setup.sh "$preset"
  targets=(krv krvAudioVisualPlugin krvAiFilterPlugin)
  [ "$preset" != linux ] || targets+=(manual)
  scripts/build.sh "$preset" "${targets[@]}"
  cpack --config "build/$preset/CPackConfig.cmake" | grep 'generated\.'
done
