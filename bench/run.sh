#!/usr/bin/env bash
# bench/run.sh [PROGRAM...]: builds the release program and the benchmarks, measures, and prints
# one table: the job, the size of the data, the times of this program and of the reference, the
# ratio, and the goal for the ratio. PROGRAM is a part to measure, such as "documents"; by default
# all parts. The exit status is 0 if each measurement did its work, whatever time it took.
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
tools/install-packages build run test || exit 1
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
fi

build=$PWD/build/bench
mkdir -p "$build"
{ cmake --preset bench && cmake --build --preset bench; } >"$build/build.log" ||
  { cat "$build/build.log"; exit 1; }
export MAVO_BENCH_DATA=$build/bench-data MAVO_TEST_TIMEOUT=${MAVO_TEST_TIMEOUT:-7200}
bench/make-data "$MAVO_BENCH_DATA" || exit 1

[ $# -gt 0 ] || set -- $(cd "$build/bench" && find . -name 'bench-*' -type f -executable |
  sed 's/.*bench-//' | sort)
rm -rf "$build/results"
mkdir "$build/results"
status=0
# The program and the reference alternate, so that other load affects both.
for program; do
  echo "Measuring $program" >&2
  tests/with-home tests/with-display "$build/bench/bench-$program" \
    --benchmark_repetitions="${MAVO_BENCH_REPETITIONS:-7}" --benchmark_min_time=0.05 \
    --benchmark_enable_random_interleaving=true --benchmark_out_format=json \
    --benchmark_out="$build/results/$program.json" >"$build/results/$program.log" 2>&1 ||
    { echo "bench-$program failed; the end of $build/results/$program.log:" >&2
      tail -5 "$build/results/$program.log" >&2; status=1; }
done
echo "$(LC_ALL=C lscpu | sed -n 's/^Model name: *//p'), $(nproc) cores;" \
  "$(c++ --version | head -1); Debian $(cat /etc/debian_version)"
echo
/usr/bin/python3 -B bench/table "$build/results" || status=1
exit "$status"
