#!/usr/bin/env bash
# demo.sh [INPUT]: sets up, builds, renders the spectrum bars over INPUT, or over a clip with music
# that it makes itself, and shows every effect over it on one page, all in build/demo/. What is up to
# date is not rendered again.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
input=${1:+$(realpath -- "$1")}
cd "$root"

scripts/setup.sh
scripts/build.sh linux krv krvAudioVisualPlugin krvAiFilterPlugin packages
out=build/demo
mkdir -p "$out"
clip=${input:-$out/demo.mp4}
name=$(basename -- "${clip%.*}")
movie=$out/$name-bars.mp4
gallery=$out/$name-gallery
sources=("$clip" build/linux/krv build/linux/krvAudioVisualPlugin.krv packages)

# Inputs of one name in several folders share the names of what is made of them.
source=$(realpath -m -- "$clip")
if [ "$(cat "$out/$name.source" 2>/dev/null)" != "$source" ]; then
  rm -f "$movie" "$gallery/index.html"
  printf '%s\n' "$source" >"$out/$name.source"
fi

# Whether a file was made after everything that it is made of.
is_up_to_date() { [ -f "$1" ] && [ -z "$(find "${sources[@]}" -newer "$1" -print -quit)" ]; }

if [ ! -f "$clip" ] || ! is_up_to_date "$movie"; then
  if [ -n "$input" ]; then
    build/linux/krv render "$input" --effect audio_visualization_bars -o "$movie"
  else
    rm -f "$clip"
    build/linux/krv demo --clip "$clip" -o "$movie" >/dev/null
  fi
fi
is_up_to_date "$gallery/index.html" || build/linux/krv gallery "$clip" -o "$gallery"
echo "Open $root/$movie and $root/$gallery/index.html"
