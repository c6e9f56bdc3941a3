"""The menu entry, the description for software catalogues and the manual page."""

import configparser
import re
import unittest
import xml.etree.ElementTree as ElementTree

from .checks import APP_ID, MADE, PROJECT, SOURCE, said

ENTRY = SOURCE / f"{APP_ID}.desktop"
METAINFO = MADE / f"{APP_ID}.metainfo.xml"
MANUAL = MADE / "mavo-survey.1"


class MenuEntry(unittest.TestCase):
    def setUp(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(ENTRY, encoding="utf-8")
        self.entry = parser["Desktop Entry"]

    def test_is_valid(self):
        self.assertEqual("", said("desktop-file-validate", ENTRY))

    def test_hands_no_file_to_the_program(self):
        # A claimed type would do so too: the toolkit adds the file by itself.
        self.assertEqual("mavo-survey", self.entry["Exec"])
        self.assertNotIn("MimeType", self.entry)

    def test_shows_the_icon_of_the_application(self):
        self.assertEqual(APP_ID, self.entry["Icon"])


class Catalogue(unittest.TestCase):
    def setUp(self):
        self.component = ElementTree.parse(METAINFO).getroot()

    def test_is_valid(self):
        said("appstreamcli", "validate", "--pedantic", "--no-net", METAINFO)

    def test_describes_the_menu_entry(self):
        self.assertEqual(APP_ID, self.component.findtext("id"))
        self.assertEqual(ENTRY.name, self.component.findtext("launchable"))

    def test_has_captioned_pictures_that_exist(self):
        pictures = self.component.findall("screenshots/screenshot")
        self.assertTrue(pictures)
        for picture in pictures:
            name = picture.findtext("image").rsplit("/", 1)[1]
            with self.subTest(picture=name):
                self.assertTrue(picture.findtext("caption"))
                self.assertTrue((PROJECT / "docs" / "screenshots" / name).exists())


class Release(unittest.TestCase):
    """The newest release, which is told in several places."""

    def setUp(self):
        lists = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        self.version = re.search(r"project\(.* VERSION ([\d.]+)", lists).group(1)

    def test_stands_first_in_the_catalogue(self):
        release = ElementTree.parse(METAINFO).getroot().find("releases/release")
        self.assertEqual(self.version, release.get("version"))

    def test_stands_first_in_the_changelog_of_the_package(self):
        changelog = (MADE / "debian" / "changelog").read_text(encoding="utf-8")
        self.assertTrue(changelog.startswith(f"mavo-survey ({self.version}-1) "))


class Manual(unittest.TestCase):
    def test_is_well_formed(self):
        self.assertEqual("", said("mandoc", "-T", "lint", "-W", "warning", MANUAL))

    def test_names_every_exit_status(self):
        section = said("mandoc", "-T", "ascii", MANUAL).split("EXIT STATUS")[-1]
        section = re.sub(".\b", "", section).split("EXAMPLES")[0]
        statuses = re.findall(r"^     (\d+) ", section, re.MULTILINE)
        self.assertEqual(["0", "1", "2", "7", "45", "47"], statuses)

    def test_describes_the_options_that_the_command_lists(self):
        listed = re.findall(r"^  (-\S+)  ", said(MADE / "mavo-survey", "--help"), re.MULTILINE)
        self.assertEqual(["-dLEVEL", "--help", "--version", "--help-gtk"], listed)
        section = re.sub(".\b", "", said("mandoc", "-T", "utf8", MANUAL))
        section = section.split("OPTIONS")[1].split("ENVIRONMENT")[0]
        described = re.findall(r"(?<!\S)-[-\w]+", section)
        self.assertEqual([], [name for name in listed if name.lower() not in described])


class Licence(unittest.TestCase):
    def test_is_the_same_in_the_package(self):
        words = (PROJECT / "LICENSE").read_text(encoding="utf-8").split("\n\n", 2)[2].split()
        package = (MADE / "debian" / "copyright").read_text(encoding="utf-8")
        self.assertEqual(words, package.split("License: Expat\n")[-1].replace("\n .\n", "\n").split())
