#!/usr/bin/env bash
# build_library.sh NAME VERSION PREFIX [NEEDED_PREFIX...]: fetches Debian's source package and builds
# it by recipes/NAME.sh as static libraries for Windows x64 in PREFIX, its licence files included.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
name=$1
version=$2
export PREFIX=$3
shift 3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$here/fetch_source.sh" "$name" "$version" "$work/source"
cd "$work/source"

export HOST=x86_64-w64-mingw32
export CC=$HOST-gcc-posix CXX=$HOST-g++-posix
# GCC keeps the stack of Windows programs aligned to 16 bytes only; aligned moves of AVX registers to
# it would crash.
export CFLAGS="-O3 -Wa,-muse-unaligned-vector-move" CXXFLAGS="-O3 -Wa,-muse-unaligned-vector-move"
needed=("$@")
PKG_CONFIG_LIBDIR=$(printf '%s/lib/pkgconfig:' "$@")
export PKG_CONFIG_LIBDIR

# licence FILE...: keeps the licence texts that builds with the library must carry.
licence() {
  mkdir -p "$PREFIX/licences/$name"
  cp "$@" "$PREFIX/licences/$name/"
}

autotools() {
  ./configure --host="$HOST" --prefix="$PREFIX" --enable-static --disable-shared "$@"
  make -j"$(nproc)"
  make install
}

mkdir -p "$PREFIX"
source "$here/recipes/$name.sh"
touch "$PREFIX/complete"
