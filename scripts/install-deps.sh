#!/usr/bin/env bash
# Installs the Debian packages that Ombrel needs to build, run and test, when they are missing.
# Usage: scripts/install-deps.sh [build|test]   (test adds what only the test suite uses)
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
if [ "${1:-build}" = test ]; then
  want+=(xvfb xdotool mame)
fi

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
