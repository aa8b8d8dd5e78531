#!/usr/bin/env bash
# Line and branch coverage of the document file code (src/file/) by the tests that exercise it:
# the file unit tests, the allocation-failure tests and the replays of the fuzz corpora. Writes
# build/coverage/coverage.html (per line) and prints the summary. Branches that only exist for
# exceptions the compiler must allow for (throw branches) and branches the compiler proves
# unreachable are left out: the figure counts the decisions of the code itself.
# Usage: scripts/coverage.sh
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh coverage
export DISPLAY= WAYLAND_DISPLAY=

cmake -S . -B build/coverage -DCMAKE_BUILD_TYPE=Debug -DVYR_BUILD_BENCH=OFF \
    -DVYR_BUILD_TOOLS=OFF -DCMAKE_CXX_FLAGS="--coverage -O0" \
    -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage >/dev/null
targets=(vyr_tests_file vyr_tests_alloc vyr_fuzz_replay_load vyr_fuzz_replay_roundtrip
         vyr_fuzz_replay_base64 vyr_fuzz_replay_report vyr_fuzz_replay_csv)
cmake --build build/coverage -j"$(nproc)" --target "${targets[@]}"
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage --output-on-failure -R '^(file|alloc|fuzz_.*)$'

gcovr --root . --object-directory build/coverage --filter 'src/file/' \
    --exclude-throw-branches --exclude-unreachable-branches \
    --html-details build/coverage/coverage.html --print-summary --txt build/coverage/coverage.txt
cat build/coverage/coverage.txt
