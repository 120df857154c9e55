#!/usr/bin/env bash
# Installs Kelvo from the real disk image on a Mac, the way a user does, and checks what happened:
# the installer, opened from the mounted volume with --dest a temporary folder, installs Kelvo
# there and starts it with --eject-installer-volume "/Volumes/Install Kelvo", and Kelvo ejects the
# volume. Needs a Mac with a logged-in session (the macOS workflow runs it) and a build whose
# Kelvo.app is the stand-in, which keeps a record of its start (kelvo/launch_record.h).
#   bash tools/macos-e2e.sh "build/packaging/Install Kelvo.dmg"
set -euo pipefail
image=$1
built_kelvo="$(dirname "$image")/Install Kelvo.app/Contents/Resources/Kelvo.app"
volume="/Volumes/Install Kelvo"
installer="$volume/Install Kelvo.app/Contents/MacOS/Install Kelvo"
work=$(mktemp -d)
destination=$work/Applications
# A Kelvo opened by the workspace does not inherit this environment, and so records here.
export KELVO_LAUNCH_RECORD=/tmp/kelvo-launches.log

kelvo=
cleanup() {
  if [ -n "$kelvo" ]; then kill "$kelvo" 2>/dev/null || true; fi
  if [ -d "$volume" ]; then hdiutil detach -force "$volume" >/dev/null 2>&1 || true; fi
  rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "FAILED: $*" >&2; exit 1; }
field() { tr '\t' '\n' <<<"$1" | sed -n "s/^$2=//p"; }

[ ! -e "$volume" ] || fail "$volume is mounted already"
mkdir "$destination"
rm -f "$KELVO_LAUNCH_RECORD"
hdiutil attach -nobrowse -readonly "$image"
[ -x "$installer" ] || fail "the disk image has no $installer"

echo "Opening the installer from $volume, installing into $destination."
"$installer" --dest "$destination" &
running=$!
for _ in $(seq 600); do kill -0 "$running" 2>/dev/null || break; sleep 0.1; done
if kill -0 "$running" 2>/dev/null; then
  kill "$running"
  fail "the installer was still running after 60 s"
fi
wait "$running" || true  # the installer sets no exit status of its own

[ -f "$destination/Kelvo.app/Contents/Info.plist" ] || fail "Kelvo was not installed in $destination"
diff -r "$built_kelvo" "$destination/Kelvo.app" || fail "the installed Kelvo.app differs from the one on the disk image"
started=$(grep -m1 $'\tevent=started' "$KELVO_LAUNCH_RECORD" 2>/dev/null || true)
[ -n "$started" ] || fail "Kelvo was not started (no start in $KELVO_LAUNCH_RECORD)"
kelvo=$(field "$started" pid)
case "$(field "$started" executable)" in
  */"$(basename "$work")"/Applications/Kelvo.app/Contents/MacOS/Kelvo) ;;
  *) fail "the Kelvo started was $(field "$started" executable), not the one installed" ;;
esac
arguments=$(field "$started" arg | paste -sd'|' -)
[ "$arguments" = "--eject-installer-volume|$volume" ] || fail "Kelvo was started with the arguments: $arguments"

for _ in $(seq 300); do grep -q $'\tevent=eject' "$KELVO_LAUNCH_RECORD" && break; sleep 0.1; done
eject=$(grep -m1 $'\tevent=eject' "$KELVO_LAUNCH_RECORD" || true)
[ "$(field "$eject" outcome)" = ejected ] || fail "the volume was not ejected: ${eject:-no eject recorded}"
[ ! -e "$volume" ] || fail "$volume is still there after Kelvo ejected it"
echo "Kelvo was installed in $destination, started with --eject-installer-volume \"$volume\", and ejected the volume."
