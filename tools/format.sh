#!/bin/sh
# Formats every C++ file in place; "--check" only tells which would change (exit status 1 then).
cd "$(dirname "$0")/.." || exit 1
files=$(git ls-files '*.h' '*.cpp' | grep -v '/tables/')
[ "$1" = "--check" ] && exec clang-format --dry-run --Werror $files
exec clang-format -i $files
