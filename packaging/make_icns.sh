#!/usr/bin/env bash
# Makes the macOS icon from the project's master PNG: sips scales the master to every size of an
# iconset, and iconutil packs the iconset into one .icns file.
#   bash packaging/make_icns.sh MASTER.png OUTPUT.icns
set -euo pipefail
master=$1
output=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
iconset=$work/AppIcon.iconset
mkdir "$iconset"
for size in 16 32 128 256 512; do
  sips -z "$size" "$size" "$master" --out "$iconset/icon_${size}x${size}.png" >/dev/null
  sips -z $((size * 2)) $((size * 2)) "$master" --out "$iconset/icon_${size}x${size}@2x.png" >/dev/null
done
iconutil --convert icns --output "$output" "$iconset"
