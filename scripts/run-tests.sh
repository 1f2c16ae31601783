#!/usr/bin/env bash
# Builds Ombrel and runs every test. Installs the missing Debian packages first.
# Usage: scripts/run-tests.sh [--asan]   (--asan: AddressSanitizer and UBSan build in build-asan/)
set -euo pipefail
cd "$(dirname "$0")/.."

"$(pwd)/scripts/install-deps.sh" test

preset=dev
dir=build
if [ "${1:-}" = "--asan" ]; then
  preset=asan
  dir=build-asan
fi
werror=OFF
[ -n "${CI:-}" ] && werror=ON

cmake --preset "$preset" -DOMBREL_WERROR="$werror" >/dev/null
cmake --build "$dir" -j"$(nproc)"
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0:abort_on_error=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
ctest --test-dir "$dir" --output-on-failure -j2
