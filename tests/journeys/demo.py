"""demo APPLICATION_DIR PICTURES: a survey entered and saved through the real window.

Leaves a picture of each panel and of the dialog after saving, and prints where
the survey is. The survey store lies in the home directory of this process.
"""

import os
import pathlib
import sys

from . import entry
from .program import Program
from .reference import a_place
from .screen import take_picture, wait_until_still


def panel_picture(program, pictures, number, tab):
    """Turns to a panel and takes its picture once it has been drawn."""
    program.open_panel(tab)
    wait_until_still()
    name = f"{number}-{tab.lower().replace('/', '-').replace(' ', '-')}.png"
    take_picture(pictures / name, program.window())


def run(application_dir, pictures):
    place = a_place(application_dir / "data-files")
    with Program(application_dir, home=os.environ["HOME"]) as program:
        panel_picture(program, pictures, 1, "Start/Open Survey")
        entry.enter_member(program)
        panel_picture(program, pictures, 2, "Member Info")
        entry.enter_place_and_date(program, place)
        entry.find_zone(program, place)
        panel_picture(program, pictures, 3, "Survey Info Part 1")
        entry.enter_conditions(program, place)
        panel_picture(program, pictures, 4, "Survey Info Part 2")
        entry.mark_species(program, place)
        panel_picture(program, pictures, 5, "Listed Species")
        panel_picture(program, pictures, 6, "Unlisted Species")
        panel_picture(program, pictures, 7, "Confirmation")
        program.window().find("push button", "Save For Later").click()
        program.message("Survey saved to")
        wait_until_still()
        take_picture(pictures / "8-saved.png", program.window())
        program.answer("Survey saved to", "OK")
        program.activate_menu("File", "Quit")
        program.wait_for_end()
        (path,) = program.saved_surveys()
        return path


if __name__ == "__main__":
    pictures_dir = pathlib.Path(sys.argv[2])
    survey = run(pathlib.Path(sys.argv[1]), pictures_dir)
    for picture in sorted(pictures_dir.glob("*.png")):
        print(f"Picture: {picture}")
    print(f"Survey: {survey}")
