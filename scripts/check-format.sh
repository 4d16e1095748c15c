#!/usr/bin/env bash
# Fails when a tracked C++ file is not formatted as .clang-format says (`make format` fixes it).
set -euo pipefail
files=$(git ls-files '*.cpp' '*.h' 2>/dev/null || true)
[ -n "$files" ] || exit 0
if ! clang-format --dry-run -Werror $files 2>/tmp/quillon-format.log; then
  head -40 /tmp/quillon-format.log
  echo "formatting differs from .clang-format: run 'make format'" >&2
  exit 1
fi
