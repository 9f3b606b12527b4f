#!/bin/sh
# Builds the libFuzzer programs with clang and runs each for some seconds: run_fuzzers.sh [SECONDS]
# Works again when run twice.
set -e
cd "$(dirname "$0")/../.."
tools/install_packages.sh build fuzz
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target ascii_fuzzer binary_fuzzer history_fuzzer
failed=0
for subject in ascii binary history; do
    tests/fuzz/run_fuzzer.sh "build/fuzz/bin/${subject}_fuzzer" "${1:-60}" || failed=1
done
exit $failed
