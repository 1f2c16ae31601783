#!/usr/bin/env bash
# Installs the Debian packages that Ombrel needs to build, run and test, when they are missing.
# Usage: scripts/install-deps.sh [build|test|fuzz]   (test adds what only the test suite and CI use,
# fuzz what the fuzz targets need: clang, its libFuzzer and sanitizer runtimes, llvm-symbolizer)
set -euo pipefail

want=(
  build-essential cmake pkg-config
  libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libsdl2-ttf-dev
  libfontconfig-dev fonts-dejavu-core
  libavformat-dev libavcodec-dev libswscale-dev libswresample-dev libavutil-dev
  libxtst-dev libxrandr-dev libx11-dev libsystemd-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  ffmpeg
)
fuzz=(clang libclang-rt-14-dev llvm)
case "${1:-build}" in
  test) want+=(xvfb xdotool mame "${fuzz[@]}") ;;
  fuzz) want+=("${fuzz[@]}") ;;
esac

missing=()
for p in "${want[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
