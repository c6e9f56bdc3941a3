"""demo APPLICATION_DIR PICTURES UPLOADS: enters a survey in the real window, saves it, opens it
again and uploads it.

Saves a numbered picture of each step in PICTURES and prints the path of the survey. The
survey store is in the home directory of this process. The server at the program's address
must store surveys in UPLOADS.
"""

import os
import pathlib
import sys

from . import entry
from .entry import tree_in
from .program import Program
from .reference import a_place
from .screen import move_pointer_away, press_key, take_picture, wait_until_still
from .waiting import wait_for


class Demo:
    def __init__(self, application_dir, pictures, uploads):
        self.application_dir = application_dir
        self.pictures = pictures
        self.uploads = uploads
        self.place = a_place(application_dir / "data-files")
        self.taken = []
        self.program = None

    def picture(self, name):
        """Takes a picture of the window once it has been drawn."""
        path = self.picture_path(name)
        if path:
            move_pointer_away()
            wait_until_still()
            take_picture(path, self.program.window())
            self.taken.append(path)

    def picture_path(self, name):
        """Returns the path of the next picture, with its number."""
        slug = name.lower().replace("/", "-").replace(" ", "-")
        return self.pictures / f"{len(self.taken) + 1:02d}-{slug}.png"

    def panel_picture(self, tab):
        self.program.open_panel(tab)
        self.picture(tab)

    def press(self, button):
        self.program.window().find("push button", button, lambda b: b.is_shown).click()

    def run(self):
        """Takes all steps and returns the path of the uploaded survey."""
        home = os.environ["HOME"]
        with Program(self.application_dir, home=home) as self.program:
            self.enter_a_survey()
            path = self.save()
            self.quit()
        with Program(self.application_dir, home=home) as self.program:
            self.see_what_is_missing()
            self.find_it_again()
            self.upload_it()
            path = self.see_it_uploaded(path)
            self.quit()
        return path

    def enter_a_survey(self):
        self.panel_picture("Start/Open Survey")
        entry.enter_member(self.program)
        self.panel_picture("Member Info")
        entry.enter_place_and_date(self.program, self.place)
        entry.find_zone(self.program, self.place, self.place.zone_name.lower())
        self.panel_picture("Survey Info Part 1")
        entry.enter_conditions(self.program, self.place)
        self.panel_picture("Survey Info Part 2")
        entry.mark_species(self.program, self.place)
        self.panel_picture("Listed Species")
        self.add_an_unlisted_species()
        self.picture("Unlisted Species")
        self.panel_picture("Confirmation")

    def add_an_unlisted_species(self):
        page = self.program.open_panel("Unlisted Species")
        page.find("text", "Search for a species").set_text("shark")
        tree = tree_in(page, "Matching species")
        row = wait_for("a shark is found", lambda: next((r for r in tree.rows() if r[-1].text), None))
        label = self.place.abundances[0][1]
        entry.mark_by_click(self.program, tree, int(row[0].text.rstrip(":")), label)
        next(tree.rows())[0].scroll_to()  # the click may have scrolled the list

    def save(self):
        self.press("Save For Later")
        self.program.message("Survey saved to")
        self.picture("Survey saved")
        self.program.answer("Survey saved to", "OK")
        (path,) = self.program.saved_surveys()
        return path

    def quit(self):
        self.program.activate_menu("File", "Quit")
        self.program.wait_for_end()

    def see_what_is_missing(self):
        self.panel_picture("Confirmation")

    def find_it_again(self):
        self.choose_saved_survey(1)  # after the heading In Progress
        self.picture("Saved surveys")
        self.press("Edit")
        wait_for("it is open", lambda: self.program.panel_shown().name == "Confirmation")
        self.picture("Opened again")

    def choose_saved_survey(self, index):
        """Clicks the row of that index in the tree of saved surveys."""
        tree = tree_in(self.program.open_panel("Start/Open Survey"), "Saved surveys")
        row = wait_for("it is listed", lambda: next(iter(list(tree.rows())[index:]), None))
        row[0].scroll_to()
        row[0].click()

    def upload_it(self):
        self.press("Upload")
        self.program.message("Survey uploaded successfully.")
        self.picture("Survey uploaded")
        self.program.answer("Survey uploaded successfully.", "OK", other_follows=True)
        self.program.answer("You are running the best available version", "OK")

    def find_it_uploaded(self):
        tree = tree_in(self.program.open_panel("Start/Open Survey"), "Saved surveys")
        tree.find_row("Uploaded")[0].click()
        press_key("plus")
        self.choose_saved_survey(3)  # after the headings of the three states
        self.picture("Uploaded")

    def see_it_uploaded(self, path):
        """Opens the uploaded survey and returns its path."""
        self.find_it_uploaded()
        self.press("View")
        wait_for("it is open", lambda: self.program.panel_shown().name == "Confirmation")
        self.panel_picture("Survey Info Part 1")

        (uploaded,) = self.program.saved_surveys()
        assert uploaded == path.parent.parent / "Uploaded" / path.name, uploaded
        assert (self.uploads / path.name).read_bytes() == uploaded.read_bytes()
        return uploaded


if __name__ == "__main__":
    pictures_dir = pathlib.Path(sys.argv[2])
    uploads_dir = pathlib.Path(sys.argv[3])
    survey = Demo(pathlib.Path(sys.argv[1]), pictures_dir, uploads_dir).run()
    for picture in sorted(pictures_dir.glob("*.png")):
        print(f"Picture: {picture}")
    print(f"Survey: {survey}")
    print(f"On the server: {uploads_dir.resolve() / survey.name}")
