#!/bin/sh
# Makes a Windows icon of the two drawings, 16 to 256 pixels. From 64 pixels on pictures are stored as
# PNG: systems that do not read PNG there (Windows XP) use none so large.
#   make_icon.sh LARGE.svg SMALL.svg OUT.ico
set -eu
[ $# -eq 3 ] || { echo "usage: $0 LARGE.svg SMALL.svg OUT.ico" >&2; exit 2; }

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
pictures=
for size in 16 20 24 32 40 48; do
  drawing=$1
  [ "$size" -gt 24 ] || drawing=$2
  rsvg-convert -w "$size" -h "$size" -o "$folder/$size.png" "$drawing"
  pictures="$pictures $folder/$size.png"
done
for size in 64 128 256; do
  rsvg-convert -w "$size" -h "$size" -o "$folder/$size.png" "$1"
  optipng -quiet -o5 "$folder/$size.png"
  pictures="$pictures -r $folder/$size.png"
done
# shellcheck disable=SC2086 — a list of names without blanks
icotool -c -o "$folder/icon.ico" $pictures
mv "$folder/icon.ico" "$3"
