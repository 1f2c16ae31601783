#!/usr/bin/env bash
# Builds the fuzz targets of the file readers (clang, libFuzzer, ASan and UBSan in build-fuzz/) and runs
# each for a while, starting from the seeds in fuzz/corpus/. The corpus grows in build-fuzz/corpus/,
# never in the repository. A crash, a hang, a memory blow-up or a broken property fails the run; the
# input that caused it is kept in build-fuzz/artifacts/ and printed.
# Usage: scripts/fuzz.sh [--ci] [SECONDS] [TARGET...]
#   SECONDS  time per target (default 180)
#   TARGET   field_reader settings_file settings_check saved_state list_files extras key_map joystick_map
#            scheme picture_header skin_file
#            (default: all)
#   --ci     start every target from the seeds alone, as CI does, rather than from the grown corpus
set -euo pipefail

# The whole script is one function, so that editing the file while it runs cannot change what runs.
main() {
  cd "$(dirname "$0")/.."
  root=$(pwd)

  all=(field_reader settings_file settings_check saved_state list_files extras key_map joystick_map scheme
    picture_header skin_file)
  fresh=0
  if [ "${1:-}" = "--ci" ]; then
    fresh=1
    shift
  fi
  seconds=180
  if [[ "${1:-}" =~ ^[0-9]+$ ]]; then
    seconds=$1
    shift
  fi
  targets=("$@")
  [ ${#targets[@]} -eq 0 ] && targets=("${all[@]}")
  for t in "${targets[@]}"; do
    [[ " ${all[*]} " == *" $t "* ]] || { echo "unknown fuzz target: $t (known: ${all[*]})" >&2; exit 2; }
  done

  # The seed folders and the dictionary of each target; any file of the cabinet is a field file.
  seedsOf() {
    case $1 in
      field_reader) echo field_reader settings saved_state lists extras key_map joystick_map skin_file ;;
      settings_file | settings_check) echo settings ;;
      list_files) echo lists ;;
      *) echo "$1" ;;
    esac
  }
  dictOf() {
    case $1 in
      field_reader) echo fields ;;
      settings_file | settings_check) echo settings ;;
      list_files | extras) echo lists ;;
      *) echo "$1" ;;
    esac
  }

  "$root/scripts/install-deps.sh" fuzz

  build=build-fuzz
  launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
  mkdir -p "$build/logs"
  cmake --preset fuzz "${launcher[@]}" >"$build/logs/configure.log" 2>&1 || { cat "$build/logs/configure.log"; exit 1; }
  echo "building ${targets[*]/#/fuzz_} in $build/"
  cmake --build "$build" -j2 --target "${targets[@]/#/fuzz_}" >"$build/logs/build.log" 2>&1 ||
    { tail -n 80 "$build/logs/build.log"; exit 1; }

  # The readers that take a path read the input from a private folder in memory, removed at the end.
  OMBREL_FUZZ_TMP=$(mktemp -d "${TMPDIR:-/dev/shm}/ombrel-fuzz.XXXXXX" 2>/dev/null || mktemp -d)
  export OMBREL_FUZZ_TMP
  trap 'rm -rf "$OMBREL_FUZZ_TMP"' EXIT
  trap 'exit 130' INT TERM
  export ASAN_OPTIONS="${ASAN_OPTIONS:-abort_on_error=1}"
  export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"

  failed=()
  for t in "${targets[@]}"; do
    corpus=$build/corpus/$t
    [ $fresh -eq 1 ] && corpus=$build/ci-corpus/$t && rm -rf "$corpus"
    artifacts=$build/artifacts/$t
    log=$build/logs/$t.log
    mkdir -p "$corpus" "$artifacts" "$(dirname "$log")"
    seeds=()
    for s in $(seedsOf "$t"); do seeds+=("fuzz/corpus/$s"); done
    before=$(find "$artifacts" -type f | sort)

    # -max_len: a few KB, with room for the seeds that hold one very long line. -timeout and
    # -rss_limit_mb: one input that takes seconds or a gigabyte is a fault, not a slow machine.
    set +e
    "$build/fuzz/fuzz_$t" -max_total_time="$seconds" -max_len=8192 -timeout=10 -rss_limit_mb=1024 \
      -dict="fuzz/dict/$(dictOf "$t").dict" -artifact_prefix="$artifacts/" -print_final_stats=1 \
      "$corpus" "${seeds[@]}" >"$log" 2>&1
    status=$?
    set -e

    cov_start=$(grep -m1 -o 'INITED cov: [0-9]*' "$log" | grep -o '[0-9]*$' || true)
    cov_end=$(grep -o ' cov: [0-9]*' "$log" | tail -1 | grep -o '[0-9]*$' || true)
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || true)
    speed=$(grep -o 'stat::average_exec_per_sec: *[0-9]*' "$log" | grep -o '[0-9]*$' || true)
    found=$(comm -13 <(echo "$before") <(find "$artifacts" -type f | sort) | sed '/^$/d')
    if [ $status -eq 0 ] && [ -z "$found" ]; then
      echo "fuzz_$t: ${runs:-?} runs, ${speed:-?} exec/s, cov ${cov_start:-?} -> ${cov_end:-?}, $(find "$corpus" -type f | wc -l) inputs in $corpus"
      continue
    fi
    failed+=("$t")
    echo "fuzz_$t FAILED (exit $status); its log ($log) ends:"
    tail -n 60 "$log"
    for f in $found; do
      echo "--- input that failed: $f ($(stat -c %s "$f") bytes); rerun with $build/fuzz/fuzz_$t $f"
      head -c 2048 "$f" | od -A d -c | head -n 40
    done
  done

  if [ ${#failed[@]} -gt 0 ]; then
    echo "fuzzing failed: ${failed[*]}"
    exit 1
  fi
  echo "fuzzing passed: ${targets[*]} (${seconds} s each)"
}

main "$@"
