#!/usr/bin/env bash
# fetch_source.sh NAME VERSION FOLDER: Debian's source package, checked by its signature and hashes
# and unpacked to FOLDER. Needs neither root nor a source entry in the system's package lists; the
# mirror can be set by KRV_DEBIAN_MIRROR.
set -euo pipefail
name=$1
version=$2
folder=$3

state=$(mktemp -d)
trap 'rm -rf "$state"' EXIT
mkdir -p "$state/lists/partial" "$state/cache/archives/partial"
release=$(. /etc/os-release && echo "$VERSION_CODENAME")
mirror=${KRV_DEBIAN_MIRROR:-http://deb.debian.org}
for suite in "debian $release" "debian $release-updates" "debian-security $release-security"; do
  read -r place suite_name <<<"$suite"
  echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
    "$mirror/$place $suite_name main"
done >"$state/sources.list"
options=(-qq -o "Dir::Etc::sourcelist=$state/sources.list" -o Dir::Etc::sourceparts=-
  -o "Dir::State::lists=$state/lists" -o "Dir::Cache=$state/cache" -o APT::Sandbox::User=)
apt-get "${options[@]}" update

# Extra tarballs of a package (OpenCV's contributed modules) are not needed.
main_files='\.(dsc|debian\.tar\.[a-z0-9]+|orig\.tar\.[a-z0-9]+|tar\.[a-z0-9]+)$'
mkdir -p "$folder"
cd "$state"
apt-get "${options[@]}" source --print-uris "$name=$version" | tr -d "'" |
  while read -r uri file _ hash; do
    [[ $file =~ $main_files && ! $file =~ \.orig-[a-z]+\.tar ]] || continue
    /usr/lib/apt/apt-helper "${options[@]}" download-file "$uri" "$state/$file" "$hash"
  done
tar xf "$state"/*.orig.tar.*[a-z2] -C "$folder" --strip-components=1

# Debian's patches hold the security fixes. Those to the contributed modules have nothing to patch.
tar xf "$state"/*.debian.tar.* -C "$state"
cd "$folder"
if [ -f "$state/debian/patches/series" ]; then
  grep -vE '^(#|$)' "$state/debian/patches/series" | while read -r patch _; do
    grep -q '^+++ b/contrib/' "$state/debian/patches/$patch" ||
      patch -s -f -p1 <"$state/debian/patches/$patch"
  done
fi
