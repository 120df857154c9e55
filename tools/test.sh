#!/usr/bin/env bash
# Installs what is needed, builds everything and runs every test; any arguments go to ctest:
#   bash tools/test.sh [-R PATTERN]
#
# As root the tests run in a process and mount namespace of their own whose first process is the
# subreaper: they see, stop and mount only what they start themselves, whatever else runs on the
# machine (another run of this command included), and the /usr/bin/ditto they see is this build's.
# Without root they run as they are, and the tests that need root, the namespace, loop devices or
# a display say that they skipped and why.
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/setup.sh

# shellcheck disable=SC2119  # no target named: everything is built
prepare_build
# Reaps the orphans the tests leave (a Kelvo the installer started detached, say), which would
# otherwise stay zombies that pgrep still lists.
reaper=build/tests/support/subreaper
tests=(ctest --test-dir build -j2 --output-on-failure "$@")
if [ "$(id -u)" -ne 0 ] || ! unshare --pid --fork --mount-proc --mount true 2>/dev/null; then
  echo "test: no process namespace of their own (it needs root): the tests that need one skip."
  exec "$reaper" "${tests[@]}"
fi
mkdir -p build/tests/bin
cp build/installer/platform/linux/ditto/ditto build/tests/bin/ditto
# shellcheck disable=SC2016  # the script's $1 and $@ are the inner shell's arguments
exec unshare --pid --fork --mount-proc --mount "$reaper" sh -c \
  'mount -t overlay kelvo-tests -o "lowerdir=$1:/usr/bin" /usr/bin ||
     echo "test: the built ditto is not at /usr/bin/ditto; the tests that run it skip." >&2
   shift; exec "$@"' \
  sh "$PWD/build/tests/bin" "${tests[@]}"
