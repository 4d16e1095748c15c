#!/usr/bin/env bash
# Instructions per catalog lookup, counted by callgrind over the lookup loop alone: the difference
# between two runs of different lengths cancels the fixed cost. Guard: at most 600 per lookup.
set -euo pipefail
exe=${1:-build/bench/bench_catalog}
limit=600
[ -x "$exe" ] || { echo "callgrind_catalog: $exe is missing (make bench builds it)"; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

instructions() { # count kind layout
  valgrind --tool=callgrind --callgrind-out-file="$work/out" --toggle-collect='*runLookups*' \
    "$exe" --lookups "$1" "$2" "$3" > /dev/null 2> "$work/log" || { tail -5 "$work/log"; exit 1; }
  awk '/^(summary|totals):/ { print $2; exit }' "$work/out"
}

status=0
for layout in hash nohash; do
  for kind in hit miss; do
    small=$(instructions 2000 $kind $layout)
    large=$(instructions 22000 $kind $layout)
    per=$(( (large - small) / 20000 ))
    verdict=ok
    if [ "$per" -gt "$limit" ]; then verdict="OVER $limit"; status=1; fi
    printf '%-7s %-5s %6d instructions per lookup (1,000 messages)  %s\n' "$layout" "$kind" "$per" "$verdict"
  done
done
exit $status
