#!/usr/bin/env bash
# demo.sh [INPUT]: sets up, builds, renders the spectrum bars over INPUT, or over a clip with music
# that it makes itself, and shows every effect over it on one page, all in build/demo/. What is up to
# date is not rendered again.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
input=${1:+$(realpath -- "$1")}
cd "$root"

scripts/setup.sh
scripts/build.sh linux krv krvAudioVisualPlugin krvAiFilterPlugin packages krv_demo_clip
out=build/demo
mkdir -p "$out"
if [ -z "$input" ]; then
  input=$out/clip.mp4
  [ "$input" -nt build/linux/krv_demo_clip ] || build/linux/krv_demo_clip "$input"
fi
name=$(basename -- "${input%.*}")
movie=$out/$name-bars.mp4
gallery=$out/$name-gallery
sources=("$input" build/linux/krv build/linux/krvAudioVisualPlugin.krv packages)

# Whether a file was made after everything that it is made of.
is_up_to_date() { [ -f "$1" ] && [ -z "$(find "${sources[@]}" -newer "$1" -print -quit)" ]; }

is_up_to_date "$movie" ||
  build/linux/krv render "$input" --effect audio_visualization_bars -o "$movie"
is_up_to_date "$gallery/index.html" || build/linux/krv gallery "$input" -o "$gallery"
echo "Open $root/$movie and $root/$gallery/index.html"
