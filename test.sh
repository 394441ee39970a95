#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests. With --long also the slow ones.
#   1. levels 0 to 2 and the batch without Qt, under the address and undefined-behaviour sanitizers
#   2. each fuzz target for two seconds   3. the window (off-screen), and the installed programs
# --long: fuzzing for 60 s, numerics on threads under the thread sanitizer, and the tests of 1 optimised.
set -euo pipefail
cd "$(dirname "$0")"
source support/install.sh
long=0
[ "${1:-}" = "--long" ] && long=1
needs_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_WINDOW[@]}" "${PACKAGES_TEST[@]}"
jobs=$(nproc)

step() { echo; echo "== $*"; }

run_tests() { # preset
    QT_QPA_PLATFORM=offscreen ctest --test-dir "build/$1" --output-on-failure -j "$jobs" --no-tests=error \
        | tee "build/$1-tests.log" | grep -vE '^ *(Start|[0-9]+/[0-9]+ Test)' || return 1
}

step "headless: levels 0 to 2 and the batch program, no Qt, with sanitizers"
cmake --preset asan >/dev/null
cmake --build --preset asan
run_tests asan

step "fuzz targets"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
seconds=2
[ $long = 1 ] && seconds=60
for target in build/fuzz/bin/fuzz_*; do
    name=$(basename "$target")
    corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus"
    seeds=tests/fuzz/seeds/${name#fuzz_}
    [ -d "$seeds" ] || seeds=
    if ! "$target" -max_total_time=$seconds -max_len=4096 -artifact_prefix=build/fuzz/ \
        "$corpus" $seeds >"build/fuzz/$name.log" 2>&1; then
        tail -n 40 "build/fuzz/$name.log"
        exit 1
    fi
    echo "$name: no finding in $seconds s"
done

if [ $long = 1 ]; then
    step "numeric modules on threads, thread sanitizer"
    cmake --preset tsan >/dev/null
    cmake --build --preset tsan
    run_tests tsan
fi

if [ $long = 1 ]; then
    step "headless: the same tests, optimised and without sanitizers"
    cmake --preset headless >/dev/null
    cmake --build --preset headless
    run_tests headless
fi

step "desktop: the window off-screen, and what is installed"
cmake --preset desktop >/dev/null
cmake --build --preset desktop
run_tests desktop
