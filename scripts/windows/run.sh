#!/usr/bin/env bash
# run.sh PROGRAM [ARGUMENT...]: runs a Windows program under Wine with software OpenGL, in a prefix
# of its own (KRV_WINE_PREFIX, else build/wine), on a virtual screen unless DISPLAY names one.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
if [ -z "${DISPLAY:-}" ]; then
  exec xvfb-run -a -s "-screen 0 1280x720x24" "$0" "$@"
fi

export WINEPREFIX=${KRV_WINE_PREFIX:-$root/build/wine} WINEARCH=win64 WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d;winedbg.exe=d"
export LIBGL_ALWAYS_SOFTWARE=1
wine=/usr/lib/wine/wine64

mkdir -p "$WINEPREFIX"
exec 9>"$WINEPREFIX/.krv-lock"
flock 9
if [ ! -f "$WINEPREFIX/.krv-ready" ]; then
  "$wine" wineboot -i >/dev/null 2>&1 9>&-
  touch "$WINEPREFIX/.krv-ready"
fi
here=$root/scripts/windows
launcher=$WINEPREFIX/launch.exe
if [ ! "$launcher" -nt "$here/launch.c" ]; then
  x86_64-w64-mingw32-gcc-posix -O1 -static -o "$launcher" "$here/launch.c"
fi
preloaded=$WINEPREFIX/late_interrupt.so
if [ ! "$preloaded" -nt "$here/late_interrupt.c" ]; then
  gcc -O1 -Wall -Werror -fPIC -shared -o "$preloaded.new" "$here/late_interrupt.c"
  mv "$preloaded.new" "$preloaded"  # at once: a program may be starting with the old one
fi
exec 9>&-

# Into files: Wine's helper processes outlive the program and would keep a pipe open.
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
code=0
LD_PRELOAD=$preloaded "$wine" "$launcher" "$@" >"$out/stdout" 2>"$out/stderr" || code=$?
cat "$out/stdout"
cat "$out/stderr" >&2
exit "$code"
