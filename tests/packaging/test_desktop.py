"""The menu entry, the description for software catalogues and the manual page."""

import configparser
import json
import re
import unittest
import xml.etree.ElementTree as ElementTree

from .checks import APP_ID, GENERATED, PROJECT, SOURCE, run_tool

ENTRY = SOURCE / f"{APP_ID}.desktop"
METAINFO = GENERATED / f"{APP_ID}.metainfo.xml"
MANUAL = GENERATED / "mavo-survey.1"


class MenuEntry(unittest.TestCase):
    def setUp(self):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(ENTRY, encoding="utf-8")
        self.entry = parser["Desktop Entry"]

    def test_is_valid(self):
        self.assertEqual("", run_tool("desktop-file-validate", ENTRY))

    def test_passes_no_file_to_the_program(self):
        # With a MimeType, the toolkit would add the file to the command of Exec.
        self.assertEqual("mavo-survey", self.entry["Exec"])
        self.assertNotIn("MimeType", self.entry)

    def test_shows_the_icon_of_the_application(self):
        self.assertEqual(APP_ID, self.entry["Icon"])


# Accepted remarks of the validator. The program's identifier has hyphens, and releases of the
# validator before 1.0 do not know the element `developer`.
REMARKS = {f"cid-contains-hyphen {APP_ID}", "unknown-tag developer"}


class Catalogue(unittest.TestCase):
    def setUp(self):
        self.component = ElementTree.parse(METAINFO).getroot()

    def test_is_valid(self):
        output = run_tool("appstreamcli", "validate", "--pedantic", "--no-net", METAINFO)
        remarks = re.findall(r"^[EWIP]: \S+ (.*)$", output, re.MULTILINE)
        self.assertEqual(set(), set(remarks) - REMARKS)

    def test_has_a_summary_that_fits_into_a_list(self):
        summary = self.component.findtext("summary")
        self.assertLessEqual(len(summary), 35)
        self.assertFalse(summary.endswith("."))

    def test_names_its_developer(self):
        developer = self.component.find("developer")
        self.assertRegex(developer.get("id"), r"^[a-z]+(\.[a-z]+)+$")
        self.assertEqual("The MAVO-Survey developers", developer.findtext("name"))

    def test_links_to_the_homepage_the_bug_tracker_the_sources_and_a_contact(self):
        urls = {url.get("type"): url.text for url in self.component.findall("url")}
        self.assertEqual({"homepage", "bugtracker", "vcs-browser", "contact"}, set(urls))
        for url in urls.values():
            self.assertRegex(url, r"^https://[a-z.]+/")

    def test_has_a_colour_for_light_and_for_dark_themes(self):
        colours = self.component.findall("branding/color[@type='primary']")
        self.assertEqual(["light", "dark"], [c.get("scheme_preference") for c in colours])
        for colour in colours:
            self.assertRegex(colour.text, r"^#[0-9a-f]{6}$")

    def test_describes_the_menu_entry(self):
        self.assertEqual(APP_ID, self.component.findtext("id"))
        self.assertEqual(ENTRY.name, self.component.findtext("launchable"))

    def test_has_captioned_pictures_that_exist(self):
        pictures = self.component.findall("screenshots/screenshot")
        self.assertTrue(pictures)
        for picture in pictures:
            name = picture.findtext("image").rsplit("/", 1)[1]
            with self.subTest(picture=name):
                self.assertRegex(picture.findtext("caption"), r"^[A-Z].*[a-z]$")
                self.assertTrue((PROJECT / "docs" / "screenshots" / name).exists())


class Release(unittest.TestCase):
    """The newest release, which several files name."""

    def setUp(self):
        lists = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        self.version = re.search(r"project\(.* VERSION ([\d.]+)", lists).group(1)

    def test_is_the_first_one_in_the_catalogue(self):
        release = ElementTree.parse(METAINFO).getroot().find("releases/release")
        self.assertEqual(self.version, release.get("version"))

    def test_is_the_first_one_in_the_changelog_of_the_package(self):
        changelog = (SOURCE / "debian" / "changelog").read_text(encoding="utf-8")
        self.assertTrue(changelog.startswith(f"mavo-survey ({self.version}-1) "))


class Manual(unittest.TestCase):
    def test_is_well_formed(self):
        self.assertEqual("", run_tool("mandoc", "-T", "lint", "-W", "warning", MANUAL))

    def test_names_every_exit_status(self):
        section = run_tool("mandoc", "-T", "ascii", MANUAL).split("EXIT STATUS")[-1]
        section = re.sub(".\b", "", section).split("EXAMPLES")[0]
        statuses = re.findall(r"^     (\d+) ", section, re.MULTILINE)
        self.assertEqual(["0", "1", "2", "7", "45", "47"], statuses)

    def test_describes_the_options_that_the_command_lists(self):
        help_text = run_tool(GENERATED / "mavo-survey", "--help")
        listed = re.findall(r"^  (-\S+)  ", help_text, re.MULTILINE)
        self.assertEqual(["-dLEVEL", "--help", "--version", "--help-gtk"], listed)
        section = re.sub(".\b", "", run_tool("mandoc", "-T", "utf8", MANUAL))
        section = section.split("OPTIONS")[1].split("ENVIRONMENT")[0]
        described = re.findall(r"(?<!\S)-[-\w]+", section)
        self.assertEqual([], [name for name in listed if name.lower() not in described])


class Licence(unittest.TestCase):
    def test_is_the_same_in_the_package(self):
        words = (PROJECT / "LICENSE").read_text(encoding="utf-8").split("\n\n", 2)[2].split()
        package = (SOURCE / "debian" / "copyright").read_text(encoding="utf-8")
        self.assertEqual(words, package.split("License: Expat\n")[-1].replace("\n .\n", "\n").split())


class Flatpak(unittest.TestCase):
    """The manifest of the Flatpak. No test builds it."""

    def setUp(self):
        text = (SOURCE / "flatpak" / f"{APP_ID}.json").read_text(encoding="utf-8")
        self.manifest = json.loads(text)

    def test_describes_this_application(self):
        self.assertEqual(APP_ID, self.manifest["id"])
        self.assertEqual("mavo-survey", self.manifest["command"])
        own = self.manifest["modules"][-1]
        self.assertTrue((SOURCE / "flatpak" / own["sources"][0]["path"] / "CMakeLists.txt").exists())

    def test_says_that_it_is_untried(self):
        self.assertIn("Untried", self.manifest["x-state"])
        readme = (SOURCE / "flatpak" / "README.md").read_text(encoding="utf-8")
        self.assertIn("untried", readme)
