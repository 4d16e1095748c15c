#!/usr/bin/env bash
# Runs a Windows program under Wine in the build's own prefix, never the user's. The prefix is made by
# `make wineprefix`; QUILLON_WINEPREFIX overrides where it lives.
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX=${QUILLON_WINEPREFIX:-$here/build/windows/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-"mscoree,mshtml="}
wine=/usr/lib/wine/wine64
[ -x "$wine" ] || wine=$(command -v wine64 || command -v wine)
exec "$wine" "$@"
