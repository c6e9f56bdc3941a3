#!/usr/bin/env bash
# run.sh [ARGS]: installs what is missing, builds the program and starts it.
# run.sh --demo: without a display of your own; enters a survey by itself and
# leaves it and a picture of each panel under build/demo.
set -eu
top=$(dirname "$(readlink -f "$0")")

build() {
  (cd "$top" && cmake --preset release >/dev/null && cmake --build --preset release)
}

# Asks the toolkit itself whether it could show a window.
has_display() {
  [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] &&
    /usr/bin/python3 -c 'import ctypes, sys
sys.exit(not ctypes.CDLL("libgtk-3.so.0").gtk_init_check(None, None))' 2>/dev/null
}

demo() {
  "$top/tools/install-packages" test
  rm -rf "$top/build/demo"
  mkdir -p "$top/build/demo"
  cd "$top"
  NO_AT_BRIDGE=0 MAVO_TEST_HOME=$top/build/demo/home PYTHONPATH=$top/tests \
    exec tests/with-home tests/with-display \
    /usr/bin/python3 -B -m journeys.demo build/MAVO-Survey build/demo
}

"$top/tools/install-packages" build run
build
if [ "${1:-}" = --demo ]; then
  demo
elif has_display; then
  exec "$top/build/MAVO-Survey/MacOS/mavo-survey" "$@"
else
  echo "There is no display for the window, so this runs ./run.sh --demo instead."
  demo
fi
