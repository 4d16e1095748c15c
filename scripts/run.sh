#!/usr/bin/env bash
# `make run`: starts Quillon from the built installation tree as Windows would, in a Wine prefix of its
# own (build/windows/run-wineprefix), so that its recent files and bar state never mix with the tests'.
# usage: run.sh [--file PATH] [ARG...]
#   PATH  a Linux path (absolute or relative to the current folder) of a document to open
#   ARG   further arguments as Windows takes them ('-help', '-logfile:Z:\tmp\log.txt')
# QUILLON_BUILD_DIR and QUILLON_RUN_WINEPREFIX move the build and the prefix.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${QUILLON_BUILD_DIR:-$root/build/windows}
export QUILLON_WINEPREFIX=${QUILLON_RUN_WINEPREFIX:-$build/run-wineprefix}
export QUILLON_WINE_RUN=$root/cmake/wine-run.sh

# Without a display Quillon still runs, in a private one that stays until Wine has left it.
if [ -z "${DISPLAY:-}" ]; then
    exec xvfb-run -a -s "-screen 0 1280x1024x24" \
        bash -c '"$0" "$@"; rc=$?; "$QUILLON_WINE_RUN" --server -w; exit $rc' "$0" "$@"
fi

# Linux's locale variables name a Linux locale, not one of Quillon's languages: they stay with Wine,
# which makes the Windows user locale from them, and the starter keeps them from Quillon. Any other
# value (LC_ALL=German) is a language chosen for Quillon: Wine never sees it, Quillon gets it.
linux_locale='^(C|POSIX|[a-z]{2,3}(_[A-Z]{2})?)([.][^@]*)?(@.*)?$'
for name in LC_ALL LC_MESSAGES LANG; do
    value=${!name:-}
    if [ -n "$value" ] && ! [[ $value =~ $linux_locale ]]; then
        export "QUILLON_RUN_$name=$value"
        unset "$name"
    fi
done

args=("$@")
if [ "${1:-}" = --file ]; then
    # Wine's Z: drive is the Linux root; a bare Linux path would be taken for a switch
    path=$(realpath -ms -- "$2")
    args=("Z:${path//\//\\}" "${@:3}")
fi

"$QUILLON_WINE_RUN" --boot
# the links that give the interface fonts Japanese glyphs, again whenever they change
fonts=$root/scripts/wine-fonts.reg
if [ "$QUILLON_WINEPREFIX/.fonts" -ot "$fonts" ]; then
    "$QUILLON_WINE_RUN" reg import "Z:${fonts//\//\\}" >/dev/null && touch "$QUILLON_WINEPREFIX/.fonts"
fi
# the start-up version check asks a local product-attribute server that knows this build's own version;
# it stops when Quillon ends
exec python3 "$root/tests/server/productServer.py" --table "$build/run-products.txt" --wrap \
    "$QUILLON_WINE_RUN" "$build/start_as_windows.exe" "$build/dist/Quillon/sys/exec/quillon.exe" "${args[@]}"
