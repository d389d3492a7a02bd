#!/usr/bin/env bash
# check_links.sh FOLDER: fails when a link of an installed guide leads to a file that is not there.
set -euo pipefail
cd "$1"
checked=0
bad=0
while IFS=: read -r guide target; do
  target=${target#"]("}
  target=${target%)}
  case $target in http*|'#'*) continue ;; esac
  checked=$((checked + 1))
  [ -e "$(dirname "$guide")/${target%%#*}" ] && continue
  echo "check_links: $guide points to $target, which is not installed" >&2
  bad=1
done < <(grep -roE --include='*.md' '\]\([^) ]+\)' .)
[ "$checked" -gt 20 ] || { echo "check_links: $1 has only $checked links" >&2; exit 1; }
exit "$bad"
