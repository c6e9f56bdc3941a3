#!/usr/bin/env bash
# test.sh: installs what is missing, builds the program and its tests, once for
# debugging and once with sanitizers, and runs all tests of both. The last line
# counts the single tests; the exit status is 0 only if all passed.
# test.sh --coverage: the same, built once, to see what of src/ the tests run: after
# the count come the shares of lines and branches, and where the report of each line is.
# test.sh --soup3: the tests of all that talks to a server, with libsoup 3.
# test.sh --plain-posix: the tests of the files of surveys and data, without the calls that
# only Linux has.
# test.sh --valgrind: tests of the window under Valgrind instead, every eighth of them, on
# all processors but one; MAVO_VALGRIND_EVERY=1 takes them all, which takes hours.
set -u
cd "$(dirname "$(readlink -f "$0")")" || exit 1
roles="build run test package" presets="debug asan" tests=
# More at once than there are processors: tests of the window wait a lot.
parallel=$(($(nproc) + 2))
case "$*" in
  '') ;;
  --coverage) roles="$roles coverage" presets=coverage ;;
  --soup3) roles="$roles soup3" presets=soup3 ;;
  --plain-posix) presets=plain-posix ;;
  --valgrind)
    roles="$roles valgrind" presets=debug tests=valgrind
    parallel=$(($(nproc) > 1 ? $(nproc) - 1 : 1))
    export MAVO_TEST_TIMEOUT=7200 ;; # seconds for each program
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
  ctest --preset "${tests:-$preset}" --parallel "$parallel" --no-tests=error \
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

# report_valgrind: how many runs of test programs Valgrind had nothing to say against.
report_valgrind() {
  local results=build/debug/test-results/ctest.xml
  echo "Valgrind: $(grep -c '<testcase ' $results) runs tried," \
    "$(grep -c '<testcase .*status="run"' $results) clean"
}

# shellcheck disable=SC2086 # one argument for each build
/usr/bin/python3 -B tools/count-tests $(printf 'build/%s ' $presets)
status=$?
[ "$tests" = valgrind ] && report_valgrind
[ "$presets" = coverage ] && { report_coverage || status=1; }
exit "$status"
