#!/usr/bin/env bash
# zip_test.sh BUILD VERSION SCRATCH RUNNER: makes the ZIP of the Windows build, and uses the program
# from the folder that it is unpacked to. RUNNER starts a Windows program.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
version=$2
scratch=$3
runner=$4
rm -rf "$scratch"
mkdir -p "$scratch"

cpack --config "$build/CPackConfig.cmake" -B "$scratch/made" >"$scratch/log" ||
  { cat "$scratch/log" >&2; exit 1; }
(cd "$scratch" && cmake -E tar xf made/*.zip)
folder=$(echo "$scratch"/krvAudioVisualPlugin-"$version"-windows-x64)
for file in krvAudioVisualPlugin.krv krvAiFilterPlugin.krv README.md packages/uniforms.json \
  licences/ffmpeg/COPYING.GPLv2 licences/gcc/copyright; do
  [ -s "$folder/$file" ] || { echo "zip_test: the ZIP has no $file" >&2; exit 1; }
done
"$here/check_links.sh" "$folder"

mkdir "$folder/models"
echo nothing >"$folder/models/person_segmentation.onnx"
"$here/try_program.sh" "$version" "$scratch/work" "$runner" "$folder/krv.exe"
# The contract of every call; the tests of krv validate do the rest with the same file.
"$runner" "$folder/krv.exe" validate "Z:$folder/krvAudioVisualPlugin.krv" --strictness 1
