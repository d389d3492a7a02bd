#!/usr/bin/env bash
# package.sh: builds the preset `windows` and makes build/windows/krvAudioVisualPlugin-VERSION-windows-x64.zip
# with the plug-ins, the program, the effect packages and the licences of everything linked into them.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root"

scripts/setup.sh windows
scripts/build.sh windows krvAudioVisualPlugin krvAiFilterPlugin krv
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=krvAudioVisualPlugin-$version-windows-x64
stage=build/windows/package/$name
rm -rf build/windows/package
mkdir -p "$stage/licences"

cp build/windows/krvAudioVisualPlugin.krv build/windows/krvAiFilterPlugin.krv \
  build/windows/krv.exe README.md CHANGELOG.md "$stage/"
cp -r packages "$stage/packages"
rm "$stage/packages/CMakeLists.txt"

# Libraries built from source bring their own texts; of what Debian ships built, or as headers, and
# of the compiler's runtime, it is Debian's record of them.
while read -r prefix; do
  [ ! -d "$prefix/licences" ] || cp -r "$prefix/licences/." "$stage/licences/"
done <build/windows-libraries.txt
for pair in zlib:libz-mingw-w64-dev nlohmann-json:nlohmann-json3-dev cli11:libcli11-dev \
  glad:python3-glad mingw-w64:mingw-w64-common gcc:g++-mingw-w64-x86-64-posix; do
  mkdir -p "$stage/licences/${pair%%:*}"
  cp "/usr/share/doc/${pair##*:}/copyright" "$stage/licences/${pair%%:*}/copyright"
done

(cd build/windows/package && cmake -E tar cf "../$name.zip" --format=zip "$name")
echo "Packed $root/build/windows/$name.zip"
