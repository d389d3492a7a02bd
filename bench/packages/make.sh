#!/usr/bin/env bash
# make.sh FOLDER: writes the packages that only measurements need into FOLDER:
#   bars_512            the shipped bars, with up to 512 of them
#   bars_medium         the shipped bars in medium quality
#   figures_1 .. 4      as many passes, each of which draws 63 bars over what the one before has drawn
#   rows_1 .. 4         the same picture in one pass, which looks at every row at every pixel
set -euo pipefail
source=$(cd "$(dirname "$0")" && pwd)
folder=$1

# description NAME SHADERS: prints a description; SHADERS is a JSON list.
description() {
  cat <<END
{
  "effect_type": "audio_visualization",
  "unique_name": "bench_$1",
  "display_name": "$1",
  "quality": "medium",
  "opengl_frag": $2,
  "params": []
}
END
}

mkdir -p "$folder/bars_512"
sed -e 's/"audio_visualization_bars"/"bench_bars_512"/' -e '/"\$schema"/d' \
  -e '/"spectrum_count"/s/"max_value": [0-9]*/"max_value": 512/' \
  "$source/../../packages/bars/description.json" >"$folder/bars_512/description.json"

mkdir -p "$folder/bars_medium"
sed -e 's/"audio_visualization_bars"/"bench_bars_medium"/' -e '/"\$schema"/d' \
  -e '/"quality"/s/"high"/"medium"/' \
  "$source/../../packages/bars/description.json" >"$folder/bars_medium/description.json"

for count in 1 2 3 4; do
  package=$folder/rows_$count
  mkdir -p "$package"
  sed -e "s/@COUNT@/$count/" "$source/rows.frag.in" >"$package/rows.frag"
  description "rows_$count" '["rows.frag"]' >"$package/description.json"

  package=$folder/figures_$count
  mkdir -p "$package"
  shaders=
  for ((row = 0; row < count; row++)); do
    # The first pass would read the picture below.
    below="texelFetch2D(background_tex, ivec2(gl_FragCoord.xy), 0)"
    [ "$row" -gt 0 ] || below="vec4(0.0)"
    sed -e "s/@ROW@/$row.0/" -e "s/@ROWS@/4.0/" -e "s/@BELOW@/$below/" \
      -e "$([ "$row" -gt 0 ] || echo '/background_tex;/d')" \
      "$source/figure.frag.in" >"$package/figure_$row.frag"
    shaders+=${shaders:+, }\"figure_$row.frag\"
  done
  description "figures_$count" "[$shaders]" >"$package/description.json"
done
