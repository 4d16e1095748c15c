#!/usr/bin/env bash
# Start-up benchmark under Wine: what the start-up version check costs. Quillon starts with the check off
# (the anchor) and on against the local product-attribute server (tests/server, serving Quillon's own
# version, so that no dialog comes up), in alternating runs timed by bench/startupTimer.cpp until the
# program waits for input. STARTUP_BENCH_RUNS chooses the number of runs.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
work=$root/build/bench-startup
win=$root/build/windows
runs=${STARTUP_BENCH_RUNS:-15}
export QUILLON_WINEPREFIX=$work/wineprefix
wine=$root/cmake/wine-run.sh

if [ -z "${QUILLON_STARTUP_BENCH_INNER:-}" ]; then
    [ -f "$win/CMakeCache.txt" ] ||
        cmake -S "$root" -B "$win" -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$win" --target quillon bench_startup_timer -j 2 >/dev/null
    exec env QUILLON_STARTUP_BENCH_INNER=1 xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0"
fi

"$wine" --boot
"$wine" --server -p
trap '"$wine" --server -k 2>/dev/null || true' EXIT

python3 "$root/tests/server/productServer.py" --table "$win/run-products.txt" --log "$work/requests.log" \
    --wrap "$wine" "$win/bench_startup_timer.exe" "$runs" "$win/dist/Quillon/sys/exec/quillon.exe"
echo "requests answered by the server: $(wc -l <"$work/requests.log")"
