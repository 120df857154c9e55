#!/usr/bin/env bash
# Installs what is needed, builds everything and runs every test.
#   bash tools/test.sh
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/setup.sh

prepare_build
# Tests run under a subreaper: orphans they leave behind are reaped instead of lingering as
# zombies that pgrep would still list as running Kelvo copies.
build/tests/support/subreaper ctest --test-dir build -j2 --output-on-failure
