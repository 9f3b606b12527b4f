#!/bin/sh
# Runs a libFuzzer program for some seconds, from the kept seeds and findings of its subject: run_fuzzer.sh PROGRAM [SECONDS]
# PROGRAM is called ascii_fuzzer, binary_fuzzer or history_fuzzer. New inputs go to a temporary folder. A finding is left beside the program,
# to be added to SUBJECT/regressions.
set -e
program=$1
seconds=${2:-60}
subject=$(basename "$program" _fuzzer)
here=$(cd "$(dirname "$0")" && pwd)/$subject
corpus=$(mktemp -d)
trap 'rm -rf "$corpus"' EXIT
"$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 -verbosity=0 \
    -artifact_prefix="$(dirname "$program")/finding-" "$corpus" "$here/seeds" "$here/regressions"
