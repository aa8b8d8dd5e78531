#!/usr/bin/env bash
# Installs the Debian packages that VyrBase needs and that the machine lacks; idempotent.
# Usage: scripts/deps.sh run|test|fuzz|valgrind|coverage|compare|compare-kst
set -euo pipefail

# The calculator: muParser parses formulas, Eigen solves fits, KissFFT computes spectra.
run_packages=(cmake g++ make pkg-config libwxgtk3.2-dev zlib1g-dev libcairo2-dev
              libmuparser-dev libeigen3-dev libkissfft-dev)
# The test command also fuzzes each target for a minute: clang and its libFuzzer runtime.
fuzz_packages=("${run_packages[@]}" clang-14 libclang-rt-14-dev)
# The picture tests rasterise SVG and PDF (librsvg2-bin, poppler-utils) and read the pixels
# (python3-pil); the Python module (python/) and its pytest suite need pybind11 and Debian's
# python3 with numpy and pandas.
test_packages=("${fuzz_packages[@]}" libgtest-dev libbenchmark-dev libxml2-utils python3
               libjpeg-turbo-progs file xvfb librsvg2-bin poppler-utils python3-pil
               pybind11-dev python3-dev python3-numpy python3-pytest python3-pandas)
# scripts/valgrind.sh; scripts/coverage.sh.
valgrind_packages=("${test_packages[@]}" valgrind)
coverage_packages=("${test_packages[@]}" gcovr)
# scripts/compare: the peers it times vyr against; Kst on its own, since the comparison goes on
# without it where it cannot be installed.
compare_packages=(python3-pandas python3-matplotlib gnuplot-nox bc)
compare_kst_packages=(kst)

case "${1:-run}" in
    run) wanted=("${run_packages[@]}") ;;
    test) wanted=("${test_packages[@]}") ;;
    fuzz) wanted=("${fuzz_packages[@]}") ;;
    valgrind) wanted=("${valgrind_packages[@]}") ;;
    coverage) wanted=("${coverage_packages[@]}") ;;
    compare) wanted=("${compare_packages[@]}") ;;
    compare-kst) wanted=("${compare_kst_packages[@]}") ;;
    *) echo "usage: $0 run|test|fuzz|valgrind|coverage|compare|compare-kst" >&2; exit 2 ;;
esac

missing=()
for pkg in "${wanted[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$pkg")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "vyr: installing Debian packages: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null; then sudo="sudo"; else
        echo "vyr: missing packages (${missing[*]}) and not root: install them first" >&2
        exit 1
    fi
fi
export DEBIAN_FRONTEND=noninteractive
if ! $sudo apt-get update -qq; then
    echo "vyr: apt-get update failed: cannot install ${missing[*]}" >&2
    exit 1
fi
if ! $sudo apt-get install -y -qq "${missing[@]}" >/dev/null; then
    echo "vyr: apt-get could not install: ${missing[*]}" >&2
    exit 1
fi
