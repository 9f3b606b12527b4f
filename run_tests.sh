#!/bin/sh
# Builds and runs all tests: release, AddressSanitizer + UndefinedBehaviorSanitizer, 64-bit Windows under Wine.
# The fuzzers of both readers run half a minute each; tests/fuzz/run_fuzzers.sh runs all of them longer.
# Works again when run twice. ORV_CORPUS may name a folder of real scenes (see docs/testing.md); without it those tests say "skipped".
set -e
cd "$(dirname "$0")"
echo "== packages"
tools/install_packages.sh build test fuzz lint
jobs=$(nproc)
failed=0
run() { echo "== $*"; "$@" || failed=1; }

for preset in release dev windows; do
    echo "== build $preset"
    cmake --preset "$preset" -DORV_TESTS=ON -DORV_PRECOMPILE=ON >/dev/null
    cmake --build --preset "$preset"
done
run tests/fuzz/run_fuzzers.sh "$(((${ORV_FUZZ_SECONDS:-60} + 1) / 2))" ascii binary
run tools/lint.sh --no-tidy
# Wine makes its folder at the first start; two programs that start at once must not both try.
export WINEPREFIX="$PWD/build/windows/wine"
tools/wine.sh build/windows/bin/test_host_support.exe >/dev/null 2>&1 || true
# Twins compare the two readers, not two builds: once is enough.
run ctest --test-dir build/dev --output-on-failure -j "$jobs" --exclude-regex Twins
run ctest --test-dir build/windows --output-on-failure -j "$jobs" --exclude-regex Twins
run ctest --test-dir build/release --output-on-failure -j "$jobs"
exit $failed
