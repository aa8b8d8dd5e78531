#!/usr/bin/env bash
# Builds VyrBase and runs its main job: vyr builds the sample documents, describes the bundled
# oscillation sample and renders it to a PNG. Installs the Debian packages it lacks first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh run
cmake -S . -B build/run -DCMAKE_BUILD_TYPE=Release -DVYR_BUILD_TESTS=OFF -DVYR_BUILD_BENCH=OFF \
    -DVYR_PYTHON=OFF >/dev/null
cmake --build build/run -j"$(nproc)" --target vyr
vyr=build/run/tools/vyr
export DISPLAY= WAYLAND_DISPLAY=   # headless, as on a server
"$vyr" demo build/demo
"$vyr" info
"$vyr" render -o build/oscillation.png --grid
echo "vyr: rendered the bundled sample to $(pwd)/build/oscillation.png"
