"""trial: enters and saves a survey with the program that the package installed.

Uses the home directory and the display of this process.
"""

import os
import pathlib

from journeys import entry
from journeys.program import Program
from journeys.reference import a_place

APPLICATION_DIR = pathlib.Path("/usr/share/mavo-survey")


def main():
    with Program(APPLICATION_DIR, os.environ["HOME"], executable="/usr/bin/mavo-survey") as program:
        entry.enter_all(program, a_place(APPLICATION_DIR / "data-files"))
        program.window().find("push button", "Save For Later", lambda b: b.is_shown).click()
        program.answer("Survey saved to", "OK")
        program.activate_menu("File", "Quit")
        print(f"The program ended with status {program.wait_for_end()}.")
        (survey,) = program.saved_surveys()
        print(f"It saved {survey}")


if __name__ == "__main__":
    main()
