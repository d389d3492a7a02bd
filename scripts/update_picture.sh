#!/usr/bin/env bash
# update_picture.sh: draws the README's picture anew, the contact sheet of the gallery of all packages.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh linux krv krvAudioVisualPlugin packages
build/linux/krv gallery -o build/picture
ffmpeg -nostdin -v error -y -i build/picture/contact_sheet.png \
  -vf "scale='min(iw,1416)':-1:flags=area" -q:v 3 docs/images/effects.jpg
