#!/usr/bin/env bash
# Puts the project's own ditto at /usr/bin/ditto, which the privileged install command runs.
#   bash tools/install-ditto.sh [BUILD_FOLDER]
# Does so only when that path is free or already holds this project's ditto (its --version line
# says so); another program there is left alone, and the tests that need ours then skip.
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-build}"
built="$build/installer/platform/linux/ditto/ditto"
target=/usr/bin/ditto
mark="the Kelvo installer project's own"

if [ ! -x "$built" ]; then
  echo "install-ditto: $built is not built yet" >&2
  exit 1
fi
if [ -e "$target" ] && ! "$target" --version 2>/dev/null | grep -qF "$mark"; then
  echo "install-ditto: $target is another program; leaving it alone (tests that need this project's ditto will skip)."
  exit 0
fi
if [ ! -w "$(dirname "$target")" ]; then
  echo "install-ditto: cannot write to $(dirname "$target") (not root?); tests that need $target will skip."
  exit 0
fi
install -m 0755 "$built" "$target.kelvo-new"
mv -f "$target.kelvo-new" "$target"
