"""Whether the pictures in the documents still match the program."""

import os
import pathlib
import tempfile
import unittest

import gi

gi.require_version("GdkPixbuf", "2.0")
from gi.repository import GdkPixbuf  # noqa: E402  the version comes first

from .pictures import NAMES, take_pictures
from .test_journeys import APPLICATION_DIR

DOCUMENTS = pathlib.Path(os.environ.get("MAVO_SCREENSHOTS", "docs/screenshots"))
VISIBLE = 48  # of 255: a smaller difference between two colours is not visible
# The share of the picture that may differ: less than a button. The icon themes of two releases
# of Debian draw arrows that make up a share of 0.0011.
TOLERANCE = 0.002


def share_that_differs(one, other):
    """Returns the share of two pictures that differs, 0 to 1; 1 if their sizes differ."""
    pictures = [GdkPixbuf.Pixbuf.new_from_file(str(path)) for path in (one, other)]
    if len({(p.get_width(), p.get_height(), p.get_n_channels()) for p in pictures}) > 1:
        return 1.0
    first, second = (picture.get_pixels() for picture in pictures)
    differing = sum(abs(a - b) > VISIBLE for a, b in zip(first, second))
    return differing / len(first)


class ShowingTheProgramInTheDocuments(unittest.TestCase):
    def test_matches_pictures_of_the_running_program(self):
        with tempfile.TemporaryDirectory(prefix="mavo-pictures-") as directory:
            take_pictures(APPLICATION_DIR, directory)
            shares = {
                name: share_that_differs(DOCUMENTS / f"{name}.png", f"{directory}/{name}.png")
                for name in NAMES.values()
            }
        print({name: f"{share:.5f}" for name, share in shares.items()})
        stale = [name for name, share in shares.items() if share > TOLERANCE]
        self.assertEqual([], stale, "tools/make-screenshots takes them again")
