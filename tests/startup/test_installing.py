"""Tests of the application directory of the build and of the installed files."""

import os
import pathlib
import plistlib
import re
import subprocess
import time
import unittest
from datetime import datetime
from xml.etree import ElementTree

from .scratch import BUILD, PROJECT, ScratchTest, environment

APPLICATION_DIR = BUILD / "MAVO-Survey"


def files_below(directory):
    """Returns {relative path: (contents, whether it can be executed)} of all files."""
    return {
        path.relative_to(directory): (path.read_bytes(), os.access(path, os.X_OK))
        for path in directory.rglob("*")
        if path.is_file()
    }


def without_definition(files):
    """Returns all files except the definition of the window, which has the addresses of the build."""
    return {path: file for path, file in files.items() if path.name != "survey-ui.glade"}


class ApplicationDirectory(ScratchTest):
    def test_contains_program_script_resources_and_data(self):
        names = {path.parts[0] for path in files_below(APPLICATION_DIR)}
        self.assertEqual({"Info.plist", "MacOS", "resources", "data-files"}, names)
        for folder in ("resources", "data-files"):
            files = files_below(APPLICATION_DIR / folder)
            self.assertEqual(
                without_definition(files_below(PROJECT / folder)), without_definition(files)
            )
        programs = files_below(APPLICATION_DIR / "MacOS")
        self.assertEqual(
            ["mavo-survey", "mavo-survey-env-setup.sh"], sorted(str(path) for path in programs)
        )
        self.assertTrue(all(executable for _, executable in programs.values()))


class Bundle(unittest.TestCase):
    """The application directory as the contents of a bundle of macOS."""

    def setUp(self):
        self.info = plistlib.loads((APPLICATION_DIR / "Info.plist").read_bytes())

    def test_has_the_identifier_of_the_program(self):
        self.assertEqual("org.mavo.offline-survey-entry", self.info["CFBundleIdentifier"])
        self.assertEqual("APPL", self.info["CFBundlePackageType"])

    def test_has_the_version_of_the_program(self):
        lists = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        version = re.search(r"project\(.* VERSION ([\d.]+)", lists).group(1)
        self.assertEqual(version, self.info["CFBundleShortVersionString"])
        self.assertEqual(version, self.info["CFBundleVersion"])

    def test_starts_the_program(self):
        program = APPLICATION_DIR / "MacOS" / self.info["CFBundleExecutable"]
        self.assertTrue(os.access(program, os.X_OK), program)

    def test_contains_the_icons_that_it_names(self):
        (document,) = self.info["CFBundleDocumentTypes"]
        for name in (self.info["CFBundleIconFile"], document["CFBundleTypeIconFile"]):
            with self.subTest(name=name):
                # File systems of macOS ignore case by default, so Resources is the same directory.
                icon = (APPLICATION_DIR / "resources" / name).read_bytes()
                self.assertEqual(b"icns" + len(icon).to_bytes(4, "big"), icon[:8])
                self.assertEqual([16, 32, 64, 128, 256, 512], list(widths_in(icon)))

    def test_declares_the_type_of_surveys_but_does_not_open_them(self):
        (document,) = self.info["CFBundleDocumentTypes"]
        (declared,) = self.info["UTExportedTypeDeclarations"]
        self.assertEqual([declared["UTTypeIdentifier"]], document["LSItemContentTypes"])
        self.assertEqual("None", document["CFBundleTypeRole"])
        desktop = PROJECT / "packaging" / "org.mavo.offline-survey-entry.mime.xml"
        patterns = re.findall(r'glob pattern="\*\.([^"]+)"', desktop.read_text(encoding="utf-8"))
        tags = declared["UTTypeTagSpecification"]
        self.assertEqual(patterns, tags["public.filename-extension"])
        self.assertEqual(["application/vnd.mavo.survey+xml"], tags["public.mime-type"])


def widths_in(icon):
    """Yields the widths of the PNGs in an icon of macOS."""
    place = 8
    while place < len(icon):
        length = int.from_bytes(icon[place + 4 : place + 8], "big")
        yield int.from_bytes(icon[place + 24 : place + 28], "big")
        place += length


class Installing(ScratchTest):
    def expect_installed(self, prefix):
        installed = files_below(prefix / "share" / "mavo-survey")
        built = files_below(APPLICATION_DIR)
        # Only an installation has the schema, which is for receivers of surveys.
        schema = pathlib.Path("mavo-survey.rng")
        self.assertEqual(sorted([*built, schema]), sorted(installed))
        changed = [str(path) for path in built if built[path] != installed[path]]
        # Installing may remove the library paths of the build from the program.
        self.assertEqual([], [name for name in changed if name != "MacOS/mavo-survey"])
        self.assertTrue(os.access(prefix / "bin" / "mavo-survey", os.X_OK))

    def test_puts_the_application_directory_below_any_prefix(self):
        prefix = self.scratch / "my programs"
        subprocess.run(
            ["cmake", "--install", BUILD, "--prefix", prefix], stdout=subprocess.DEVNULL, check=True
        )
        self.expect_installed(prefix)

    def test_uses_the_staging_directory_of_packagers(self):
        subprocess.run(
            ["cmake", "--install", BUILD, "--prefix", "/usr"],
            env=environment(DESTDIR=self.scratch),
            stdout=subprocess.DEVNULL,
            check=True,
        )
        self.expect_installed(self.scratch / "usr")


class WindowDefinition(ScratchTest):
    """The definition of the window that a build with its own addresses generates and installs."""

    def configured(self, *options):
        build = self.scratch / "build"
        generator = ["-G", "Ninja", "-DMAVO_TESTS=OFF", "-DMAVO_PCH=OFF"]
        command = ["cmake", "-S", PROJECT, "-B", build, *generator, *options]
        subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
        return build

    def installed_definition(self, *options):
        build = self.configured(*options)
        prefix = self.scratch / "prefix"
        command = ["cmake", "--install", build, "--prefix", prefix, "--component", "resources"]
        subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
        definition = prefix / "share" / "mavo-survey" / "resources" / "survey-ui.glade"
        return ElementTree.parse(definition)

    def properties(self, definition, name):
        return [found.text or "" for found in definition.iterfind(f".//property[@name='{name}']")]

    def test_has_the_addresses_of_the_build_in_all_links(self):
        definition = self.installed_definition(
            "-DMAVO_WEB_HOST=surveys.example.org:8080", "-DMAVO_SUPPORT_ADDRESS=help@example.org"
        )
        links = [label for label in self.properties(definition, "label") if "href" in label]
        self.assertEqual(
            [
                '<a href="mailto:help@example.org">help@example.org</a>',
                '<a href="http://surveys.example.org:8080">surveys.example.org:8080</a>',
            ],
            links,
        )
        self.assertEqual(
            ["http://surveys.example.org:8080"], self.properties(definition, "website")
        )
        self.assertEqual(["surveys.example.org:8080"], self.properties(definition, "website-label"))
        for text in definition.getroot().itertext():
            self.assertNotIn("mavo.example", text)
            self.assertNotIn("@MAVO_", text)

    def test_has_another_port_only_in_a_second_program(self):
        build = self.configured(
            "-DMAVO_TEST_SERVER=ON",
            "-DMAVO_WEB_HOST=127.0.0.1:28704",
            "-DMAVO_TEST_SERVER_PORT=28799",
        )
        second = build / "port-28799" / "MAVO-Survey"
        definition = ElementTree.parse(second / "resources" / "survey-ui.glade")
        self.assertEqual(["http://127.0.0.1:28799"], self.properties(definition, "website"))
        self.assertEqual(
            (PROJECT / "resources" / "instructions.txt").read_bytes(),
            (second / "resources" / "instructions.txt").read_bytes(),
        )
        commands = subprocess.run(
            ["ninja", "-C", build, "-t", "commands", "mavo-survey-test-server"],
            capture_output=True,
            text=True,
            check=True,
        ).stdout.splitlines()
        compiled = [line for line in commands if "127.0.0.1:28799" in line]
        self.assertEqual(2, len(compiled), "main.cc and my-app.cc")
        usual = (build / "generated" / "survey-ui.glade").read_text(encoding="utf-8")
        self.assertIn("127.0.0.1:28704", usual)
        self.assertNotIn("127.0.0.1:28799", usual)

    def test_contains_the_licence(self):
        definition = self.installed_definition()
        (shown,) = self.properties(definition, "license")
        licence = (PROJECT / "LICENSE").read_text(encoding="utf-8")
        paragraphs = [" ".join(text.split()) for text in licence.split("\n\n")]
        self.assertEqual(paragraphs, shown.strip().split("\n\n"))


class BuildDate(ScratchTest):
    """The source text that defines BuildInfo."""

    def written(self, **changes):
        path = self.scratch / "build-info.cc"
        subprocess.run(
            [
                "cmake",
                f"-DOUT={path}",
                "-DVERSION=1.22.333",
                "-P",
                PROJECT / "cmake" / "write-build-info.cmake",
            ],
            env=environment(**changes),
            check=True,
        )
        return path.read_text(encoding="utf-8")

    def test_is_the_source_date_if_one_is_set(self):
        for zone in ("UTC", "America/Los_Angeles"):
            text = self.written(SOURCE_DATE_EPOCH=1639855754, TZ=zone)
            self.assertIn('date_str = "2021-12-18 19:29:14"', text)

    def test_is_the_local_time_otherwise(self):
        before = time.time() - 1
        text = self.written(SOURCE_DATE_EPOCH=None, TZ="XYZ+5")  # five hours west
        date = text.split('date_str = "')[1].split('"')[0]
        written = datetime.strptime(date + " -0500", "%Y-%m-%d %H:%M:%S %z").timestamp()
        self.assertTrue(before <= written <= time.time(), date)

    def test_is_written_together_with_the_version(self):
        text = self.written()
        for line in (
            "const int major = 1;",
            "const int minor = 22;",
            "const int buildnum = 333;",
            'version_str = "1.22.333"',
        ):
            self.assertIn(line, text)
