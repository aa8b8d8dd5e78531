#!/usr/bin/env bash
# Builds the fuzz targets (fuzz/) with clang's libFuzzer, AddressSanitizer and
# UndefinedBehaviorSanitizer, and runs each for the given number of seconds (default 60),
# starting from its committed seed corpus. Every input that crashes, leaks, takes more than 2 s
# or more than 2 GB is written to build/fuzz-artifacts/<target>/ and fails the run: reproduce it
# with build/fuzzer/fuzz/vyr_fuzz_<target> <file>, fix the library, and add the file to
# tests/corpus/ (the tests replay it).
# Usage: scripts/fuzz.sh [seconds] [target...]   (targets: load roundtrip base64 report csv table,
#        and live, the table read as it arrives, on request only: the test command's time is kept)
# FUZZ_JOBS=n runs n targets at a time (default 1).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh fuzz

seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(load roundtrip base64 report csv table)
jobs=${FUZZ_JOBS:-1}
export DISPLAY= WAYLAND_DISPLAY=

echo "== build (clang, libFuzzer, ASan + UBSan)"
CXX=clang++-14 CC=clang-14 cmake -S . -B build/fuzzer -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++-14 -DVYR_FUZZ=ON -DVYR_BUILD_TESTS=OFF -DVYR_BUILD_BENCH=OFF \
    -DVYR_BUILD_TOOLS=OFF >/dev/null
cmake --build build/fuzzer -j"$(nproc)" --target $(printf 'vyr_fuzz_%s ' "${targets[@]}")

export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export LSAN_OPTIONS=suppressions=$PWD/scripts/lsan.supp

run_target() {
    local target=$1
    local work=build/fuzz-corpus/$target artifacts=build/fuzz-artifacts/$target
    mkdir -p "$work" "$artifacts"
    local dict=() seeds=fuzz/corpus/$target
    case $target in
        load|roundtrip|csv) dict=(-dict=fuzz/vyr.dict) ;;
        table) dict=(-dict=fuzz/table.dict) ;;
        # The live reader is fed the tables the import is fed.
        live) dict=(-dict=fuzz/table.dict) seeds=fuzz/corpus/table ;;
    esac
    # New inputs go to the working corpus; the committed seeds are only read.
    build/fuzzer/fuzz/vyr_fuzz_"$target" "$work" "$seeds" "${dict[@]}" \
        -max_total_time="$seconds" -timeout=2 -rss_limit_mb=2048 -malloc_limit_mb=2048 \
        -max_len=65536 -print_final_stats=1 -artifact_prefix="$artifacts"/ \
        >"build/fuzz-$target.log" 2>&1
}

echo "== fuzzing ${targets[*]} for $seconds s each, $jobs at a time"
start=$(date +%s)
status=0
pids=()
names=()
for target in "${targets[@]}"; do
    run_target "$target" &
    pids+=($!)
    names+=("$target")
    if [ ${#pids[@]} -ge "$jobs" ]; then
        wait "${pids[0]}" || { echo "${names[0]}: FAILED (build/fuzz-${names[0]}.log)"; status=1; }
        pids=("${pids[@]:1}")
        names=("${names[@]:1}")
    fi
done
for i in "${!pids[@]}"; do
    wait "${pids[$i]}" || { echo "${names[$i]}: FAILED (build/fuzz-${names[$i]}.log)"; status=1; }
done

for target in "${targets[@]}"; do
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "build/fuzz-$target.log" |
           grep -o '[0-9]*$' || echo "?")
    cov=$(grep -o 'cov: [0-9]*' "build/fuzz-$target.log" | tail -1 || true)
    found=$(find "build/fuzz-artifacts/$target" -type f | wc -l)
    echo "$target: $runs executions, $cov, $found artifact(s) in build/fuzz-artifacts/$target"
done
echo "== done in $(( $(date +%s) - start )) s"
exit $status
