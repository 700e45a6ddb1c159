#!/bin/sh
# Makes the pictures of the About window from their drawings, each in two sizes.
# Needs rsvg-convert and the DejaVu fonts (Debian: librsvg2-bin, fonts-dejavu-core).
set -eu
cd "$(dirname "$0")"

draw() { # drawing, number of the picture, width
  rsvg-convert --width "$3" --keep-aspect-ratio --output "../PICT/$2.png" "$1.svg"
  rsvg-convert --width "$(($3 * 2))" --keep-aspect-ratio --output "../PICT/$2@2x.png" "$1.svg"
}

mkdir -p ../PICT
draw Ossiand 170 127
draw OssiandTitle 169 385
