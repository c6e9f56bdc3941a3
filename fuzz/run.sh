#!/usr/bin/env bash
# run.sh SECONDS [TARGET...]: builds the fuzz targets with Clang and runs each target, or the given
# ones, for that time, one after the other on one processor. Prints a line for each. The exit
# status is 0 only if none crashed. Inputs that crash are in build/fuzz/crashes, and inputs that
# reach new code are in build/fuzz/found.
# run.sh --keep: adds the inputs of build/fuzz/found that reach new code to fuzz/corpus.
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
if ! [[ "${1:-}" =~ ^([0-9]+|--keep)$ ]]; then
  sed -n '2,/^set/s/^# //p' fuzz/run.sh >&2
  exit 2
fi
mode=$1
shift
tools/install-packages build test fuzz || exit 1
cmake --preset fuzz >/dev/null && cmake --build --preset fuzz >build/fuzz/build.log ||
  { cat build/fuzz/build.log; exit 1; }

out=$PWD/build/fuzz
mkdir -p "$out/crashes" "$out/logs" "$out/found"
# The targets use temporary files, which would take most of the time on a disk.
if [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
export ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 UBSAN_OPTIONS=print_stacktrace=1

# statistic LOG NAME: prints a statistic of libFuzzer, or ? if libFuzzer did not print it.
statistic() {
  local value
  value=$(sed -n "s/^stat::$2: *//p" "$1")
  echo "${value:-?}"
}

# fuzz TARGET: runs it and prints its line; fails if it crashed.
fuzz() {
  local found=$out/found/$1 log=$out/logs/$1.log status=0 crashes
  mkdir -p "$found"
  "$out/fuzz/fuzz-$1" -max_total_time="$mode" -timeout=10 -max_len=4096 -close_fd_mask=3 \
    -dict="fuzz/dictionaries/$1.dict" -artifact_prefix="$out/crashes/$1-" \
    -print_final_stats=1 "$found" "fuzz/corpus/$1" >"$log" 2>&1 || status=1
  crashes=$(grep -c 'Test unit written to' "$log")
  printf '%-16s %12s executions %7s new finds %3s crashes\n' "$1" \
    "$(statistic "$log" number_of_executed_units)" "$(statistic "$log" new_units_added)" "$crashes"
  if [ "$status" -ne 0 ]; then grep -m 1 -E 'ERROR|runtime error|does not hold' "$log"; fi
  return "$status"
}

keep() {
  [ -d "$out/found/$1" ] || return 0
  "$out/fuzz/fuzz-$1" -set_cover_merge=1 -use_counters=0 -timeout=10 -close_fd_mask=3 "fuzz/corpus/$1" \
    "$out/found/$1" >"$out/logs/$1-keep.log" 2>&1 || return 1
  printf '%-16s %5s files kept\n' "$1" "$(find "fuzz/corpus/$1" -type f | wc -l)"
}

action=fuzz
[ "$mode" = --keep ] && action=keep
[ $# -gt 0 ] || set -- $(ls fuzz/corpus)
failed=0
for target; do
  "$action" "$target" || failed=1
done
exit "$failed"
