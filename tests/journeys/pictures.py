"""pictures APPLICATION_DIR DIRECTORY: the pictures that the documents show.

They are taken on the road of the demo, but without a server: a survey counts as
uploaded once it lies in that directory. Nothing in them depends on the day.
"""

import pathlib
import sys
import tempfile

from .demo import Demo
from .program import Program

# The first picture with such a name of the demo's goes to the documents.
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
# Nothing blinks or fades, and scroll bars do not come and go with the mouse, so that two
# pictures of the same are alike.
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
        """Where a picture goes; None if the documents do not show it."""
        path = self.pictures / f"{NAMES[name]}.png" if name in NAMES else None
        return path if path not in self.taken else None


def take_pictures(application_dir, directory):
    """Leaves the pictures in `directory`, those that were there replaced."""
    with tempfile.TemporaryDirectory(prefix="mavo-pictures-") as home:
        Pictures(pathlib.Path(application_dir), pathlib.Path(directory), home).run()


if __name__ == "__main__":
    take_pictures(sys.argv[1], sys.argv[2])
