"""The type of survey files, as a desktop sees it."""

import os
import shutil

from startup.scratch import ScratchTest

from .checks import APP_ID, FILE_TYPE, PROJECT, SOURCE, run_tool

TYPES = SOURCE / f"{APP_ID}.mime.xml"
SURVEY = (PROJECT / "tests" / "store" / "expected" / "full.xml").read_bytes()
OLD_SURVEY = SURVEY.replace(b"<MAVO-Survey", b"<MAVO_Fish_Survey").replace(
    b"</MAVO-Survey", b"</MAVO_Fish_Survey"
)


class FileType(ScratchTest):
    def setUp(self):
        super().setUp()
        packages = self.scratch / "mime" / "packages"
        packages.mkdir(parents=True)
        shutil.copy(TYPES, packages / f"{APP_ID}.xml")
        run_tool("update-mime-database", self.scratch / "mime")

    def attribute_of(self, name, contents, attribute="standard::content-type"):
        """Returns what the desktop reports about a file with this name and these contents."""
        path = self.scratch / name
        path.write_bytes(contents)
        environment = {**os.environ, "XDG_DATA_HOME": str(self.scratch)}
        output = run_tool("gio", "info", "-a", attribute, path, env=environment)
        return output.split(f"{attribute}: ")[1].splitlines()[0]

    def test_is_described_by_well_formed_xml(self):
        run_tool("xmllint", "--noout", "--nonet", TYPES)

    def test_is_recognized_by_extension_and_by_root_element(self):
        surveys = (
            ("1234-PNW-20210630.MAVO-Survey", SURVEY),
            ("1234-PNW-20210630.MAVO_survey", OLD_SURVEY),
            ("old root.MAVO-Survey", OLD_SURVEY),
            ("new root.MAVO_survey", SURVEY),
            ("damaged.MAVO-Survey", b"not XML"),
            ("other case.mavo-survey", SURVEY),
            ("no extension", SURVEY),
            ("no extension, old root", OLD_SURVEY),
            ("unknown.extension", SURVEY),
        )
        for name, contents in surveys:
            with self.subTest(name=name):
                self.assertEqual(FILE_TYPE, self.attribute_of(name, contents))

    def test_is_not_that_of_other_files(self):
        others = (
            ("other root", b'<?xml version="1.0"?>\n<survey/>\n', "application/xml"),
            ("other start tag", SURVEY.replace(b"<MAVO-", b"<XAVO-"), "application/xml"),
            ("letter.txt", b"<MAVO-Survey", "text/plain"),
        )
        for name, contents, expected in others:
            with self.subTest(name=name):
                self.assertEqual(expected, self.attribute_of(name, contents))

    def test_is_registered_for_both_root_elements(self):
        roots = (self.scratch / "mime" / "XMLnamespaces").read_text(encoding="utf-8")
        self.assertEqual(
            [f" MAVO-Survey {FILE_TYPE}", f" MAVO_Fish_Survey {FILE_TYPE}"],
            sorted(roots.splitlines()),
        )

    def test_has_a_separate_icon(self):
        icons = self.attribute_of("one.MAVO-Survey", SURVEY, "standard::icon").split(", ")
        self.assertEqual("application-vnd.mavo.survey+xml", icons[0])
