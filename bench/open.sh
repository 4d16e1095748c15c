#!/usr/bin/env bash
# Open benchmark under Wine: Quillon, Wine's own notepad.exe and a bare word-wrapping EDIT control that
# inserts the whole text in one call (Quillon's way before it loaded in pieces) each open the same 1, 10
# and 50 MB UTF-8 logs from the command line. Timed from process start (bench/loadTimer.py with the
# watcher bench/loadProbe.cpp): the window shown, the first text in it, the whole text in it; and the peak
# memory (VmHWM) once the text is whole. Prints medians and the ratios against the one-call insertion and
# notepad. OPEN_BENCH_SIZES, OPEN_BENCH_RUNS and OPEN_BENCH_BIG_RUNS (50 MB and more) choose sizes and
# repetitions.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
work=$root/build/bench-open
win=$root/build/windows
sizes=${OPEN_BENCH_SIZES:-"1 10 50"}
runs=${OPEN_BENCH_RUNS:-3}
big_runs=${OPEN_BENCH_BIG_RUNS:-1} # files of 50 MB and more take minutes per open
export QUILLON_WINEPREFIX=$work/wineprefix
export QWZ_DISABLE_STARTUP_VERSION_CHECK=1
wine=$root/cmake/wine-run.sh
python=/usr/bin/python3

if [ -z "${QUILLON_OPEN_BENCH_INNER:-}" ]; then
    [ -f "$win/CMakeCache.txt" ] ||
        cmake -S "$root" -B "$win" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$win" --target run_tree bench_bare_edit bench_load_probe -j 2 >/dev/null
    mkdir -p "$work"
    for mb in $sizes; do
        [ -f "$work/open-${mb}MB.log" ] || "$python" "$root/bench/makeLog.py" "$work/open-${mb}MB.log" $((mb * 1000000))
    done
    exec env QUILLON_OPEN_BENCH_INNER=1 xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0"
fi

winpath() { echo "Z:${1//\//\\}"; }

"$wine" --boot
if [ ! -f "$QUILLON_WINEPREFIX/.notepad" ]; then
    # notepad wraps and uses the same font as the others, so that all three do the same work
    "$wine" reg add 'HKCU\Software\Microsoft\Notepad' /v fWrap /t REG_DWORD /d 1 /f >/dev/null
    "$wine" reg add 'HKCU\Software\Microsoft\Notepad' /v lfFaceName /t REG_SZ /d 'Courier New' /f >/dev/null
    "$wine" reg add 'HKCU\Software\Microsoft\Notepad' /v iPointSize /t REG_DWORD /d 100 /f >/dev/null
    "$wine" --server -w
    touch "$QUILLON_WINEPREFIX/.notepad"
fi
"$wine" --server -p
trap '"$wine" --server -k 2>/dev/null || true' EXIT

quillon=$win/dist/Quillon/sys/exec/quillon.exe
bare=$win/bench_bare_edit.exe
notepad='C:\windows\system32\notepad.exe'
probe=$win/bench_load_probe.exe

# the whole text in UTF-16 units: as the one-call insertion holds it (CR-LF, the byte-order mark as a
# character), as Quillon holds it (the same with "%%" shown as "%"), and the least notepad may hold (no mark,
# line ends as in the file); notepad puts its text in at once, so no smaller count is seen on the way
units() {
    "$python" -c 'import sys
t = open(sys.argv[1], encoding="utf-8").read()
form = sys.argv[2]
if form == "least":
    t = t.lstrip("\ufeff")
else:
    t = t.replace("\n", "\r\n")
if form == "shown":
    t = t.replace("%%", "%")
print(len(t.encode("utf-16-le")) // 2)' "$1" "$2"
}

# measure <program> <file> -> "window first whole peak_kib"
measure() {
    local name=$1 file=$2 title exe count
    case $name in
    quillon) exe=$quillon title=$(basename "$file") count=$(units "$file" shown) ;;
    bare) exe=$bare title=$(basename "$file") count=$(units "$file" crlf) ;;
    notepad) exe=$notepad title=Notepad count=$(units "$file" least) ;;
    esac
    "$python" "$root/bench/loadTimer.py" "$wine" "$probe" "$title" "$count" "${3:-900}" "$exe" "$(winpath "$file")"
}

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR + 1) / 2)]}'; }
maxof() { sort -n | tail -1; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { print (b > 0) ? a / b : "nan" }'; }

# one unmeasured start of each program, so that the first measured one finds Wine's files cached
printf 'warm\n' >"$work/warm.log"
for name in quillon notepad bare; do measure "$name" "$work/warm.log" 60 >/dev/null || echo "$name: no warm start" >&2; done

printf '%-6s %-8s %8s %8s %8s %9s\n' size program window first whole peak_MiB
for mb in $sizes; do
    file=$work/open-${mb}MB.log
    declare -A shown=() first=() whole=() peaks=()
    n=$runs
    [ "$mb" -ge 50 ] && n=$big_runs
    for ((r = 0; r < n; r++)); do
        for name in quillon notepad bare; do
            read -r w f t p < <(measure "$name" "$file" || echo "failed 0 0 0")
            if [ "$w" = failed ] || [ "$w" = timeout ]; then
                echo "$name did not show all of $(basename "$file")" >&2
                exit 1
            fi
            shown[$name]+="$w " first[$name]+="$f " whole[$name]+="$t " peaks[$name]+="$p "
        done
    done
    declare -A mw=() mf=() mt=() peak=()
    for name in quillon notepad bare; do
        mw[$name]=$(tr ' ' '\n' <<<"${shown[$name]}" | grep . | median)
        mf[$name]=$(tr ' ' '\n' <<<"${first[$name]}" | grep . | median)
        mt[$name]=$(tr ' ' '\n' <<<"${whole[$name]}" | grep . | median)
        peak[$name]=$(tr ' ' '\n' <<<"${peaks[$name]}" | grep . | maxof)
        printf '%-6s %-8s %8s %8s %8s %9.1f\n' "${mb}MB" "$name" "${mw[$name]}" "${mf[$name]}" "${mt[$name]}" \
            "$(ratio "${peak[$name]}" 1024)"
    done
    printf '%-6s quillon: first text %.3f s after its window (target <= 0.5); whole text quillon/one-call %.3f (<= 1.1), quillon/notepad %.3f; first text quillon/one-call %.3f; peak quillon/one-call %.3f, quillon/notepad %.3f\n' \
        "${mb}MB" "$(awk -v a="${mf[quillon]}" -v b="${mw[quillon]}" 'BEGIN { print a - b }')" \
        "$(ratio "${mt[quillon]}" "${mt[bare]}")" "$(ratio "${mt[quillon]}" "${mt[notepad]}")" \
        "$(ratio "${mf[quillon]}" "${mf[bare]}")" "$(ratio "${peak[quillon]}" "${peak[bare]}")" \
        "$(ratio "${peak[quillon]}" "${peak[notepad]}")"
    unset shown first whole peaks mw mf mt peak
done
