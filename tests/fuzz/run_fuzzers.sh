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
for subject in "$@"; do
    cmake --build --preset fuzz --target "${subject}_fuzzer"
done
# side by side: each keeps one core busy
jobs=
for subject in "$@"; do
    tests/fuzz/run_fuzzer.sh "build/fuzz/bin/${subject}_fuzzer" "$seconds" >"build/fuzz/$subject.log" 2>&1 &
    jobs="$jobs $!"
done
failed=0
for job in $jobs; do
    wait "$job" || failed=1
done
for subject in "$@"; do
    echo "== fuzzed $subject"
    tail -n 40 "build/fuzz/$subject.log"
done
exit $failed
