#!/usr/bin/env bash
# Fails when a tracked C++ file is not formatted as .clang-format says (`make format` fixes it).
set -euo pipefail
files=$(git ls-files '*.cpp' '*.h' 2>/dev/null || true)
[ -n "$files" ] || exit 0
if ! command -v clang-format >/dev/null; then
  echo "check-format.sh: clang-format is missing; scripts/install-deps.sh installs it" >&2
  exit 1
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! clang-format --dry-run -Werror $files 2>"$log"; then
  head -40 "$log"
  echo "formatting differs from .clang-format: run 'make format'" >&2
  exit 1
fi
