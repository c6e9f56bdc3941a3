"""The desktop entry that shows a survey when the user opens its file."""

import configparser
import os
import pathlib
import shutil
import subprocess
import unittest

from startup.scratch import BUILD, ScratchTest

from .checks import APP_ID, FILE_TYPE, PROJECT, SOURCE, run_tool

ENTRY = SOURCE / f"{APP_ID}.viewer.desktop"
SURVEY = PROJECT / "tests" / "store" / "expected" / "full.xml"


class ViewerEntry(unittest.TestCase):
    def setUp(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(ENTRY, encoding="utf-8")
        self.entry = parser["Desktop Entry"]

    def test_is_valid(self):
        self.assertEqual("", run_tool("desktop-file-validate", ENTRY))

    def test_takes_surveys_and_is_in_no_menu(self):
        self.assertEqual(f"{FILE_TYPE};", self.entry["MimeType"])
        self.assertEqual("true", self.entry["NoDisplay"])


class OpenedSurvey(ScratchTest):
    """A survey that a desktop opens. A script replaces the browser."""

    def setUp(self):
        super().setUp()
        self.data = self.scratch / "share"
        applications = self.data / "applications"
        packages = self.data / "mime" / "packages"
        for directory in (applications, packages, self.scratch / "bin", self.scratch / "run"):
            directory.mkdir(parents=True)
        shutil.copy(ENTRY, applications)
        shutil.copy(SOURCE / f"{APP_ID}.mime.xml", packages / f"{APP_ID}.xml")
        run_tool("update-mime-database", self.data / "mime")
        self.shown = self.scratch / "shown"
        browser = self.scratch / "bin" / "a-browser"
        browser.write_text(f'#!/bin/sh\nprintf %s "$1" > "{self.shown}.part"\nmv "{self.shown}.part" "{self.shown}"\n')
        browser.chmod(0o755)
        (applications / "a-browser.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=Browser\nExec=a-browser %u\n"
            "MimeType=x-scheme-handler/https;\n"
        )
        run_tool("update-desktop-database", applications)
        (self.scratch / "bin" / "mavo-surveys").symlink_to(BUILD / "bin" / "mavo-surveys")
        self.environment = {
            **os.environ,
            "HOME": str(self.scratch),
            "XDG_DATA_HOME": str(self.data),
            "XDG_DATA_DIRS": str(self.scratch / "none"),
            "XDG_CONFIG_HOME": str(self.scratch / "config"),
            "XDG_RUNTIME_DIR": str(self.scratch / "run"),
            "PATH": f"{self.scratch / 'bin'}:{os.environ['PATH']}",
        }

    def open(self, path):
        """Opens a file as a double-click does. Returns the page that the browser receives."""
        subprocess.run(
            ["gio", "launch", self.data / "applications" / ENTRY.name, path],
            env=self.environment, check=False, timeout=60, capture_output=True,
        )
        for _ in range(600):
            if self.shown.exists():
                break
            subprocess.run(["sleep", "0.1"], check=True)
        return pathlib.Path(self.shown.read_text()).read_text(encoding="utf-8")

    def default(self):
        return run_tool("gio", "mime", FILE_TYPE, env=self.environment)

    def test_is_shown_by_the_viewer_and_not_by_a_text_editor(self):
        self.assertIn(ENTRY.name, self.default().splitlines()[0])

    def test_is_a_page_in_the_browser_that_only_the_user_can_read(self):
        path = self.scratch / "a survey.MAVO-Survey"
        shutil.copy(SURVEY, path)
        page = self.open(path)
        self.assertIn("<bdi>Núñez</bdi>", page)
        directory = self.scratch / "run" / "mavo-surveys"
        self.assertEqual(0o700, directory.stat().st_mode & 0o777)
        self.assertEqual(1, len(list(directory.iterdir())))
        self.open(path)
        self.assertEqual(1, len(list(directory.iterdir())))

    def test_that_is_damaged_is_shown_as_a_page_that_says_so(self):
        path = self.scratch / "damaged.MAVO-Survey"
        path.write_text("<survey")
        page = self.open(path)
        self.assertIn("This survey cannot be shown", page)
        self.assertIn("damaged.MAVO-Survey", page)
