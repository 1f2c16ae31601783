#!/usr/bin/env bash
# Builds the release configuration and measures the browser:
#   - the idle browser: the real program in a full-screen window on a private X server (Xvfb), on a
#     copy of the demo cabinet, left alone for a while; the CPU it used (utime + stime from /proc) and
#     how often it woke up (voluntary context switches);
#   - the Google benchmarks under bench/ (the selection step at 1920x1080, the ROM scan);
#   - the pictures under a held key (bench/PictureBench.cpp): 500 steps at the 75 ms repeat through a
#     4000-game cabinet with all four kinds of art, panels and a 3 x 3 strip, with and without the
#     read-ahead; about four minutes.
# Figures go to standard output with the machine they were taken on.
# Usage: scripts/bench.sh [--idle-only | --no-idle | --pictures-only] [--seconds N] [--build DIR]
#   --build DIR      measure the program already built in DIR instead of building build-release
#   --pictures-only  only the pictures under a held key
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)

seconds=30
idle=1
benchmarks=1
pictures=1
build="$root/build-release"
prebuilt=0
while [ $# -gt 0 ]; do
  case "$1" in
    --idle-only) benchmarks=0; pictures=0 ;;
    --no-idle) idle=0 ;;
    --pictures-only) idle=0; benchmarks=0 ;;
    --seconds) seconds="$2"; shift ;;
    --build) build="$2"; prebuilt=1; shift ;;
    *) echo "usage: scripts/bench.sh [--idle-only | --no-idle | --pictures-only] [--seconds N] [--build DIR]" >&2
       exit 2 ;;
  esac
  shift
done

if [ "$prebuilt" = 0 ]; then
  "$root/scripts/install-deps.sh" build >/dev/null
  cmake --preset release -DOMBREL_BUILD_BENCH=ON >/dev/null
  cmake --build "$build" -j2 --target ombrel ombrel_bench_browser ombrel_bench_scan ombrel_bench_pictures
fi
bin="$build/src/app/ombrel"

echo "== machine"
echo "cpu: $(grep -m1 'model name' /proc/cpuinfo | cut -d: -f2- | sed 's/^ *//'), $(nproc) cores"
echo "load: $(cut -d' ' -f1-3 /proc/loadavg) (1, 5, 15 min) when the run began"
echo "kernel: $(uname -r); SDL $(pkg-config --modversion sdl2 2>/dev/null || echo '?')"
echo "commit: $(git rev-parse --short HEAD 2>/dev/null || echo '?')$(git diff --quiet 2>/dev/null || echo ' (with changes)')"

work=$(mktemp -d /tmp/ombrel-bench.XXXXXX)
xvfb_pid=""
ombrel_pid=""
cleanup() {
  [ -n "$ombrel_pid" ] && kill "$ombrel_pid" 2>/dev/null || true
  [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# utime + stime of a process, in clock ticks (fields 14 and 15 of /proc/<pid>/stat; the name in
# field 2 may hold blanks, so count from after its closing parenthesis).
cpu_ticks() {
  local rest
  rest=$(sed 's/^.*) //' "/proc/$1/stat")
  set -- $rest
  echo $(( ${12} + ${13} ))
}
wakeups() {
  awk '/^voluntary_ctxt_switches/ { print $2 }' "/proc/$1/status"
}

if [ "$idle" = 1 ]; then
  command -v Xvfb >/dev/null || { echo "Xvfb is missing (scripts/install-deps.sh test installs it)" >&2; exit 1; }
  echo "== idle browser: demo cabinet, full screen 1920x1080 on Xvfb, ${seconds} s"
  cabinet="$work/cabinet"
  cp -R "$root/demo" "$cabinet"
  rm -f "$cabinet/intro.mpeg" # the browser at once, without the film before it
  # The demo has no list files until its first start scans for them; do that once, headless.
  printf 'at 2000 end\n' > "$work/first-start.replay"
  "$bin" --home "$cabinet" --replay "$work/first-start.replay" >/dev/null 2>&1
  cp "$root/demo/ombrel.cfg" "$cabinet/ombrel.cfg"

  display=":$(( 90 + RANDOM % 400 ))"
  Xvfb "$display" -screen 0 1920x1080x24 -nolisten tcp >/dev/null 2>&1 &
  xvfb_pid=$!
  for _ in $(seq 50); do
    [ -e "/tmp/.X11-unix/X${display#:}" ] && break
    sleep 0.1
  done
  DISPLAY="$display" SDL_AUDIODRIVER=dummy "$bin" --home "$cabinet" --trace "$work/idle.trace" \
    >"$work/idle.out" 2>&1 &
  ombrel_pid=$!
  # Past the start: the blanker's two seconds, the boot, the first pictures.
  for _ in $(seq 100); do
    grep -q "form hide blanker" "$work/idle.trace" 2>/dev/null && break
    sleep 0.1
  done
  sleep 3
  hz=$(getconf CLK_TCK)
  t0=$(cpu_ticks "$ombrel_pid"); w0=$(wakeups "$ombrel_pid"); s0=$(date +%s.%N)
  sleep "$seconds"
  t1=$(cpu_ticks "$ombrel_pid"); w1=$(wakeups "$ombrel_pid"); s1=$(date +%s.%N)
  awk -v t=$((t1 - t0)) -v hz="$hz" -v w=$((w1 - w0)) -v s0="$s0" -v s1="$s1" 'BEGIN {
    wall = s1 - s0
    printf "cpu: %.2f s in %.1f s = %.3f %% of one core\n", t / hz, wall, 100 * t / hz / wall
    printf "wake-ups: %d = %.1f per second\n", w, w / wall
  }'
  kill "$ombrel_pid" 2>/dev/null || true
  wait "$ombrel_pid" 2>/dev/null || true
  ombrel_pid=""
fi

if [ "$benchmarks" = 1 ]; then
  echo "== benchmarks"
  "$build/bench/ombrel_bench_browser" --benchmark_counters_tabular=true
  "$build/bench/ombrel_bench_scan"
fi

if [ "$pictures" = 1 ]; then
  echo "== pictures under a held key"
  "$build/bench/ombrel_bench_pictures"
fi
