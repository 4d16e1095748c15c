#!/usr/bin/env bash
# Installs, from Debian's packages, everything the two builds and the tests need. Safe to run again:
# it asks apt only for what is missing.
set -euo pipefail

pkgs=(
  cmake make git python3
  g++ clang libclang-rt-14-dev googletest libbenchmark-dev
  g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64
  wine wine64 xvfb xauth xdotool xclip x11-utils imagemagick python3-xlib
  fonts-dejavu-core fonts-vlgothic
  gettext fp-utils libchm-bin icoutils openssl clang-format
  cups printer-driver-cups-pdf poppler-utils
  wixl msitools osslsigncode
)

missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
# wine's 32-bit half is not needed: the product is a 64-bit program.
# several builds on one machine may install at once: wait for dpkg's lock rather than fail
apt=(apt-get -o DPkg::Lock::Timeout=900 -y -qq)
$sudo "${apt[@]}" update
$sudo "${apt[@]}" install --no-install-recommends "${missing[@]}"
