#!/usr/bin/env bash
# Builds Ombrel and runs the demo cabinet: full screen on a desktop (--windowed for a window), or,
# with no display, headless through the replay harness, saving screenshots of a short walk.
# The cabinet runs in a copy of demo/ under out/cabinet/, since the program writes into its folder
# (saved state, key map, list files); the copy keeps what it wrote from one run to the next.
# Usage: scripts/run-demo.sh [--windowed]   or   scripts/run-demo.sh --check (checks the copy's
# ombrel.ini, with the demo emulator in place, instead of running the cabinet)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)

"$root/scripts/install-deps.sh" build

cmake --preset release >/dev/null
cmake --build build-release -j"$(nproc)" --target ombrel demoemu
bin="$root/build-release/src/app/ombrel"

cabinet="$root/out/cabinet"
mkdir -p "$cabinet"
cp -R -n "$root/demo/." "$cabinet/"
# The cabinet's first list runs its emulator from emu/ (install replaces a copy that is still running).
install -D -m 755 "$root/build-release/tools/demoemu/demoemu" "$cabinet/emu/demoemu"

if [ "${1:-}" = --check ]; then
  exec "$bin" --check --home "$cabinet"
fi

if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  out="$root/out/demo-walk"
  echo "No display found: running the demo headless through the replay harness."
  rm -rf "$out"
  mkdir -p "$out"
  (cd "$out" && "$bin" --home "$cabinet" --replay "$root/demo/walk.replay" --trace "$out/walk.trace")
  echo "Screenshots and the trace of the walk are in $out:"
  ls "$out"
  exit 0
fi
exec "$bin" --home "$cabinet" "$@"
