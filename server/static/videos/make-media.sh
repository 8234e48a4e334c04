#!/usr/bin/env bash
# Draws the bundled pictures of the news and events and the short videos of the video feed with
# ffmpeg: a field under a sky, its rows running to the horizon, colours by theme. Run from this folder;
# the results are committed, so nothing runs at build time.
set -euo pipefail
cd "$(dirname "$0")/.."

# scene W H sky-top sky-bottom field stripe sun(0/1): the geq expression of one still.
scene() {
  local w=$1 h=$2 top=($3) bottom=($4) field=($5) stripe=($6) sun=$7 sunx=${8:-0.78}
  local hz="(H*0.42)"
  local parts=(r g b) expr=""
  for i in 0 1 2; do
    local c="if(lt(Y,$hz),${top[$i]}+(${bottom[$i]}-${top[$i]})*Y/$hz,if(gt(sin((X-W/2)/(Y-$hz+6)*14),0),${field[$i]},${stripe[$i]})*(0.75+0.25*(Y-$hz)/(H-$hz)))"
    if [ "$sun" = 1 ]; then
      local sc=(255 236 160)
      c="if(lt(hypot(X-W*$sunx,Y-H*0.17),H*0.08),${sc[$i]},$c)"
    fi
    expr+="${parts[$i]}='$c':"
  done
  echo "${expr%:}"
}

picture() { # file W H theme...
  local file=$1 w=$2 h=$3; shift 3
  ffmpeg -loglevel error -y -f lavfi -i "color=c=black:s=${w}x${h}:d=1" -vf "geq=$(scene $w $h "$@")" \
    -frames:v 1 -q:v 6 "$file"
}

sky="150 200 240"; dusk="250 190 140"; haze="200 220 235"
declare -A themes=(
  [bugday]="$sky|225 240 250|214 178 76|190 150 60|1"
  [domates]="$haze|235 240 245|70 140 60|200 60 45|0"
  [misir]="$sky|220 235 250|110 160 50|80 120 40|1"
  [bag]="$dusk|250 225 190|90 130 60|120 80 110|1"
  [traktor]="$sky|225 240 250|120 100 70|90 140 60|0"
  [hasat]="$dusk|250 230 200|220 180 80|170 130 60|1"
  [sera]="$haze|240 245 250|200 210 215|90 150 70|0"
)
for name in "${!themes[@]}"; do
  IFS='|' read -r top bottom field stripe sun <<<"${themes[$name]}"
  picture news/$name.jpg 780 440 "$top" "$bottom" "$field" "$stripe" "$sun"
  picture news/thumbs/$name.jpg 240 135 "$top" "$bottom" "$field" "$stripe" "$sun"
done

declare -A events=(
  [verim-gunu]="bugday" [domates-senligi]="domates" [fuar]="traktor" [misir-tarla-gunu]="misir"
  [bagcilik]="bag" [aycicegi]="hasat" [kanola]="sera"
)
for name in "${!events[@]}"; do
  IFS='|' read -r top bottom field stripe sun <<<"${themes[${events[$name]}]}"
  picture events/$name.jpg 780 400 "$top" "$bottom" "$field" "$stripe" "$sun"
done

# The videos: four seconds, the sun crossing the sky, the title at the bottom; no sound. VP9 in MP4:
# what Qt Multimedia plays through GStreamer's good plugins, with no decoder outside Debian's main set.
declare -A videos=(
  [Ek4bG7tRw2M]="bugday|Buğdayda yabancı ot mücadelesi"
  [Dm9sQ1aVz8K]="domates|Domateste damla sulama"
  [Pk2lX5nHc3J]="traktor|Pülverizatör kalibrasyonu"
  [Ms7yT4eWq6B]="misir|Mısırda ekim derinliği"
  [Bg3uR8fLp1N]="bag|Bağda külleme ve mildiyö"
)
font=/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf
for hash in "${!videos[@]}"; do
  IFS='|' read -r theme title <<<"${videos[$hash]}"
  IFS='|' read -r top bottom field stripe sun <<<"${themes[$theme]}"
  for quality in 18:480x270 36:320x180; do
    q=${quality%%:*}; size=${quality#*:}; w=${size%x*}; h=${size#*x}
    expr=$(scene $w $h "$top" "$bottom" "$field" "$stripe" 1 "(0.15+0.18*T)")
    ffmpeg -loglevel error -y -f lavfi -i "color=c=black:s=${size}:d=4:r=12" \
      -vf "geq=$expr,drawtext=fontfile=$font:text='$title':fontcolor=white:fontsize=$((h/12)):x=(w-text_w)/2:y=h-text_h*2:box=1:boxcolor=black@0.4:boxborderw=6" \
      -c:v libvpx-vp9 -b:v 120k -an videos/$hash-$q.mp4
  done
  mkdir -p videos/vi/$hash
  ffmpeg -loglevel error -y -ss 2 -i videos/$hash-18.mp4 -frames:v 1 -q:v 5 videos/vi/$hash/0.jpg
done
