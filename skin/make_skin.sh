#!/usr/bin/env bash
# Makes the skin that is packed: resources/ as it stands, and the pictures drawn from art/, each at 96 dpi and in the
# folders 125, 150 and 200 for windows of those scales. vantakit runs this wherever it is given this folder.
#   make_skin.sh OUT
set -euo pipefail
skin=$(cd "$(dirname "$0")" && pwd)
out=${1:?output folder}
theme=resources/themes/default
new=$out.new

rm -rf "$new"
mkdir -p "$new"
cp -r "$skin/resources" "$new/resources"

draw() {  # drawing, width, height, folder below the theme
  local name target scale
  name=$(basename "$1" .svg)
  target=$new/$theme/$4
  mkdir -p "$target"
  rsvg-convert -w "$2" -h "$3" -o "$target/$name.png" "$skin/art/$1"
  for scale in 125 150 200; do
    mkdir -p "$target/$scale"
    rsvg-convert -w $(($2 * scale / 100)) -h $(($3 * scale / 100)) -o "$target/$scale/$name.png" "$skin/art/$1"
  done
}
draw bk_bg.svg 600 280 SetupWnd
draw logo_big_bk.svg 96 96 public/icon
draw progress_green_bg.svg 24 8 public/progress
draw progress_green_fg.svg 24 8 public/progress

rm -rf "$out"
mv "$new" "$out"
