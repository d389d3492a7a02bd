#!/usr/bin/env bash
# debian_test.sh BUILD VERSION SCRATCH: makes the Debian package of a build, twice the same, and uses
# the program from the folder that it is unpacked to.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1
version=$2
scratch=$3
rm -rf "$scratch"
mkdir -p "$scratch"
fail() { echo "debian_test: $1" >&2; exit 1; }

umask 022
export SOURCE_DATE_EPOCH=1700000000
for run in one two; do
  cpack --config "$build/CPackConfig.cmake" -B "$scratch/$run" >"$scratch/$run.log" 2>&1 ||
    { cat "$scratch/$run.log" >&2; fail "cpack fails"; }
done
package=$(echo "$scratch"/one/*.deb)
cmp "$package" "$scratch/two/$(basename "$package")" || fail "made again, the package is another one"

field() { dpkg-deb -f "$package" "$1"; }
[ "$(field Package) $(field Version)" = "krv $version-0krv1" ] || fail "not the version $version"
for library in libavcodec59 libfftw3-single3 libopencv-dnn406 libegl1 libgl1-mesa-dri libsodium23; do
  field Depends | grep -qE "(^| )$library( |,|$)" || fail "it does not depend on $library"
done

dpkg-deb -x "$package" "$scratch/root"
root=$scratch/root/usr
[ -z "$(find "$scratch/root" -type f -perm /022)$(find "$scratch/root" -type d ! -perm 755)" ] ||
  fail "some permissions are wrong"
for text in share/man/man1/krv.1 share/doc/krv/changelog share/doc/krv/changelog.Debian; do
  gzip -t "$root/$text.gz" || fail "no $text.gz"
done
"$here/check_links.sh" "$root/share/doc/krv"
[ -s "$root/share/doc/krv/copyright" ] || fail "no copyright file"
for binary in bin/krv lib/krv/plugins/krvAudioVisualPlugin.krv lib/krv/plugins/krvAiFilterPlugin.krv; do
  ! file "$root/$binary" | grep -q 'not stripped' || fail "$binary is not stripped"
done

mkdir "$root/share/krv/models"
echo nothing >"$root/share/krv/models/person_segmentation.onnx"
"$here/try_program.sh" "$version" "$scratch/work" "$root/bin/krv"
