"""A scratch directory for each test. Its name has blanks, as names of users' directories may have."""

import os
import pathlib
import shutil
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("MAVO_BUILD", PROJECT / "build" / "debug"))


class ScratchTest(unittest.TestCase):
    def setUp(self):
        self.scratch = pathlib.Path(tempfile.mkdtemp(prefix="mavo start  ")).resolve()
        self.addCleanup(shutil.rmtree, self.scratch)


def environment(**changes):
    """Returns this process's environment with changes, and without a display and GTK_PATH.

    A change to None removes a variable.
    """
    changed = {"DISPLAY": None, "WAYLAND_DISPLAY": None, "GTK_PATH": None, **changes}
    kept = {name: value for name, value in os.environ.items() if name not in changed}
    return kept | {name: str(value) for name, value in changed.items() if value is not None}
