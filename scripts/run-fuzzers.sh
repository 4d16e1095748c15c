#!/usr/bin/env bash
# Runs every fuzzer of a fuzz build for a bounded time, each from its seed corpus in tests/fuzz/corpus.
set -euo pipefail
build=$1 seconds=$2
status=0
# the fuzzers' scratch files stay in the build folder, private to this run
export TMPDIR
TMPDIR=$(mkdir -p "$build/tmp" && mktemp -d "$(cd "$build/tmp" && pwd)/run.XXXXXX")
trap 'rm -rf "$TMPDIR"' EXIT
for exe in "$build"/fuzz_*; do
  [ -x "$exe" ] || continue
  name=$(basename "$exe")
  seeds="tests/fuzz/corpus/${name#fuzz_}"
  work="$build/corpus/$name"
  mkdir -p "$work"
  args=("$work")
  [ -d "$seeds" ] && args+=("$seeds")
  echo "== $name (${seconds}s)"
  if ! "$exe" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 "${args[@]}" \
      > "$build/$name.log" 2>&1; then
    tail -30 "$build/$name.log"
    status=1
  else
    grep -E 'stat::number_of_executed_units' "$build/$name.log" || true
  fi
done
exit $status
