#!/usr/bin/env bash
# Makes the macOS disk image: a compressed (UDZO) HFS+ image of FOLDER's contents, whose volume is
# named VOLUME_NAME.
#   bash packaging/make_dmg.sh FOLDER VOLUME_NAME IMAGE.dmg
# hdiutil now and then finds its disk busy for a moment (on CI machines most of all), so it is
# given five tries.
set -euo pipefail
folder=$1
volume=$2
image=$3
for attempt in 1 2 3 4 5; do
  rm -f "$image"
  if hdiutil create -fs HFS+ -format UDZO -volname "$volume" -srcfolder "$folder" "$image"; then
    exit 0
  fi
  echo "make_dmg: hdiutil create failed (try $attempt of 5)" >&2
  sleep 3
done
exit 1
