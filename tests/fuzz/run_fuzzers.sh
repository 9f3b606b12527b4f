#!/bin/sh
# Builds libFuzzer programs with clang and runs each for some seconds: run_fuzzers.sh [SECONDS [SUBJECT ...]]
# Subjects: ascii, binary, history; all of them where none is named.
# Works again when run twice.
set -e
cd "$(dirname "$0")/../.."
tools/install_packages.sh build fuzz
cmake --preset fuzz >/dev/null
seconds=${1:-60}
[ $# -lt 2 ] && set -- "$seconds" ascii binary history
shift
failed=0
for subject in "$@"; do
    cmake --build --preset fuzz --target "${subject}_fuzzer"
    tests/fuzz/run_fuzzer.sh "build/fuzz/bin/${subject}_fuzzer" "$seconds" || failed=1
done
exit $failed
