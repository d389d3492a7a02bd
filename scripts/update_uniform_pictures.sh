#!/usr/bin/env bash
# update_uniform_pictures.sh [SHEET...]: draws the pictures of docs/uniforms.md anew, or some of them.
# What is on them is said by uniform_pictures/sheets.sh; krv renders every panel. Look at every picture
# before you commit it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/build.sh linux krv krvAudioVisualPlugin packages
export LIBGL_ALWAYS_SOFTWARE=1  # the same on every machine

wanted=" $* "
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
out=docs/images/uniforms
mkdir -p "$out"

panel_width=256
panel_height=144
name_width=190
font="font=DejaVu Sans:fontsize=13:fontcolor=0xD8DEE9"
paper=0x20242E

run_ffmpeg() { ffmpeg -nostdin -v error -y "$@"; }

# Ten seconds of noise that grows louder, with hills and valleys in its spectrum.
run_ffmpeg -f lavfi -i "anoisesrc=c=white:seed=7:a=0.5:r=48000:d=10" \
  -af "firequalizer=gain='22*(cos(6.2832*f/2400)-0.7)-min(f,14000)/350':accuracy=20:zero_phase=on,
       volume='0.02+0.98*min(1,t/8)':eval=frame" -c:a pcm_s16le "$work/sound.wav"

# A person, and pictures to draw over.
size=512x288
shape="lt(hypot(X-256,Y-105),52)+lt(hypot(X-256,(Y-290)*0.62),84)"
run_ffmpeg -f lavfi -i "color=black:s=$size" -frames:v 1 -vf "format=gray,geq=lum='255*min(1,$shape)'" \
  "$work/mask.png"
run_ffmpeg -f lavfi -i "color=black:s=$size" -frames:v 1 \
  -vf "format=gbrp,geq=r='27+90*X/W':g='42+40*Y/H':b='75+35*X/W'" "$work/picture.png"
run_ffmpeg -i "$work/picture.png" -f lavfi -i "color=0xC89B7B:s=$size" -i "$work/mask.png" -frames:v 1 \
  -filter_complex "[1][2]alphamerge[person];[0][person]overlay" "$work/person.png"

sheet_name=
background=
effect=
base_sets=()
rows=0

finish_sheet() {
  if [[ -n "$sheet_name" && $rows -gt 0 ]]; then
    run_ffmpeg -framerate 1 -i "$work/row_%02d.png" -vf "tile=1x$rows" -frames:v 1 -q:v 7 \
      "$out/$sheet_name.jpg"
    echo "$out/$sheet_name.jpg"
  fi
  rm -f "$work"/row_*.png
  rows=0
}

sheet() {
  finish_sheet
  sheet_name=$1
  background=${2:-}
  if [[ "$wanted" != "  " && "$wanted" != *" $1 "* ]]; then sheet_name=; fi
}

base() {
  effect=$1
  base_sets=("${@:2}")
}

# text WIDTH HEIGHT TEXT OUT: a line of text on the sheet's paper.
text() {
  printf %s "$3" > "$work/text"
  run_ffmpeg -f lavfi -i "color=$paper:s=$1x$2" -frames:v 1 \
    -vf "drawtext=textfile=$work/text:expansion=none:$font:x=8:y=(h-text_h)/2" "$4"
}

# panel FRAME LABEL OUT [SET...]
panel() {
  local frame=$1 label=$2 picture=$3 arguments=(--effect "$effect") set
  for set in "${@:4}"; do arguments+=(--param "$set"); done
  if [[ "$background" == person ]]; then arguments+=(--mask "$work/mask.png"); fi
  if [[ -n "$background" ]]; then
    arguments+=(--background "$work/$background.png")
  else
    arguments+=(--background "#12141C" --size $size)
  fi
  rm -rf "$work/frame"
  mkdir "$work/frame"
  build/linux/krv render "$work/sound.wav" --packages scripts/uniform_pictures/packages \
    --frames "$frame:$((frame + 1))" "${arguments[@]}" -o "$work/frame/" 2> "$work/messages" ||
    { cat "$work/messages" >&2; exit 1; }
  text $panel_width 22 "$label" "$work/label.png"
  run_ffmpeg -i "$work"/frame/*.png -i "$work/label.png" -filter_complex \
    "[0]scale=$panel_width:$panel_height:flags=area[a];[a][1]vstack,pad=iw+6:ih+6:6:6:$paper" "$picture"
}

row() {
  if [[ -z "$sheet_name" ]]; then return; fi
  local uniform=$1 parameter=$1 token sets=("${base_sets[@]}") panels=()
  for token in "${@:2}"; do
    case $token in
      of=*) parameter=${token#of=} ;;
      *=*) sets+=("$token") ;;
      *) panels+=("$token") ;;
    esac
  done
  text $name_width $((panel_height + 28)) "${uniform//,/$'\n'}" "$work/cell_0.png"
  local inputs=(-i "$work/cell_0.png") count=1 value label frame
  for token in "${panels[@]}"; do
    frame=240
    if [[ $token == *@* ]]; then
      frame=${token##*@}
      token=${token%@*}
    fi
    value=${token#*:}
    label=${token%%:*}
    label=${label//\~/ }
    if [[ -n "$value" ]]; then
      panel "$frame" "$label" "$work/cell_$count.png" "${sets[@]}" "$parameter=$value"
    else
      panel "$frame" "$label" "$work/cell_$count.png" "${sets[@]}"
    fi
    inputs+=(-i "$work/cell_$count.png")
    count=$((count + 1))
  done
  run_ffmpeg "${inputs[@]}" -filter_complex \
    "hstack=inputs=$count,pad=$((name_width + 3 * (panel_width + 6) + 6)):ih:0:0:$paper" \
    "$(printf "%s/row_%02d.png" "$work" $rows)"
  rows=$((rows + 1))
}

source scripts/uniform_pictures/sheets.sh
finish_sheet
