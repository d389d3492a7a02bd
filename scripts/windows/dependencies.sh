#!/usr/bin/env bash
# dependencies.sh: cross-builds the libraries of libraries.txt for Windows x64, each once, into a
# cache outside the clone (KRV_CACHE, else ~/.cache/krvAudioVisual), keyed by its version, its recipe
# and the compiler. Writes their folders, one a line, to build/windows-libraries.txt, which the
# toolchain file reads. Takes about 20 minutes with an empty cache and a second with a full one.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
cache=${KRV_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/krvAudioVisual}/windows
mkdir -p "$cache" "$root/build"
exec 9>"$cache/lock"
flock 9

compiler=$(x86_64-w64-mingw32-g++-posix -v 2>&1 | sha256sum)
zlib=$(dpkg-query -W -f='${Version}' libz-mingw-w64-dev)

declare -A key
list=""
while read -r name package needs; do
  version=$(dpkg-query -W -f='${source:Version}' "$package")
  text="$version $compiler $zlib"
  prefixes=""
  for need in $needs; do
    text+=" ${key[$need]}"
    prefixes+=" $cache/${key[$need]}"
  done
  hash=$(cat - "$here/build_library.sh" "$here/recipes/$name.sh" <<<"$text" | sha256sum)
  key[$name]=$name-${version//[^0-9A-Za-z.+]/_}-${hash:0:12}
  prefix=$cache/${key[$name]}
  if [ ! -f "$prefix/complete" ]; then
    echo "dependencies: building $name $version for Windows"
    log=$cache/$name.log
    rm -rf "$prefix"
    if ! "$here/build_library.sh" "$name" "$version" "$prefix" $prefixes >"$log" 2>&1; then
      tail -n 30 "$log" >&2
      rm -rf "$prefix"
      echo "dependencies: building $name failed; the whole output is in $log" >&2
      exit 1
    fi
  fi
  list+="$prefix"$'\n'
done < <(grep -v '^#' "$here/libraries.txt")

# Left alone when it says the same, so that nothing is configured again.
out=$root/build/windows-libraries.txt
[ -f "$out" ] && [ "$(cat "$out")" = "${list%$'\n'}" ] || printf '%s' "$list" >"$out"
