#!/usr/bin/env bash
# try_program.sh VERSION FOLDER PROGRAM [ARGUMENT...]: does with an installed krv what its users begin
# with, in a new FOLDER, and fails when something is not found or goes wrong. The words from PROGRAM
# on run it.
set -euo pipefail
version=$1
folder=$2
shift 2
krv=("$@")
mkdir "$folder"
cd "$folder"
fail() { echo "try_program: $1" >&2; exit 1; }

"${krv[@]}" --version >version.txt
[ "$(head -n 1 version.txt | tr -d '\r')" = "krv $version" ] || fail "not version $version"

"${krv[@]}" list >list.txt
[ "$(grep -c '^audio_visualization_' list.txt)" -ge 10 ] || fail "it does not list its effects"

"${krv[@]}" new my_look >new.txt
[ -f my_look/description.schema.json ] || fail "the new package lacks the schema"
"${krv[@]}" new my_bars --from audio_visualization_bars >new.txt
"${krv[@]}" check my_look my_bars

# With the AI filter plug-in, which looks at the folder of models.
"${krv[@]}" demo -o demo.mp4 --clip clip.mp4
[ "$(stat -c %s demo.mp4)" -gt 100000 ] || fail "the demo is too small to be one"
"${krv[@]}" render clip.mp4 --effect audio_visualization_mask_shape --frames 0:1 -o person/ \
  2>person.txt || true
grep -q 'person_segmentation.onnx' person.txt || fail "it does not look for models: $(cat person.txt)"
echo "try_program: krv $version works"
