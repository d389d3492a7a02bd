#!/usr/bin/env bash
# run.sh [TIMES]: builds the preset `windows` and prints the medians of startup_bench in that many
# processes under Wine (default 25) and the ratio of the plug-in to an empty library.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
times=${1:-25}
"$root/scripts/build.sh" windows krvAudioVisualPlugin startup_bench startup_empty
build=$root/build/windows
[ -n "${DISPLAY:-}" ] || exec xvfb-run -a "$0" "$times"

results=$(mktemp)
trap 'rm -f "$results"' EXIT
for ((i = 0; i < times; i++)); do
  "$root/scripts/windows/run.sh" "$build/bench/startup_bench.exe" "$build/bench/startup_empty.dll" \
    "$build/krvAudioVisualPlugin.krv"
done | tr -d '\r' >"$results"

# median EXPRESSION: of awk's EXPRESSION over the processes.
median() { awk "{ print $1 }" "$results" | sort -g | sed -n "$(((times + 1) / 2))p"; }
echo "milliseconds, medians of $times processes:"
echo "  empty library     $(median '$1')"
echo "  plug-in           $(median '$2')"
echo "  StartupKRV        $(median '$3')"
echo "  plug-in and StartupKRV to the empty library: $(median '($2 + $3) / $1') times"
