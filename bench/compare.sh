#!/usr/bin/env bash
# compare.sh [CLIP]: measures krv beside FFmpeg's showfreqs and showwaves and MLT's audiospectrum,
# each from file to raw frames with software OpenGL, in alternation and with runs of each tool that
# draw nothing. Without CLIP it makes clips of 720, 1080 and 2160 lines. Writes compare.md and
# compare.json into build/bench/compare. ROUNDS: of everything (default 5); SIZES: of the clips
# (default "720 1080 2160"); FRAMES: of a run at 1080 lines and less (default 300; a third above), or
# all those of a shorter CLIP.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
rounds=${ROUNDS:-5}
out=$root/build/bench/compare

for tool in ffmpeg:ffmpeg melt:melt xvfb-run:xvfb; do
  command -v "${tool%:*}" >/dev/null ||
    apt-get install -y --no-install-recommends "${tool#*:}" >&2
done
# Without a display audiospectrum draws nothing and says nothing.
if [ -z "${DISPLAY:-}" ]; then exec xvfb-run -a "$0" "$@"; fi
export QT_QPA_PLATFORM=offscreen

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir -p "$out"
"$root/scripts/build.sh" linux krv krvAudioVisualPlugin >&2
"$root/bench/packages/make.sh" "$scratch/packages"
krv=$root/build/linux/krv
export LIBGL_ALWAYS_SOFTWARE=1

# make_clip LINES SECONDS: a clip with a beat, chords and noise.
make_clip() {
  local clip=$out/clip_$1.mp4
  [ -f "$clip" ] || ffmpeg -nostdin -v error -y \
    -f lavfi -i "testsrc2=s=$(($1 * 16 / 9))x$1:r=30:d=$2" \
    -f lavfi -i "aevalsrc='0.5*sin(2*PI*55*t)*exp(-9*mod(t,0.5))+0.15*sin(2*PI*220*t)+0.1*sin(2*PI*277*t*(1+0.5*floor(mod(t,4))))+0.05*sin(2*PI*3520*t)+0.05*(random(0)-0.5)*exp(-6*mod(t,0.5))':s=48000:c=stereo:d=$2" \
    -c:v libx264 -preset veryfast -crf 20 -pix_fmt yuv420p -c:a aac "$clip" >&2
  echo "$clip"
}

# timed NAME COMMAND...: runs the command and keeps "wall user system" in seconds.
timed() {
  local name=$1
  shift
  TIMEFORMAT='%R %U %S'
  { time "$@" >/dev/null 2>"$scratch/log"; } 2>>"$results/$name" ||
    { echo "compare: $name failed" >&2; cat "$scratch/log" >&2; exit 1; }
}

# graph NAME FILTERS: a run of FFmpeg in which FILTERS make the frames of [0:v] and [0:a].
graph() {
  timed "$1" ffmpeg -nostdin -v error -progress "$scratch/progress" -i "$clip" -frames:v "$frames" \
    -filter_complex "$2" -f null -
  # An overlay ends with the sound, which may be shorter than the picture.
  local made
  made=$(sed -n 's/^frame=//p' "$scratch/progress" | tail -n 1)
  [ "$made" -eq "$frames" ] ||
    { echo "compare: $clip: $1 made only $made frames of $frames; set FRAMES lower" >&2; exit 1; }
}

# melt_run NAME PARTS...: a run of MLT with what follows the clip.
melt_run() {
  local name=$1
  shift
  timed "$name" melt -profile "$profile" "$clip" in=0 out=$((frames - 1)) "$@" \
    real_time=-1 terminate_on_pause=1
}

one_round() {
  local bars="mode=bar:fscale=log:rate=$rate"
  local over="overlay=shortest=1:format=rgb"
  local small=$((width * 480 / height / 2 * 2))x480
  graph ffmpeg_decode "[0:v]null"
  graph ffmpeg_bgra "[0:v]format=bgra"
  graph showfreqs "[0:a]showfreqs=s=${width}x$height:$bars,format=bgra[v];[0:v]format=bgra[m];[m][v]$over,format=bgra"
  graph showfreqs_480 "[0:a]showfreqs=s=$small:$bars,format=bgra,scale=$width:$height:flags=fast_bilinear[v];[0:v]format=bgra[m];[m][v]$over,format=bgra"
  graph showfreqs_480_yuv "[0:a]showfreqs=s=$small:$bars,scale=$width:$height[v];[0:v][v]overlay=shortest=1"
  graph showwaves "[0:a]showwaves=s=${width}x$height:mode=cline:rate=$rate,format=bgra[v];[0:v]format=bgra[m];[m][v]$over,format=bgra"
  local four="[0:a]asplit=4[a1][a2][a3][a4];[0:v]format=bgra[m0]" i
  for i in 1 2 3 4; do
    four+=";[a$i]showfreqs=s=${width}x$((height / 4)):$bars,format=bgra[v$i]"
    four+=";[m$((i - 1))][v$i]$over:y=$((height / 4 * (i - 1)))[m$i]"
  done
  graph showfreqs_4_rows "$four;[m4]format=bgra"
  four="[0:a]asplit=4[a1][a2][a3][a4];[0:v]format=bgra[m0]"
  for i in 1 2 3 4; do
    four+=";[a$i]showfreqs=s=${width}x$height:$bars,format=bgra[v$i];[m$((i - 1))][v$i]$over[m$i]"
  done
  graph showfreqs_4 "$four;[m4]format=bgra"
  if [ -n "$profile" ]; then
    melt_run melt_null -consumer null
    melt_run melt_rgba -consumer null mlt_image_format=rgba
    melt_run audiospectrum -attach audiospectrum type=bar thickness=8 -consumer null
  fi
  for effect in audio_visualization_bars bench_bars_medium bench_figures_4; do
    timed "krv_$effect" "$krv" render "$clip" --frames "0:$frames" --effect "$effect" \
      --packages "$root/packages" --packages "$scratch/packages" -o -
  done
  for package in bars_medium figures_4; do
    "$krv" bench "$scratch/packages/$package" --form memory --size "${width}x$height" --rounds 1 \
      --frames 30 --json "$results/bench_$package.$round.json" >/dev/null
  done
}

clips=("$@")
if [ ${#clips[@]} -eq 0 ]; then
  for lines in ${SIZES:-720 1080 2160}; do clips+=("$(make_clip "$lines" 11)"); done
fi
for clip in "${clips[@]}"; do
  IFS=x read -r width height rate clip_frames < <(ffprobe -v error -select_streams v:0 -count_packets \
    -show_entries stream=width,height,r_frame_rate,nb_read_packets -of csv=p=0:s=x "$clip")
  case $height in
    720) profile=atsc_720p_30 ;;
    1080) profile=atsc_1080p_30 ;;
    2160) profile=uhd_2160p_30 ;;
    *) profile= ;;
  esac
  [ "$rate" = 30/1 ] || profile=  # MLT would make other frames than those of the clip
  frames=${FRAMES:-300}
  [ "$height" -le 1080 ] || frames=$((frames / 3))
  if [ "$frames" -gt "$clip_frames" ]; then
    echo "compare: $clip has only $clip_frames frames: runs of these instead of $frames" >&2
    frames=$clip_frames
  fi
  results=$scratch/results/${width}x$height
  mkdir -p "$results"
  echo "$frames" >"$results/frames"
  for ((round = 1; round <= rounds; round++)); do
    echo "compare: ${width} x $height, round $round of $rounds" >&2
    one_round
  done
done
python3 "$root/bench/compare/report.py" "$scratch/results" "$out"
cat "$out/compare.md"
