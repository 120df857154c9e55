#!/usr/bin/env bash
# Builds the installer and runs it on its built-in demo payload.
#   bash tools/demo.sh
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/packages.sh

ensure_packages
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$(nproc)"
bash tools/install-ditto.sh build
echo "The installer application is not built yet: the demo has nothing to run."
