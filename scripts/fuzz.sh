#!/usr/bin/env bash
# fuzz.sh TARGET SECONDS [LIBFUZZER-OPTION...]: feeds a target (description, gradient, shader_file,
# audio or outlines) with inputs that clang's libFuzzer makes up, starting from those of the
# repository. New inputs are kept in build/fuzz/corpus/TARGET. A finding ends the run and is written
# to tests/fuzz/corpus/TARGET, where the tests feed it again.
#
# fuzz.sh TARGET keep: adds to the repository's inputs what new ones reach beyond them.
set -euo pipefail
cd "$(dirname "$0")/.."
target=${1:?usage: fuzz.sh TARGET SECONDS|keep [OPTION...]}
seconds=${2:?usage: fuzz.sh TARGET SECONDS|keep [OPTION...]}
shift 2
seeds=tests/fuzz/corpus/$target
[ -d "$seeds" ] || { echo "fuzz: no target $target" >&2; exit 2; }

scripts/setup.sh fuzz
scripts/build.sh fuzz "fuzz_$target"
made=build/fuzz/corpus/$target
mkdir -p "$made"
if [ "$seconds" = keep ]; then
  "build/fuzz/fuzz_$target" -merge=1 "$seeds" "$made"
else
  "build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 \
    -artifact_prefix="$seeds/" -print_final_stats=1 "$@" "$made" "$seeds"
fi
