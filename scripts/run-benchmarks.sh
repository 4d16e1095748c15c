#!/usr/bin/env bash
# Runs every benchmark of a bench build, then the Wine benchmarks under bench/*.sh.
set -euo pipefail
build=$1
# the benchmarks' scratch files stay in the build folder, private to this run
export TMPDIR
TMPDIR=$(mkdir -p "$build/tmp" && mktemp -d "$(cd "$build/tmp" && pwd)/run.XXXXXX")
trap 'rm -rf "$TMPDIR"' EXIT
for exe in "$build"/bench_*; do
  [ -x "$exe" ] || continue
  echo "== $(basename "$exe")"
  "$exe"
done
for script in bench/*.sh; do
  [ -f "$script" ] || continue
  echo "== $script"
  bash "$script"
done
