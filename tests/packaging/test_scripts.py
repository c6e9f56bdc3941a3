"""Which packages tools/install-packages installs, and what tools/try-releases refuses.

Scripts replace the commands of the system and imitate other releases of Debian.
"""

import os
import shutil
import subprocess

from startup.scratch import ScratchTest

from .checks import PROJECT

LIST = """# role, package
build  compiler
build  old-library|new-library
run    icons
"""


class InstallingPackages(ScratchTest):
    def setUp(self):
        super().setUp()
        shutil.copy(PROJECT / "tools" / "install-packages", self.scratch)
        (self.scratch / "packages").write_text(LIST, encoding="utf-8")
        self.calls = self.scratch / "calls"
        self.command("id", "echo 0")
        self.command("apt-get", f'echo "$*" >>"{self.calls}"')

    def command(self, name, text):
        """Creates a script that replaces a command of the system."""
        path = self.scratch / "bin" / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"#!/bin/sh\n{text}\n", encoding="utf-8")
        path.chmod(0o755)

    def system(self, installed, known):
        """Sets the packages that are installed, and those that the release has."""
        self.command(
            "dpkg-query",
            f'for name; do :; done\ncase " {installed} " in\n'
            '*" $name "*) echo "installed " ;;\n*) exit 1 ;;\nesac',
        )
        self.command("apt-cache", f'case " {known} " in *" $2 "*) ;; *) exit 100 ;; esac')

    def requested(self, *roles):
        """Returns the packages that the script requests from apt; None if it does not call apt."""
        path = f"{self.scratch / 'bin'}:{os.environ['PATH']}"
        command = [self.scratch / "install-packages", *roles]
        subprocess.run(
            command, env={**os.environ, "PATH": path}, stdout=subprocess.DEVNULL, check=True
        )
        if not self.calls.exists():
            return None
        lines = [line for line in self.calls.read_text().splitlines() if " install " in line]
        return lines[-1].split("--no-install-recommends ")[1].split()

    def test_takes_the_first_of_several_names_that_the_release_has(self):
        self.system(installed="", known="compiler old-library new-library")
        self.assertEqual(["compiler", "old-library"], self.requested("build"))

    def test_takes_the_next_name_where_the_release_has_dropped_the_first(self):
        self.system(installed="", known="compiler new-library")
        self.assertEqual(["compiler", "new-library"], self.requested("build"))

    def test_installs_nothing_if_one_of_several_names_is_installed(self):
        self.system(installed="compiler new-library", known="compiler old-library new-library")
        self.assertIsNone(self.requested("build"))

    def test_requests_the_first_name_if_the_release_has_none(self):
        self.system(installed="compiler", known="compiler")
        self.assertEqual(["old-library"], self.requested("build"))

    def test_ignores_other_roles(self):
        self.system(installed="", known="icons")
        self.assertEqual(["icons"], self.requested("run"))


class TryingReleases(ScratchTest):
    def test_refuses_invalid_arguments_before_it_creates_a_root(self):
        for arguments in (
            ("--commands", "demo nonsense"),
            ("--soup", "4"),
            ("--nonsense",),
            ("--commands",),
        ):
            with self.subTest(arguments=arguments):
                ended = subprocess.run(
                    [PROJECT / "tools" / "try-releases", *arguments],
                    cwd=self.scratch,
                    capture_output=True,
                    text=True,
                    check=False,
                )
                self.assertEqual(2, ended.returncode)
                self.assertEqual("", ended.stdout)
                self.assertIn("try-releases [OPTION...] [RELEASE...]", ended.stderr)
