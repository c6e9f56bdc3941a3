"""pictures APPLICATION_DIR DIRECTORY: takes the pictures that the documents show.

The steps are those of the demo, but without a server: the script moves the survey to the
directory Uploaded. The pictures do not depend on the date.
"""

import pathlib
import sys
import tempfile

from .demo import Demo
from .program import Program

# The pictures of the demo that the documents show, and the names of their files. If the demo
# takes several pictures with one name, the documents show the first one.
NAMES = {
    "Start/Open Survey": "start",
    "Member Info": "member",
    "Survey Info Part 1": "location",
    "Survey Info Part 2": "conditions",
    "Listed Species": "listed-species",
    "Unlisted Species": "unlisted-species",
    "Confirmation": "confirmation",
    "Saved surveys": "saved-surveys",
    "Uploaded": "uploaded",
}
# Without blinking, fading and scroll bars that appear with the mouse, two pictures of the same
# state are equal.
SETTINGS = """[Settings]
gtk-cursor-blink=0
gtk-enable-animations=0
gtk-overlay-scrolling=0
"""


class Pictures(Demo):
    def __init__(self, application_dir, directory, home):
        super().__init__(application_dir, directory, None)
        self.home = pathlib.Path(home)

    def run(self):
        settings = self.home / ".config" / "gtk-3.0"
        settings.mkdir(parents=True)
        (settings / "settings.ini").write_text(SETTINGS)
        with self.started() as self.program:
            self.enter_a_survey()
            path = self.save()
            self.quit()
        with self.started() as self.program:
            self.find_it_again()
            self.quit()
        path.rename(path.parent.parent / "Uploaded" / path.name)
        with self.started() as self.program:
            self.find_it_uploaded()
            self.quit()

    def started(self):
        return Program(self.application_dir, home=self.home)

    def picture_path(self, name):
        """Returns the path of a picture; None if the documents do not need another one."""
        path = self.pictures / f"{NAMES[name]}.png" if name in NAMES else None
        return path if path not in self.taken else None


def take_pictures(application_dir, directory):
    """Saves the pictures in `directory` and replaces existing ones."""
    with tempfile.TemporaryDirectory(prefix="mavo-pictures-") as home:
        Pictures(pathlib.Path(application_dir), pathlib.Path(directory), home).run()


if __name__ == "__main__":
    take_pictures(sys.argv[1], sys.argv[2])
