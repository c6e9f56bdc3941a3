"""Tests that the README is short, begins with the parts for divers and names what exists."""

import pathlib
import re
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
README = (PROJECT / "README.md").read_text(encoding="utf-8")
SECURITY = (PROJECT / "SECURITY.md").read_text(encoding="utf-8")


class Readme(unittest.TestCase):
    def test_fits_two_screens(self):
        self.assertLessEqual(len(README.splitlines()), 90)

    def test_begins_with_the_parts_for_divers(self):
        self.assertEqual(
            [
                "Install",
                "Two commands for developers",
                "Platforms",
                "Bugs and security problems",
                "Documents",
            ],
            re.findall(r"^## (.*)$", README, re.MULTILINE),
        )

    def test_names_commands_and_files_that_exist(self):
        pattern = r"(?<![\w/-])(?:\./(?:run|test)\.sh|(?:tools|src|packaging)/[\w./-]*\w)"
        for document in (README, SECURITY):
            names = set(re.findall(pattern, document))
            self.assertEqual([], [name for name in names if not (PROJECT / name).exists()])

    def test_names_settings_and_presets_that_exist(self):
        lists = "".join(
            (PROJECT / name).read_text(encoding="utf-8")
            for name in ("CMakeLists.txt", "cmake/http-library.cmake")
        )
        presets = (PROJECT / "CMakePresets.json").read_text(encoding="utf-8")
        for setting in re.findall(r"-D(MAVO_\w+)=", README):
            self.assertRegex(lists, rf"(set|option)\({setting} ")
        (others,) = re.findall(r"# also ([\w, -]+)$", README, re.MULTILINE)
        for preset in ("release", *others.split(", ")):
            self.assertIn(f'"name": "{preset}"', presets)

    def test_contains_the_support_address(self):
        lists = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        address = re.search(r'MAVO_SUPPORT_ADDRESS "([^"]+)"', lists).group(1)
        for document in (README, SECURITY):
            self.assertIn(address, document)
