"""What tools/install-packages asks apt for, and what tools/try-releases refuses.

The commands of the system are replaced, so that other releases seem to be there.
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
        self.asked = self.scratch / "asked"
        self.command("id", "echo 0")
        self.command("apt-get", f'echo "$*" >>"{self.asked}"')

    def command(self, name, text):
        """A command that stands in for one of the system."""
        path = self.scratch / "bin" / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"#!/bin/sh\n{text}\n", encoding="utf-8")
        path.chmod(0o755)

    def system(self, installed, known):
        """Says what is installed, and what the release has."""
        self.command(
            "dpkg-query",
            f'for name; do :; done\ncase " {installed} " in\n'
            '*" $name "*) echo "installed " ;;\n*) exit 1 ;;\nesac',
        )
        self.command("apt-cache", f'case " {known} " in *" $2 "*) ;; *) exit 100 ;; esac')

    def installed(self, *roles):
        """The packages that apt was asked for."""
        path = f"{self.scratch / 'bin'}:{os.environ['PATH']}"
        command = [self.scratch / "install-packages", *roles]
        subprocess.run(
            command, env={**os.environ, "PATH": path}, stdout=subprocess.DEVNULL, check=True
        )
        if not self.asked.exists():
            return None
        lines = [line for line in self.asked.read_text().splitlines() if " install " in line]
        return lines[-1].split("--no-install-recommends ")[1].split()

    def test_takes_the_first_of_several_names_that_the_release_has(self):
        self.system(installed="", known="compiler old-library new-library")
        self.assertEqual(["compiler", "old-library"], self.installed("build"))

    def test_takes_the_next_name_where_the_release_has_dropped_the_first(self):
        self.system(installed="", known="compiler new-library")
        self.assertEqual(["compiler", "new-library"], self.installed("build"))

    def test_is_content_with_any_of_several_names(self):
        self.system(installed="compiler new-library", known="compiler old-library new-library")
        self.assertIsNone(self.installed("build"))

    def test_names_the_first_where_the_release_has_none(self):
        self.system(installed="compiler", known="compiler")
        self.assertEqual(["old-library"], self.installed("build"))

    def test_leaves_out_other_roles(self):
        self.system(installed="", known="icons")
        self.assertEqual(["icons"], self.installed("run"))


class TryingReleases(ScratchTest):
    def test_refuses_what_it_does_not_know_before_it_makes_a_root(self):
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
