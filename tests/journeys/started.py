"""started COMMAND...: runs a script that starts the program, waits for its window and quits it.

The script may start the program in a child process, so its name identifies it.
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
