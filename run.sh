#!/usr/bin/env bash
# run.sh [ARGS]: installs missing packages, builds the program and starts it.
# run.sh --with-test-server [ARGS]: does the same with a server on this machine and a separate
# home directory, both in build/test-server.
# run.sh --demo: needs no display. Enters a survey, uploads it to that server, and writes the
# survey and pictures of all pages to build/demo.
set -eu
top=$(dirname "$(readlink -f "$0")")

build() {
  (cd "$top" && cmake --preset "$1" >/dev/null && cmake --build --preset "$1")
}

# Two runs with a server may start at the same time; only one of them builds.
build_test_server() (
  mkdir -p "$top/build/test-server"
  exec 9<"$top/build/test-server"
  flock 9
  build test-server
)

# Asks the toolkit whether it can show a window.
has_display() {
  [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] &&
    /usr/bin/python3 -c 'import ctypes, sys
sys.exit(not ctypes.CDLL("libgtk-3.so.0").gtk_init_check(None, None))' 2>/dev/null
}

program() {
  build release
  exec "$top/build/MAVO-Survey/MacOS/mavo-survey" "$@"
}

# Uses a separate home directory, so that no survey of the user goes to the test server.
with_test_server() {
  build_test_server
  local own=$top/build/test-server/home
  mkdir -p "$own"
  export XAUTHORITY=${XAUTHORITY:-$HOME/.Xauthority}
  # shellcheck disable=SC2016 # the shell inside expands it
  exec "$top/tools/with-test-server" "$top/build/test-server" "$top/build/test-server/server" \
    env -u XDG_DATA_HOME -u XDG_CACHE_HOME -u XDG_DOCUMENTS_DIR -u XDG_CONFIG_HOME HOME="$own" \
    sh -c 'exec "$MAVO_APPLICATION_DIR/MacOS/mavo-survey" "$@"' mavo-survey "$@"
}

demo() {
  "$top/tools/install-packages" test
  build_test_server
  rm -rf "$top/build/demo"
  mkdir -p "$top/build/demo"
  cd "$top"
  # shellcheck disable=SC2016 # the shell inside expands it
  NO_AT_BRIDGE=0 MAVO_TEST_HOME=$top/build/demo/home PYTHONPATH=$top/tests \
    exec tools/with-test-server build/test-server build/demo/server \
    tests/with-home tests/with-display sh -c \
    'exec /usr/bin/python3 -B -m journeys.demo "$MAVO_APPLICATION_DIR" "$@"' demo \
    build/demo build/demo/server/uploads
}

"$top/tools/install-packages" build run
if [ "${1:-}" = --demo ]; then
  demo
elif ! has_display; then
  echo "There is no display for the window, so this runs ./run.sh --demo instead."
  demo
elif [ "${1:-}" = --with-test-server ]; then
  shift
  with_test_server "$@"
else
  program "$@"
fi
