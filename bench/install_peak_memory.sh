#!/usr/bin/env bash
# Prints the installer's peak memory (maximum resident set size) over one full install of the
# stand-in Kelvo, window shown, on a private Xvfb display. The target is under 80 MB.
#   bash bench/install_peak_memory.sh [BUILD_FOLDER]   (default: build; the disk image target built)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
installer="$build/packaging/Install Kelvo.app/Contents/MacOS/Install Kelvo"
target_mb=80
[ -x "$installer" ] || { echo "error: $installer is not built (cmake --build $build --target disk_image)" >&2; exit 1; }

work=$(mktemp -d)
xvfb=
cleanup() {
  if [ -n "$xvfb" ]; then kill "$xvfb" 2>/dev/null; wait "$xvfb" 2>/dev/null || true; fi
  rm -rf "$work"
}
trap cleanup EXIT
exec 3< <(Xvfb -displayfd 1 -screen 0 1024x768x24 -nolisten tcp 2>/dev/null)
xvfb=$!
read -r number <&3

# --no-launch: the install is the whole run, and no Kelvo is left behind to stop.
DISPLAY=:$number /usr/bin/time -f '%M %e' -o "$work/usage" "$installer" --dest "$work" --no-launch >/dev/null 2>&1
[ -f "$work/Kelvo.app/Contents/Info.plist" ] || { echo "error: the install did not complete" >&2; exit 1; }
read -r peak_kb seconds <"$work/usage"
awk -v kb="$peak_kb" -v s="$seconds" -v t="$target_mb" 'BEGIN {
  printf "installer peak memory: %.1f MB over a full install (%.2f s, window included; target under %d MB)\n", kb / 1024, s, t
}'
