#!/usr/bin/env bash
# test.sh: installs what is missing, builds the program and its tests, once for
# debugging and once with sanitizers, and runs all tests of both. The last line
# counts the single tests; the exit status is 0 only if all passed.
# test.sh --coverage: the same, built once, to see what of src/ the tests run: after
# the count come the shares of lines and branches, and where the report of each line is.
set -u
cd "$(dirname "$(readlink -f "$0")")" || exit 1
roles="build run test package" presets="debug asan"
case "$*" in
  '') ;;
  --coverage) roles="$roles coverage" presets=coverage ;;
  *) sed -n '2,/^set/s/^# //p' test.sh >&2; exit 2 ;;
esac
# shellcheck disable=SC2086 # one argument for each role
tools/install-packages $roles || exit 1

# A compiler cache is welcome, not required. It must be told that precompiled
# headers are safe to use.
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
fi

for preset in $presets; do
  echo "== Building $preset"
  rm -rf "build/$preset/test-results"
  cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" || continue
  find "build/$preset" -name '*.gcda' -delete # what former runs came through
  echo "== Testing $preset"
  # More at once than there are processors: tests of the window wait a lot.
  ctest --preset "$preset" --parallel "$(($(nproc) + 2))" --no-tests=error \
    --output-junit test-results/ctest.xml
done

# report_coverage: what all runs of the tests in build/coverage came through. Branches
# that the compiler adds for exceptions tell nothing of the tests.
report_coverage() {
  local report=build/coverage/report
  mkdir -p "$report"
  gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
    --html-details "$report/index.html" --txt "$report/coverage.txt" \
    --print-summary build/coverage || return
  echo "Report: $PWD/$report/index.html"
}

# shellcheck disable=SC2086 # one argument for each build
/usr/bin/python3 -B tools/count-tests $(printf 'build/%s ' $presets)
status=$?
[ "$presets" = coverage ] && { report_coverage || status=1; }
exit "$status"
