#!/usr/bin/env bash
# Builds VyrBase and passes every test: the unit tests (the Python module's pytest suite among
# them), the same tests under AddressSanitizer and UndefinedBehaviorSanitizer, an outside project
# built against a fresh install (CMake package and pkg-config), `import vyrbase` from that
# install, and a minute of fuzzing for each fuzz target. Installs the Debian packages it
# lacks first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh test

jobs=$(nproc)
export DISPLAY= WAYLAND_DISPLAY=   # everything runs headless, as in CI

echo "== build and unit tests"
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DVYR_WERROR=ON >/dev/null
cmake --build build/release -j"$jobs"

echo "== install, then build an outside consumer both ways"
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install build/release --prefix "$prefix" >/dev/null
cmake -S tests/consumer -B build/consumer -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build build/consumer -j"$jobs" >/dev/null
LD_LIBRARY_PATH="$prefix/lib" build/consumer/consumer >/dev/null
echo "consumer (find_package): ok"
PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --exists vyrbase
# shellcheck disable=SC2046
g++ -o build/consumer-pkgconfig docs/examples/quickstart.cpp \
    $(PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --cflags --libs vyrbase)
LD_LIBRARY_PATH="$prefix/lib" build/consumer-pkgconfig >/dev/null
echo "consumer (pkg-config): ok"
# The Python module from the same install, with Debian's interpreter, as the README says.
python_dir=$(cmake -L -N build/release | sed -n 's/^VYR_PYTHON_INSTALL_DIR:STRING=//p')
(cd "$prefix" && PYTHONPATH="$prefix/$python_dir" /usr/bin/python3 -c \
    'import vyrbase; d = vyrbase.Document(); assert d.render(size=(64, 48))[:4] == b"\x89PNG"')
echo "python module (import vyrbase): ok"

echo "== sanitizers (AddressSanitizer + UndefinedBehaviorSanitizer)"
# No Python module there: under the sanitizers it would need their runtime preloaded into the
# interpreter; the Release tree runs its tests.
cmake -S . -B build/asan -DCMAKE_BUILD_TYPE=Debug -DVYR_SANITIZE=ON -DVYR_BUILD_BENCH=OFF \
    -DVYR_WERROR=ON -DVYR_PYTHON=OFF >/dev/null
cmake --build build/asan -j"$jobs"
ctest --test-dir build/asan --output-on-failure -j"$jobs"

echo "== unit tests"
ctest --test-dir build/release --output-on-failure -j"$jobs"

# The corpora were replayed above (the fuzz_* tests); each fuzzer now searches for a minute more.
echo "== fuzzing (libFuzzer, 60 s a target)"
FUZZ_JOBS=$jobs scripts/fuzz.sh 60
