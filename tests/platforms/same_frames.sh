#!/usr/bin/env bash
# same_frames.sh LINUX_BUILD WINDOWS_BUILD RUNNER SCRATCH: renders some frames of every package with
# the programs of both builds, in memory and in textures, and fails unless the pixels are the same
# to the last bit. RUNNER starts a Windows program.
set -euo pipefail
linux=$1
windows=$2
runner=$3
scratch=$4
first=12
count=4

for file in "$linux/krv" "$linux/krvAudioVisualPlugin.krv" "$linux/krv_demo_clip"; do
  [ -f "$file" ] || { echo "same_frames: build the preset linux first: no $file" >&2; exit 1; }
done
rm -rf "$scratch"
mkdir -p "$scratch"
cd "$scratch"

# Lossless, so that no decoder comes between the two.
"$linux/krv_demo_clip" clip.mp4
ffmpeg -nostdin -v error -i clip.mp4 -t 1 -vf scale=480:270 -c:v ffv1 -c:a pcm_s16le clip.mkv
ffmpeg -nostdin -v error -f lavfi -i color=black:s=480x270 -frames:v 1 \
  -vf "geq=lum='255*lt(hypot(X-240,(Y-150)/1.6),80)':cb=128:cr=128" person.png

pixels() { ffmpeg -nostdin -v error -start_number "$first" -i "$1/frame_%06d.png" -f rawvideo -pix_fmt rgba -; }

failures=0
compared=0
for description in "$linux"/packages/*/description.json; do
  effect=$(sed -n 's/.*"unique_name": "\([^"]*\)".*/\1/p' "$description")
  person=()
  ! grep -q '"human_segment"' "$description" || person=(--mask person.png)
  for device in memory gpu; do
    options=(clip.mkv --effect "$effect" --device "$device" "${person[@]}"
      --frames "$first:$((first + count))")
    mkdir -p "linux/$effect" "windows/$effect"
    "$linux/krv" render "${options[@]}" -o "linux/$effect/$device/" 2>linux.log ||
      { cat linux.log; exit 1; }
    "$runner" "$windows/krv.exe" render "${options[@]}" -o "windows/$effect/$device/" 2>windows.log ||
      { cat windows.log; exit 1; }
    pixels "linux/$effect/$device" >linux.raw
    pixels "windows/$effect/$device" >windows.raw
    compared=$((compared + 1))
    if [ "$(stat -c %s linux.raw)" != $((480 * 270 * 4 * count)) ]; then
      echo "$effect, $device: not all frames"
      failures=$((failures + 1))
    elif ! cmp -s linux.raw windows.raw; then
      echo "$effect, $device: $(cmp -l linux.raw windows.raw | wc -l) bytes differ"
      failures=$((failures + 1))
    fi
  done
done
echo "same_frames: $compared of packages and frame forms compared, $failures differ"
[ "$compared" -ge 12 ] && [ "$failures" -eq 0 ]
