#!/usr/bin/env bash
# Runs a Windows program under Wine in the build's own prefix, never the user's: QUILLON_WINEPREFIX names
# it (default build/windows/wineprefix). The one place that finds Wine:
#   wine-run.sh PROGRAM [ARGS...]   runs a Windows program (the build's emulator)
#   wine-run.sh --boot              makes the prefix once; a failed wineboot fails loudly
#   wine-run.sh --server ARGS...    runs the prefix's wineserver: -k stops it, -w waits for it
set -u
here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX=${QUILLON_WINEPREFIX:-$here/build/windows/wineprefix}
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES=${WINEDLLOVERRIDES:-"mscoree,mshtml="}

# Debian keeps the 64-bit loader and server under /usr/lib/wine; other systems put them on PATH.
find_wine() {
    local p
    for p in "$@"; do
        if [[ $p == /* ]]; then
            [ -x "$p" ] && { echo "$p"; return 0; }
        else
            command -v "$p" && return 0
        fi
    done
    echo "wine-run.sh: no Wine found (looked for $*); scripts/install-deps.sh installs it" >&2
    return 1
}
wine=$(find_wine /usr/lib/wine/wine64 wine64 wine) || exit 127
wineserver=$(find_wine /usr/lib/wine/wineserver64 /usr/lib/wine/wineserver wineserver64 wineserver) || exit 127

case ${1:-} in
--server)
    shift
    exec "$wineserver" "$@"
    ;;
--boot)
    [ -f "$WINEPREFIX/.ready" ] && exit 0
    # wineboot draws windows: without a display it gets a private one
    [ -n "${DISPLAY:-}" ] || exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" --boot
    mkdir -p "$WINEPREFIX"
    log=$WINEPREFIX/wineboot.log
    if ! "$wine" wineboot -i >"$log" 2>&1 || ! "$wineserver" -w; then
        tail -20 "$log" >&2
        echo "wine-run.sh: wineboot could not make the prefix $WINEPREFIX (log: $log)" >&2
        exit 1
    fi
    touch "$WINEPREFIX/.ready"
    ;;
*)
    exec "$wine" "$@"
    ;;
esac
