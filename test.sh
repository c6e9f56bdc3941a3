#!/usr/bin/env bash
# test.sh: installs missing packages, builds the program and its tests for debugging and with
# sanitizers, and runs the tests of both builds. Journeys through the program take long, so they
# run only with sanitizers. The last line shows how many single tests passed and failed. The exit
# status is 0 only if all passed.
# test.sh --coverage: runs all tests in one build that measures coverage. After the number of tests,
# it prints the shares of lines and branches of src/ that ran, and the path of the report.
# test.sh --soup3: runs the tests of the server exchange with libsoup 3.
# test.sh --plain-posix: runs the tests of the files of surveys and data without the calls that
# only Linux has.
# test.sh --valgrind: runs every eighth window test under Valgrind, on all processors except
# one. MAVO_VALGRIND_EVERY=1 runs all of them, which takes hours.
set -u
cd "$(dirname "$(readlink -f "$0")")" || exit 1
roles="build run test package" presets="debug asan" tests=
# More tests than processors run in parallel, because window tests wait a lot.
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

# Uses a compiler cache if there is one. These settings allow it to handle precompiled headers.
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
fi

for preset in $presets; do
  echo "== Building $preset"
  rm -rf "build/$preset/test-results"
  cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" || continue
  find "build/$preset" -name '*.gcda' -delete # the counts of earlier runs
  echo "== Testing $preset"
  except=
  [ "$presets: $preset" != "debug asan: debug" ] || except="--label-exclude journey"
  # shellcheck disable=SC2086 # two arguments or none
  ctest --preset "${tests:-$preset}" $except --parallel "$parallel" --no-tests=error \
    --output-junit test-results/ctest.xml
done

# report_coverage: reports the code that all tests in build/coverage ran. Excludes branches that
# the compiler adds for exceptions.
report_coverage() {
  local report=build/coverage/report
  mkdir -p "$report"
  gcovr --root . --filter src/ --exclude-throw-branches --exclude-unreachable-branches \
    --html-details "$report/index.html" --txt "$report/coverage.txt" \
    --print-summary build/coverage || return
  echo "Report: $PWD/$report/index.html"
}

# report_valgrind: prints the number of test programs in which Valgrind found no error.
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
