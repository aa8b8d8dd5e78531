#!/usr/bin/env bash
# Builds VyrBase and runs its main job. Installs the Debian packages it lacks first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh run
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVYR_BUILD_TESTS=OFF \
    -DVYR_BUILD_BENCH=OFF >/dev/null
cmake --build build/release -j"$(nproc)" --target vyr-example
build/release/tools/vyr-example
