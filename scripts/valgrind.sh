#!/usr/bin/env bash
# Runs the unit test programs under valgrind's memcheck: any invalid access, use of an
# uninitialised value, or block definitely or indirectly lost fails the run. Reports that do
# not come from VyrBase are suppressed by scripts/valgrind.supp, each with its reason.
# Usage: scripts/valgrind.sh [program...]   (default: every unit test program)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh valgrind

programs=("$@")
[ ${#programs[@]} -eq 0 ] && programs=(core data file diagram alloc)
export DISPLAY= WAYLAND_DISPLAY=

cmake -S . -B build/valgrind -DCMAKE_BUILD_TYPE=Debug -DVYR_BUILD_BENCH=OFF \
    -DVYR_BUILD_TOOLS=OFF >/dev/null
cmake --build build/valgrind -j"$(nproc)" --target $(printf 'vyr_tests_%s ' "${programs[@]}")

status=0
for program in "${programs[@]}"; do
    log=build/valgrind-$program.log
    # The allocation-failure tests replace operator new in their own program: valgrind must
    # leave that program's definition in place (somalloc=nouserintercepts: replace the
    # allocation functions of the runtime libraries only). It takes its memory from malloc,
    # which valgrind still watches.
    synonyms=()
    [ "$program" = alloc ] && synonyms=(--soname-synonyms=somalloc=nouserintercepts)
    if valgrind --tool=memcheck --leak-check=full --show-leak-kinds=definite,indirect \
        --errors-for-leak-kinds=definite,indirect --error-exitcode=99 --track-origins=yes \
        --num-callers=40 --suppressions=scripts/valgrind.supp "${synonyms[@]}" \
        build/valgrind/tests/vyr_tests_"$program" >"$log" 2>&1; then
        result=ok
    else
        result="FAILED ($log)"
        status=1
    fi
    summary=$(grep -E "ERROR SUMMARY|definitely lost:|indirectly lost:" "$log" | sed 's/^==[0-9]*== *//' | tr '\n' ' ')
    echo "$program: $result - $summary"
done
exit $status
