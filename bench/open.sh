#!/usr/bin/env bash
# Open benchmark under Wine: Quillon, Wine's own notepad.exe and a bare word-wrapping EDIT control each
# open the same 1, 10 and 50 MB UTF-8 logs from the command line; timed from process start until the
# window's title shows the file (X events, bench/openTimer.py). Prints medians, the ratios against both
# anchors and the peak memory (VmHWM). OPEN_BENCH_SIZES, OPEN_BENCH_RUNS and OPEN_BENCH_BIG_RUNS (50 MB and
# more) choose sizes and repetitions.
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
    cmake --build "$win" --target quillon bench_bare_edit -j 2 >/dev/null
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

# measure <program> <file> -> "seconds peak_kib"
measure() {
    local exe=$1 file=$2
    "$python" "$root/bench/openTimer.py" "$(basename "$file")" 900 "$wine" "$exe" "$(winpath "$file")"
}

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR + 1) / 2)]}'; }
maxof() { sort -n | tail -1; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { print (b > 0) ? a / b : "nan" }'; }

# one unmeasured start of each program, so that the first measured one finds Wine's files cached
printf 'warm\n' >"$work/warm.log"
for exe in "$quillon" "$notepad" "$bare"; do measure "$exe" "$work/warm.log" >/dev/null || true; done

printf '%-6s %-8s %9s %10s\n' size program seconds peak_MiB
for mb in $sizes; do
    file=$work/open-${mb}MB.log
    declare -A times=() peaks=()
    n=$runs
    [ "$mb" -ge 50 ] && n=$big_runs
    for ((r = 0; r < n; r++)); do
        for name in quillon notepad bare; do
            case $name in quillon) exe=$quillon ;; notepad) exe=$notepad ;; bare) exe=$bare ;; esac
            read -r t p < <(measure "$exe" "$file" || echo "failed 0")
            if [ "$t" = failed ] || [ "$t" = timeout ]; then
                echo "$name did not show $(basename "$file") in its title" >&2
                exit 1
            fi
            times[$name]+="$t "
            peaks[$name]+="$p "
        done
    done
    declare -A med=() peak=()
    for name in quillon notepad bare; do
        med[$name]=$(tr ' ' '\n' <<<"${times[$name]}" | grep . | median)
        peak[$name]=$(tr ' ' '\n' <<<"${peaks[$name]}" | grep . | maxof)
        printf '%-6s %-8s %9s %10.1f\n' "${mb}MB" "$name" "${med[$name]}" "$(ratio "${peak[$name]}" 1024)"
    done
    printf '%-6s ratio quillon/notepad time %.3f (target <= 0.9 at 10MB), quillon/bare time %.3f (<= 1.05), quillon/notepad peak %.3f (<= 1)\n' \
        "${mb}MB" "$(ratio "${med[quillon]}" "${med[notepad]}")" "$(ratio "${med[quillon]}" "${med[bare]}")" \
        "$(ratio "${peak[quillon]}" "${peak[notepad]}")"
    unset times peaks med peak
done
