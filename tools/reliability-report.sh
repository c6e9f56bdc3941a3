#!/usr/bin/env bash
# reliability-report.sh: builds the tests of the debug preset, runs those that inject faults, and
# prints for each kind of fault how many cases were tried and how many passed.
# MAVO_LONG_USE_CYCLES=1000 sets the length of the test of long use (9 GB of memory). The exit
# status is 0 only if all cases passed.
set -u
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
tools/install-packages build run test package || exit 1
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
fi

build=build/debug
mkdir -p $build
{ cmake --preset debug && cmake --build --preset debug; } >$build/build.log ||
  { cat $build/build.log; exit 1; }

# A long session needs more time than a test usually has.
[ -z "${MAVO_LONG_USE_CYCLES:-}" ] || export MAVO_TEST_TIMEOUT=7200
rm -rf $build/test-results
ctest --preset debug --parallel "$(($(nproc) + 2))" --no-tests=error \
  --tests-regex "$(/usr/bin/python3 -B tools/reliability-table --programs)" \
  --output-junit test-results/ctest.xml >$build/reliability.log ||
  grep -E 'Failed|Timeout|\*\*\*' $build/reliability.log
/usr/bin/python3 -B tools/reliability-table $build
