#!/bin/sh
# The launch script beside the executable. The program starts it if GTK_PATH is not set:
#   mavo-survey-env-setup.sh --exec-name EXECUTABLE [ARGUMENT...]
# It sets the program's environment, makes the application directory the working directory and
# replaces itself with the executable.
if [ "$#" -lt 2 ] || [ "$1" != --exec-name ]; then
  echo "usage: $0 --exec-name EXECUTABLE [ARGUMENT...]" >&2
  exit 2
fi
executable=$2
shift 2

case $executable in
  /*) ;;
  *) executable=$(pwd)/$executable ;;
esac
macos_dir=${executable%/*}
application_dir=${macos_dir%/*}

# The toolkit first looks here for additional modules; the program has none. The variable tells
# the program that this script has run.
GTK_PATH=${GTK_PATH:-$application_dir/gtk-3.0}
export GTK_PATH

cd "$application_dir/" || exit 1
exec "$executable" "$@"
