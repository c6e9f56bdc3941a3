#!/usr/bin/env bash
# test.sh: installs what is missing, builds the program and its tests, once for
# debugging and once with sanitizers, and runs all tests of both. The last line
# counts the single tests; the exit status is 0 only if all passed.
set -u
cd "$(dirname "$(readlink -f "$0")")" || exit 1
tools/install-packages build run test package || exit 1

# A compiler cache is welcome, not required. It must be told that precompiled
# headers are safe to use.
if command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_SLOPPINESS=pch_defines,time_macros
fi

presets="debug asan"
for preset in $presets; do
  echo "== Building $preset"
  rm -rf "build/$preset/test-results"
  cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" || continue
  echo "== Testing $preset"
  # More at once than there are processors: tests of the window wait a lot.
  ctest --preset "$preset" --parallel "$(($(nproc) + 2))" --no-tests=error \
    --output-junit test-results/ctest.xml
done
# shellcheck disable=SC2086 # one argument for each build
/usr/bin/python3 -B tools/count-tests $(printf 'build/%s ' $presets)
