#!/bin/sh
# Runs every check that needs no build but its own: layers, format, clang-tidy (pass "--no-tidy" to skip the slow one).
cd "$(dirname "$0")/.." || exit 1
status=0
line() { if "$@" >build/lint.log 2>&1; then echo "OK    $*"; else echo "FAIL  $*"; tail -n 20 build/lint.log; status=1; fi; }
mkdir -p build
line tools/check_layers.py
line tools/format.sh --check
if [ "$1" != "--no-tidy" ]; then
    cmake --preset clang >/dev/null
    for file in $(git ls-files '*.cpp' | grep -Ev '^tests/|^bench/|/tables/|Windows\.cpp$'); do
        line clang-tidy --quiet -p build/clang "$file" --warnings-as-errors='*'
    done
fi
exit $status
