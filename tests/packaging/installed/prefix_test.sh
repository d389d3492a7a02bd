#!/usr/bin/env bash
# prefix_test.sh BUILD VERSION SCRATCH: installs a build into a folder, moves that folder, and uses
# the program through a link in the search path.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
version=$2
scratch=$3
rm -rf "$scratch"
mkdir -p "$scratch/links"

cmake --install "$build" --prefix "$scratch/first" >/dev/null
moved="$scratch/moved away"
mv "$scratch/first" "$moved"
ln -s "$moved/bin/krv" "$scratch/links/krv"

for file in share/man/man1/krv.1 share/bash-completion/completions/krv share/doc/krv/README.md \
  share/krv/packages/uniforms.json share/krv/packages/params.schema.json \
  share/icons/hicolor/scalable/apps/krv.svg lib/krv/plugins/krvAiFilterPlugin.krv; do
  [ -s "$moved/$file" ] || { echo "prefix_test: no $file is installed" >&2; exit 1; }
done
"$here/check_links.sh" "$moved/share/doc/krv"
desktop-file-validate "$moved/share/applications/krv.desktop"

# A host of somebody else's, made of what is installed alone.
example=$moved/share/doc/krv/examples/host
c++ -std=c++20 -I "$moved/include" -I "$example" "$example/main.cpp" "$example/platform/linux.cpp" \
  -lEGL -o "$scratch/host"
"$scratch/host" "$moved/lib/krv/plugins/krvAudioVisualPlugin.krv" "$moved/share/krv/packages/bars" \
  "$scratch/frame.ppm" >/dev/null
[ -s "$scratch/frame.ppm" ] || { echo "prefix_test: the example drew no frame" >&2; exit 1; }

# Something that is no network, to see that it is looked at.
mkdir "$moved/share/krv/models"
echo nothing >"$moved/share/krv/models/person_segmentation.onnx"
PATH=$scratch/links:$PATH "$here/try_program.sh" "$version" "$scratch/work" krv
