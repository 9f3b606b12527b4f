#!/bin/sh
# Runs a Windows program under Wine, quietly and with a prefix of its own: wine.sh PROGRAM ARGUMENT...
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEPREFIX="${WINEPREFIX:-${TMPDIR:-/tmp}/vistrel-wine}"
if command -v wine >/dev/null 2>&1; then exec wine "$@"; fi
exec /usr/lib/wine/wine64 "$@"
