"""started COMMAND...: a program that a script starts, seen on the screen and closed.

The script may start it in a process of its own: it is found by its name.
"""

import sys

from .program import Program
from .screen import applications


class Started(Program):
    def application(self):
        return next((found for found in applications() if found.name == "mavo-survey"), None)


if __name__ == "__main__":
    with Started(".", executable=sys.argv[1], arguments=sys.argv[2:]) as program:
        print(f"The window is {program.window().name!r}.")
        program.activate_menu("File", "Quit")
        status = program.wait_for_end()
        print(program.output())
    sys.exit(status)
