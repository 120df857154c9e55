#!/usr/bin/env bash
# Builds the installer and its disk image, mounts the image at "/Volumes/Install Kelvo" and runs the
# installer from there, the way a user opens it on a Mac; then reports what happened.
#   bash tools/demo.sh
#
# Kelvo is installed into build/demo/Applications (never into the machine's own folders). The
# installer's window shows on $DISPLAY when there is one, otherwise on a private Xvfb display, and
# a picture of it is saved as build/demo/window.png. The image is mounted in a mount namespace of
# the installer's own, so nothing stays mounted on the machine. Where it cannot be mounted (not
# root, no loop devices), the installer runs from the build folder instead, and the demo says so.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD

if [ -z "${KELVO_DEMO_UNDER_REAPER:-}" ]; then
  source tools/setup.sh
  prepare_build disk_image subreaper
  # The Kelvo the installer starts is detached from it; the demo runs under a reaper so that Kelvo,
  # once stopped at the end, does not linger as a zombie.
  exec env KELVO_DEMO_UNDER_REAPER=1 build/tests/support/subreaper bash "$0" "$@"
fi

volume="Install Kelvo"
image=$root/build/packaging/"Install Kelvo.squashfs"
bundle=$root/build/packaging/"Install Kelvo.app"
demo=$root/build/demo
destination=$demo/Applications
export KELVO_LAUNCH_RECORD=$demo/launches.log
rm -rf "$destination" "$KELVO_LAUNCH_RECORD" "$demo/window.png" "$demo/installer.log"
mkdir -p "$destination"

xvfb=
cleanup() { if [ -n "$xvfb" ]; then kill "$xvfb" 2>/dev/null; wait "$xvfb" 2>/dev/null || true; fi; }
trap cleanup EXIT
if [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; then
  echo "Showing the installer on the display $DISPLAY."
else
  exec 3< <(Xvfb -displayfd 1 -screen 0 1024x768x24 -nolisten tcp 2>/dev/null)
  xvfb=$!
  read -r number <&3
  export DISPLAY=:$number
  echo "No display: showing the installer on a private Xvfb display ($DISPLAY)."
fi

why_not_mounted=
if [ "$(id -u)" -ne 0 ]; then why_not_mounted="mounting a disk image needs root"
elif [ ! -e /dev/loop-control ]; then why_not_mounted="this machine has no loop devices"
elif ! command -v unshare >/dev/null; then why_not_mounted="unshare is missing"
fi

started_at=$(date +%s.%N)
if [ -z "$why_not_mounted" ]; then
  echo "Mounting the disk image at /Volumes/$volume and opening the installer from there."
  mkdir -p /Volumes
  # shellcheck disable=SC2016  # the script's $1 and $2 are the inner shell's arguments
  unshare -m --propagation private /bin/sh -c '
    set -e
    image=$1 volume=$2; shift 2
    mount -t tmpfs -o mode=0755,size=1m volumes /Volumes
    mkdir "/Volumes/$volume"
    mount -o loop,ro "$image" "/Volumes/$volume"
    exec "/Volumes/$volume/Install Kelvo.app/Contents/MacOS/Install Kelvo" "$@"
  ' sh "$image" "$volume" --dest "$destination" 2>>"$demo/installer.log" &
else
  echo "Cannot mount the disk image ($why_not_mounted): opening the installer from the build folder."
  "$bundle/Contents/MacOS/Install Kelvo" --dest "$destination" 2>>"$demo/installer.log" &
fi
installer=$!

window=
for _ in $(seq 200); do
  window=$(xdotool search --onlyvisible --name '^Install Kelvo$' 2>/dev/null | head -n 1 || true)
  if [ -n "$window" ] || ! kill -0 "$installer" 2>/dev/null; then break; fi
  sleep 0.1
done
if [ -n "$window" ]; then
  sleep 0.2  # let the window paint
  timeout 10 import -window "$window" "$demo/window.png" 2>/dev/null && echo "The installer's window: build/demo/window.png"
fi
status=0
wait "$installer" || status=$?
ended_at=$(date +%s.%N)
awk -v s="$status" -v a="$started_at" -v b="$ended_at" 'BEGIN { printf "The installer ended (status %d) after %.1f s.\n", s, b - a }'

# The record Kelvo keeps of its start and of the eject (format: kelvo/launch_record.h).
field() { tr '\t' '\n' <<<"$1" | sed -n "s/^$2=//p"; }
started=$(grep -m1 $'\tevent=started' "$KELVO_LAUNCH_RECORD" 2>/dev/null || true)
if [ -z "$started" ]; then
  echo "Kelvo was not started."
  exit 1
fi
if diff -r --no-dereference "$destination/Kelvo.app" build/kelvo/Kelvo.app >/dev/null; then
  echo "Kelvo was installed at build/demo/Applications/Kelvo.app (identical to the bundle on the disk image)."
else
  echo "Kelvo was installed at build/demo/Applications/Kelvo.app, but it differs from the bundle on the disk image."
fi
pid=$(field "$started" pid)
arguments=$(field "$started" arg | sed 's/.*/"&"/' | paste -sd' ')
echo "Kelvo started (process $pid) as $(field "$started" executable)"
echo "  with the arguments: ${arguments:-(none)}"
if [ -z "$why_not_mounted" ]; then
  for _ in $(seq 200); do grep -q $'\tevent=eject' "$KELVO_LAUNCH_RECORD" && break; sleep 0.1; done
  eject=$(grep -m1 $'\tevent=eject' "$KELVO_LAUNCH_RECORD" || true)
  echo "The volume $(field "$eject" volume): $(field "$eject" outcome)."
fi
echo "Stopping the demo's Kelvo (process $pid)."
kill "$pid" 2>/dev/null || true
