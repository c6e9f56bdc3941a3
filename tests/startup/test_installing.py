"""The application directory of the build, and what installing makes of it."""

import os
import subprocess
import time
from datetime import datetime

from .scratch import BUILD, PROJECT, ScratchTest, environment

APPLICATION_DIR = BUILD / "MAVO-Survey"


def files_below(directory):
    """Relative path -> (contents, whether it can be executed) of all files."""
    return {
        path.relative_to(directory): (path.read_bytes(), os.access(path, os.X_OK))
        for path in directory.rglob("*")
        if path.is_file()
    }


class ApplicationDirectory(ScratchTest):
    def test_holds_program_script_resources_and_data(self):
        names = {path.parts[0] for path in files_below(APPLICATION_DIR)}
        self.assertEqual({"MacOS", "resources", "data-files"}, names)
        for folder in ("resources", "data-files"):
            self.assertEqual(files_below(PROJECT / folder), files_below(APPLICATION_DIR / folder))
        programs = files_below(APPLICATION_DIR / "MacOS")
        self.assertEqual(
            ["mavo-survey", "mavo-survey-env-setup.sh"], sorted(str(path) for path in programs)
        )
        self.assertTrue(all(executable for _, executable in programs.values()))


class Installing(ScratchTest):
    def expect_installed(self, prefix):
        installed = files_below(prefix / "lib" / "mavo-survey")
        built = files_below(APPLICATION_DIR)
        self.assertEqual(sorted(built), sorted(installed))
        changed = [str(path) for path in built if built[path] != installed[path]]
        # The program itself may lose the paths of libraries that the build needed.
        self.assertEqual([], [name for name in changed if name != "MacOS/mavo-survey"])
        self.assertTrue(os.access(prefix / "bin" / "mavo-survey", os.X_OK))

    def test_puts_the_application_directory_below_any_prefix(self):
        prefix = self.scratch / "my programs"
        subprocess.run(
            ["cmake", "--install", BUILD, "--prefix", prefix], stdout=subprocess.DEVNULL, check=True
        )
        self.expect_installed(prefix)

    def test_keeps_to_the_staging_directory_of_packagers(self):
        subprocess.run(
            ["cmake", "--install", BUILD, "--prefix", "/usr"],
            env=environment(DESTDIR=self.scratch),
            stdout=subprocess.DEVNULL,
            check=True,
        )
        self.expect_installed(self.scratch / "usr")


class BuildDate(ScratchTest):
    """The text that becomes BuildInfo."""

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

    def test_is_the_source_date_where_one_is_set(self):
        for zone in ("UTC", "America/Los_Angeles"):
            text = self.written(SOURCE_DATE_EPOCH=1639855754, TZ=zone)
            self.assertIn('date_str = "2021-12-18 19:29:14"', text)

    def test_is_the_local_time_otherwise(self):
        before = time.time() - 1
        text = self.written(SOURCE_DATE_EPOCH=None, TZ="XYZ+5")  # five hours west
        date = text.split('date_str = "')[1].split('"')[0]
        written = datetime.strptime(date + " -0500", "%Y-%m-%d %H:%M:%S %z").timestamp()
        self.assertTrue(before <= written <= time.time(), date)

    def test_stands_beside_the_numbers_of_the_version(self):
        text = self.written()
        for line in (
            "const int major = 1;",
            "const int minor = 22;",
            "const int buildnum = 333;",
            'version_str = "1.22.333"',
        ):
            self.assertIn(line, text)
