#!/usr/bin/env bash
# demo.sh [INPUT]: sets up, builds, and renders the spectrum bars over INPUT, or over a clip with
# music that it makes itself, to build/demo/. What is up to date is not rendered again.
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
  [ "$input" -nt build/linux/krv_demo_clip ] || build/linux/krv_demo_clip "$input"
fi
name=$(basename -- "${input%.*}")
result=$out/$name-bars.mp4
sources=("$input" build/linux/krv build/linux/krvAudioVisualPlugin.krv packages)
if [ ! -f "$result" ] || [ -n "$(find "${sources[@]}" -newer "$result" -print -quit)" ]; then
  build/linux/krv render "$input" --effect audio_visualization_bars -o "$result"
fi
echo "Open $root/$result"
