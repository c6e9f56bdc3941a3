"""The Debian package, created twice from one build."""

import datetime
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from startup.scratch import BUILD

from .checks import APP_ID, PROJECT, SOURCE, run_tool

TIME = datetime.datetime(2021, 12, 18, 19, 29, tzinfo=datetime.timezone.utc)


def start_packing(directory, zone):
    """Starts to package the build in that directory and time zone. Returns the process."""
    shutil.copytree(SOURCE / "debian", directory / "debian")
    changed = {
        "SOURCE_DATE_EPOCH": str(int(TIME.timestamp())),
        "TZ": zone,
        "MAVO_BUILT": str(BUILD),
        "DEB_BUILD_OPTIONS": "noautodbgsym nocheck",
    }
    return subprocess.Popen(
        ["debian/rules", "binary"],
        cwd=directory,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        umask=0o022,  # as tools/build-package does
        env={**os.environ, **changed},
    )


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = pathlib.Path(tempfile.mkdtemp(prefix="mavo-package-"))
        cls.addClassCleanup(shutil.rmtree, cls.scratch)
        places = (("here/tree", "UTC"), ("there/another-tree", "America/Los_Angeles"))
        started = [start_packing(cls.scratch / path, zone) for path, zone in places]
        outputs = [process.communicate()[0] for process in started]
        packages = sorted(cls.scratch.glob("*here/*.deb"))
        if len(packages) != 2:
            raise AssertionError("\n".join(outputs))
        cls.package, cls.other = packages

    def field(self, name):
        return run_tool("dpkg-deb", "--field", self.package, name).strip()

    def contents(self):
        """Yields (mode, owner, time, path) of all entries of the package."""
        listing = run_tool("dpkg-deb", "--contents", self.package, env={**os.environ, "TZ": "UTC"})
        for line in listing.splitlines():
            mode, owner, _, day, hour, path = line.split(maxsplit=5)
            yield mode, owner, f"{day} {hour}", path.removeprefix("./")

    def test_is_identical_in_another_directory_and_time_zone(self):
        self.assertEqual(self.other.read_bytes(), self.package.read_bytes())

    def test_passes_lintian(self):
        output = run_tool("lintian", "--fail-on", "error,warning", "--allow-root", self.package)
        self.assertEqual("", output)

    def test_explains_every_complaint_that_it_overrides(self):
        overrides = (SOURCE / "debian" / "mavo-survey.lintian-overrides").read_text(encoding="utf-8")
        before = ""
        for line in overrides.splitlines():
            self.assertTrue(line.startswith("#") or before.startswith("#"), line)
            before = line

    def test_has_only_entries_that_belong_to_root_and_have_one_time(self):
        modes = {"drwxr-xr-x", "-rwxr-xr-x", "-rw-r--r--", "lrwxrwxrwx"}
        for mode, owner, time, path in self.contents():
            with self.subTest(path=path):
                self.assertIn(mode, modes)
                self.assertEqual("root/root", owner)
                self.assertEqual(TIME.strftime("%Y-%m-%d %H:%M"), time)

    def test_contains_the_programs_and_their_desktop_files(self):
        paths = {path for *_, path in self.contents()}
        for path in (
            "usr/bin/mavo-survey",
            "usr/bin/mavo-data",
            "usr/bin/mavo-surveys",
            "usr/lib/mavo-survey/mavo-survey",
            "usr/share/mavo-survey/MacOS/mavo-survey -> ../../../lib/mavo-survey/mavo-survey",
            "usr/share/mavo-survey/MacOS/mavo-survey-env-setup.sh",
            "usr/share/mavo-survey/resources/survey-ui.glade",
            "usr/share/mavo-survey/data-files/data-file-info.txt",
            f"usr/share/applications/{APP_ID}.desktop",
            f"usr/share/applications/{APP_ID}.viewer.desktop",
            "usr/share/mavo-survey/mavo-survey.rng",
            f"usr/share/metainfo/{APP_ID}.metainfo.xml",
            f"usr/share/mime/packages/{APP_ID}.xml",
            f"usr/share/icons/hicolor/scalable/apps/{APP_ID}.svg",
            "usr/share/man/man1/mavo-survey.1.gz",
            "usr/share/man/man1/mavo-data.1.gz",
            "usr/share/man/man1/mavo-surveys.1.gz",
            "usr/share/bash-completion/completions/mavo-data",
            "usr/share/bash-completion/completions/mavo-surveys",
            "usr/share/doc/mavo-survey/copyright",
            "usr/share/doc/mavo-survey/user-guide.md",
            "usr/share/doc/mavo-survey/screenshots/start.png",
            "usr/share/doc/mavo-survey/changelog.Debian.gz",
        ):
            self.assertIn(path, paths)

    def test_has_all_files_except_programs_in_usr_share(self):
        files = [path for mode, *_, path in self.contents() if not mode.startswith("d")]
        elsewhere = {path for path in files if not path.startswith("usr/share/")}
        commands = {f"usr/bin/mavo-{name}" for name in ("data", "survey", "surveys")}
        self.assertEqual({*commands, "usr/lib/mavo-survey/mavo-survey"}, elsewhere)

    def test_has_every_file_to_which_the_user_guide_links(self):
        paths = {path for *_, path in self.contents()}
        guide = (PROJECT / "docs" / "user-guide.md").read_text(encoding="utf-8")
        for link in re.findall(r"\]\(([^)#]+)", guide):
            with self.subTest(link=link):
                self.assertIn(f"usr/share/doc/mavo-survey/{link}", paths)

    def depends(self):
        return [name.split()[0] for name in self.field("Depends").split(", ")]

    def test_depends_on_its_libraries_and_on_bzip2(self):
        output = run_tool("objdump", "-p", BUILD / "MAVO-Survey" / "MacOS" / "mavo-survey")
        chief = ("libgtkmm", "libxml++", "libsoup")
        libraries = [n for n in re.findall(r"NEEDED +(\S+)", output) if n.startswith(chief)]
        self.assertEqual(len(chief), len(libraries))
        # Releases of Debian name the packages of the same libraries differently.
        owners = [run_tool("dpkg-query", "--search", f"*/{name}").split(":")[0] for name in libraries]
        for name in (*owners, "bzip2"):
            self.assertIn(name, self.depends())

    def test_depends_on_the_icons_of_the_toolkit_and_on_their_renderer(self):
        packages = (PROJECT / "tools" / "packages").read_text(encoding="utf-8")
        for name in ("adwaita-icon-theme", "librsvg2-common"):
            self.assertIn(name, self.depends())
            self.assertRegex(packages, rf"(?m)^run +{name}$")

    def test_recommends_no_package(self):
        self.assertEqual("", self.field("Recommends"))

    def test_runs_no_script_when_it_is_installed_or_removed(self):
        listing = subprocess.run(
            f"dpkg-deb --ctrl-tarfile '{self.package}' | tar -t",
            shell=True,
            capture_output=True,
            text=True,
            check=True,
        )
        names = {pathlib.PurePath(name).name for name in listing.stdout.split()} - {""}
        self.assertEqual({"control", "md5sums"}, names)
