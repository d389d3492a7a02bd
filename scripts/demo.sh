#!/usr/bin/env bash
# demo.sh [INPUT]: sets up, builds, and renders the spectrum bars over INPUT, or over a clip with
# music that it makes itself, to build/demo/.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
input=${1:+$(realpath -- "$1")}
cd "$root"

scripts/setup.sh
scripts/build.sh linux krv krvAudioVisualPlugin packages krv_demo_clip
out=build/demo
mkdir -p "$out"
if [ -z "$input" ]; then
  input=$out/clip.mp4
  [ -f "$input" ] || build/linux/krv_demo_clip "$input"
fi
name=$(basename -- "${input%.*}")
build/linux/krv render "$input" --effect audio_visualization_bars -o "$out/$name-bars.mp4"
echo "Open $root/$out/$name-bars.mp4"
