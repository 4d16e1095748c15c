#!/usr/bin/env bash
# Runs the safe-save tests against a really full volume: a 64 KiB tmpfs mounted inside the build folder
# for the length of the run. Mounting needs root; where it is refused the test is skipped (exit 77) and
# the full disk stays covered by the simulated case in safeSaveTest.cpp.
set -u
runner=$1 exe=$2 dir=$3
mkdir -p "$dir"
if [ "$(id -u)" -ne 0 ] || ! mount -t tmpfs -o size=64k quillon-full-disk "$dir" 2>/dev/null; then
    echo "cannot mount a small volume here: the full disk stays simulated"
    exit 77
fi
trap 'umount "$dir"' EXIT
QUILLON_FULL_DISK_DIR=$dir "$runner" "$exe" --gtest_color=no --gtest_filter='SafeSaveFullDisk.*'
