#!/usr/bin/env bash
# try_debian_package.sh [PACKAGE.deb]: installs the package (default: the one of build/linux) in a bare
# Debian 12, makes the demo there, and removes it again; fails when something of it stays. Needs root,
# the package mmdebstrap and a Debian mirror (KRV_DEBIAN_MIRROR). Takes some minutes; what the demo
# looks like is left in build/bare/.
set -euo pipefail
package=${1:+$(realpath -- "$1")}
cd "$(dirname "$0")/.."
fail() { echo "try_debian_package: $1" >&2; exit 2; }
made=(build/linux/krv_*.deb)
package=${package:-${made[-1]}}
[ -f "$package" ] || fail "there is no $package; scripts/package.sh linux makes the package"
command -v mmdebstrap >/dev/null || fail "install the Debian package mmdebstrap first"
mirror=${KRV_DEBIAN_MIRROR:-http://deb.debian.org}
out=build/bare
rm -rf "$out"
mkdir -p "$out"
cp "$package" "$out/krv.deb"

# Runs inside: what belongs to the package manager, or to what it starts, may differ at the end.
cat >"$out/inside.sh" <<'END'
set -eu
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
files() {
  find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /var/lib/dpkg \
    -o -path /var/lib/apt -o -path /var/cache -o -path /var/log \) -prune -o -print | sort
}
apt-get update -qq
files >/tmp/before
apt-get install -y -qq --no-install-recommends /tmp/krv.deb >/tmp/install.log 2>&1 ||
  { cat /tmp/install.log; exit 1; }
echo "installed with $(($(grep -c '^Setting up' /tmp/install.log) - 1)) packages that it needs"
mkdir -m 777 /tmp/trial
setpriv --reuid=nobody --regid=nogroup --clear-groups env HOME=/tmp/trial sh -c 'cd && set -e
  krv --version | head -n 1
  echo "$(krv list | grep -c ^audio_visualization_) effects"
  krv new my_look >/dev/null
  krv check my_look
  krv demo'
apt-get purge -y -qq --autoremove krv >/tmp/purge.log 2>&1 || { cat /tmp/purge.log; exit 1; }
files >/tmp/after
diff /tmp/before /tmp/after || { echo "these files are new or gone after the purge"; exit 1; }
echo "nothing of it is left: the same $(wc -l </tmp/after) files and folders as before"
END

mmdebstrap --quiet --variant=minbase \
  --customize-hook="copy-in $out/krv.deb $out/inside.sh /tmp" \
  --customize-hook='chroot "$1" sh /tmp/inside.sh' \
  --customize-hook="copy-out /tmp/trial/krv-demo.mp4 $out" \
  bookworm /dev/null "deb $mirror/debian bookworm main" \
  "deb $mirror/debian bookworm-updates main" \
  "deb $mirror/debian-security bookworm-security main"
