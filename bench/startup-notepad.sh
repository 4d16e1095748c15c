#!/usr/bin/env bash
# Start-up benchmark under Wine: process start until the main window is shown (mapped with its title),
# for Quillon and for Wine's own notepad.exe, the anchor, in the same run; the bare EDIT-control window
# (bench_bare_edit.exe) shows the floor of any Win32 start here. Warm: the prefix's wineserver keeps
# running between starts; cold: it is stopped before each start, so Wine boots its server and reloads the
# prefix every time. Prints medians (and the fastest run, the least disturbed by other work on the machine)
# and Quillon's ratios to notepad (targets: warm <= 0.9, cold <= 1). STARTUP_BENCH_RUNS (warm, default 11)
# and STARTUP_BENCH_COLD_RUNS (default 7) choose the repetitions.
#
# Each row is "name|title text|environment|program": another row, such as Quillon with the start-up
# version check on against a local server, is one more entry in `rows` (its server started before the
# measurements and its environment naming it).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
work=$root/build/bench-startup-notepad
win=$root/build/windows
runs=${STARTUP_BENCH_RUNS:-11}
cold_runs=${STARTUP_BENCH_COLD_RUNS:-7}
export QUILLON_WINEPREFIX=$work/wineprefix
wine=$root/cmake/wine-run.sh
python=/usr/bin/python3

if [ -z "${QUILLON_NOTEPAD_BENCH_INNER:-}" ]; then
    [ -f "$win/CMakeCache.txt" ] ||
        cmake -S "$root" -B "$win" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$win" --target quillon bench_bare_edit -j 2 >/dev/null
    mkdir -p "$work"
    exec env QUILLON_NOTEPAD_BENCH_INNER=1 xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0"
fi

"$wine" --boot
trap '"$wine" --server -k 2>/dev/null || true' EXIT

rows=(
    "quillon|Quillon|QWZ_DISABLE_STARTUP_VERSION_CHECK=1|$win/dist/Quillon/sys/exec/quillon.exe"
    "notepad|Notepad||C:\\windows\\system32\\notepad.exe"
    "bare|bare edit||$win/bench_bare_edit.exe"
)

# measure <row> -> seconds until the window is shown
measure() {
    local name title environment exe
    IFS='|' read -r name title environment exe <<<"$1"
    # shellcheck disable=SC2086 # the row's environment is a list of assignments
    env $environment "$python" "$root/bench/openTimer.py" --shown "$title" 120 "$wine" "$exe" | awk '{print $1}' || echo failed
}

median() { sort -n | awk '{a[NR]=$1} END {print a[int((NR + 1) / 2)]}'; }
fastest() { sort -n | head -1; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.3f", (b > 0) ? a / b : 0 }'; }

declare -A warm=() cold=()
"$wine" --server -p
for row in "${rows[@]}"; do measure "$row" >/dev/null; done # unmeasured: Wine's files in the page cache
for ((r = 0; r < runs; r++)); do
    for row in "${rows[@]}"; do warm[${row%%|*}]+="$(measure "$row") "; done
done
for ((r = 0; r < cold_runs; r++)); do
    for row in "${rows[@]}"; do
        "$wine" --server -k 2>/dev/null || true
        "$wine" --server -w
        cold[${row%%|*}]+="$(measure "$row") "
    done
done

printf '%-16s %8s %8s %8s %8s %14s %14s\n' program warm_s cold_s warm_min cold_min warm/notepad cold/notepad
declare -A wm=() cm=() wf=() cf=()
for row in "${rows[@]}"; do
    name=${row%%|*}
    for t in ${warm[$name]} ${cold[$name]}; do
        [[ $t =~ ^[0-9.]+$ ]] || { echo "$name: the window never showed" >&2; exit 1; }
    done
    wm[$name]=$(tr ' ' '\n' <<<"${warm[$name]}" | grep . | median)
    cm[$name]=$(tr ' ' '\n' <<<"${cold[$name]}" | grep . | median)
    wf[$name]=$(tr ' ' '\n' <<<"${warm[$name]}" | grep . | fastest)
    cf[$name]=$(tr ' ' '\n' <<<"${cold[$name]}" | grep . | fastest)
done
for row in "${rows[@]}"; do
    name=${row%%|*}
    printf '%-16s %8s %8s %8s %8s %14s %14s\n' "$name" "${wm[$name]}" "${cm[$name]}" "${wf[$name]}" "${cf[$name]}" \
        "$(ratio "${wm[$name]}" "${wm[notepad]}")" "$(ratio "${cm[$name]}" "${cm[notepad]}")"
done
printf 'ratio quillon/notepad start-up, medians: warm %s (target <= 0.9), cold %s (target <= 1); fastest runs: warm %s, cold %s\n' \
    "$(ratio "${wm[quillon]}" "${wm[notepad]}")" "$(ratio "${cm[quillon]}" "${cm[notepad]}")" \
    "$(ratio "${wf[quillon]}" "${wf[notepad]}")" "$(ratio "${cf[quillon]}" "${cf[notepad]}")"
