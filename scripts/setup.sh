#!/usr/bin/env bash
# setup.sh [PRESET]: installs the Debian packages that the project needs, for the presets
# `windows`, `fuzz` and `coverage` what they need beyond these as well. Does nothing when all are there.
set -euo pipefail
cd "$(dirname "$0")/.."

lists=(scripts/packages.txt)
case "${1:-}" in
  windows) lists+=(scripts/windows/packages.txt) ;;
  fuzz) lists+=(tests/fuzz/packages.txt) ;;
  coverage) lists+=(scripts/coverage_packages.txt) ;;
esac
mapfile -t wanted < <(grep -hv '^#' "${lists[@]}")
missing=()
for package in "${wanted[@]}"; do
  state=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [ "$state" = "install ok installed" ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

if [ "$(id -u)" -eq 0 ]; then
  as_root=()
elif command -v sudo >/dev/null; then
  as_root=(sudo)
else
  echo "setup: these packages are missing; install them as root, or install sudo: ${missing[*]}" >&2
  exit 1
fi

echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
