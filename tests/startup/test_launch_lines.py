"""Tests of the lines that the program prints about its start.

Without a display, the program ends soon after them. With GTK_PATH, it does not look for its
launch script.
"""

import re
import subprocess

from .scratch import BUILD, ScratchTest, environment

EXECUTABLE = BUILD / "MAVO-Survey" / "MacOS" / "mavo-survey"


class LaunchLines(ScratchTest):
    def start(self, argv0, *arguments, **changes):
        """Starts the program with this argv[0] in the scratch directory. Returns what it prints."""
        ended = subprocess.run(
            [argv0, *arguments],
            executable=EXECUTABLE,
            cwd=self.scratch,
            env=environment(**changes),
            capture_output=True,
            text=True,
            timeout=60,
            check=False,
        )
        self.assertNotEqual(0, ended.returncode)
        return ended.stdout

    def test_begin_with_version_and_build_date(self):
        self.assertRegex(
            self.start("x", GTK_PATH="/"),
            r"\A\nMAVO-Survey version \d+\.\d+\.\d+, built \d{4}-\d\d-\d\d \d\d:\d\d:\d\d\n"
            r"init_gtk_stuff\(\): argc = 1, argv =\n",
        )

    def test_list_arguments_and_environment(self):
        output = self.start("a/b", "-d3", "two words", GTK_PATH="/", MAVO_ODD='a "quoted" word')
        listed = (
            "init_gtk_stuff(): argc = 3, argv =\n"
            '    argv[0] = "a/b"\n    argv[1] = "-d3"\n    argv[2] = "two words"\n'
            "Environment:\n"
        )
        self.assertIn(listed, output)
        environment_lines = output.split("Environment:\n")[1].split("End.\n")[0]
        self.assertIn('    "MAVO_ODD=a "quoted" word"\n', environment_lines)

    def test_do_not_depend_on_the_debug_level(self):
        def lines(*arguments):
            output = self.start("a/b", *arguments, GTK_PATH="/")
            return [line for line in output.splitlines() if line.startswith(("started", "Have"))]

        self.assertEqual(lines(), lines("-d-9"))

    def test_name_the_deduced_directory(self):
        (self.scratch / "app").mkdir()
        scratch = self.scratch
        for argv0, expected in (
            ("/opt/app/MacOS/prog", "reduced to /opt/app (prog)"),
            ("/prog", "reduced to /prog (prog)"),
            ("prog", f"deduced {scratch} (prog)"),
            ("MacOS/prog", f"deduced {scratch} (prog)"),
            ("app/MacOS/prog", f"deduced {scratch / 'app'} (prog)"),
            ("./app/MacOS/prog", f"deduced {scratch / 'app'} (prog)"),
            ("app/MacOS/", f"deduced {scratch / 'app'} ()"),
        ):
            with self.subTest(argv0=argv0):
                output = self.start(argv0, GTK_PATH="/")
                self.assertIn(f"started with {argv0}, {expected}\n", output)
                self.assertIn("Have GTK_PATH!  Proceeding...\n", output)
                self.assertNotIn("exec(", output)

    def test_report_that_the_directory_cannot_be_entered(self):
        for gtk_path in ("/", None):
            output = self.start("no/such/MacOS/prog", GTK_PATH=gtk_path)
            self.assertIn('Failed to chdir("no/such"): 2 No such file or directory\n', output)
            for absent in ("started with", "Have GTK_PATH", "exec("):
                self.assertNotIn(absent, output)

    def test_report_that_the_working_directory_was_removed(self):
        start_in_removed_directory = 'mkdir gone && cd gone && rmdir "$PWD" && exec -a prog "$1"'
        ended = subprocess.run(
            ["bash", "-c", start_in_removed_directory, "-", EXECUTABLE],
            cwd=self.scratch,
            env=environment(),
            capture_output=True,
            text=True,
            timeout=60,
            check=False,
        )
        self.assertIn(
            'Failed to getcwd() after chdir("prog"): 2 No such file or directory\n', ended.stdout
        )
        self.assertNotIn("exec(", ended.stdout)

    def test_report_a_missing_script_before_the_start_continues(self):
        for argv0, directory in (("prog", self.scratch), ("/opt/app/MacOS/prog", "/opt/app")):
            output = self.start(argv0, "-d4")
            program = f"{directory}/MacOS/prog"
            self.assertIn(
                f'exec("{program}-env-setup.sh", '
                f'["{program}-env-setup.sh", "--exec-name", "{program}", ...]\n'
                "FAILED to exec: 2 = No such file or directory\n"
                "Debug level 4\n",
                output,
            )

    def test_report_a_script_that_is_not_executable(self):
        script = self.scratch / "MacOS" / "prog-env-setup.sh"
        script.parent.mkdir()
        script.write_text("#!/bin/sh\n", encoding="utf-8")
        self.assertIn("FAILED to exec: 13 = Permission denied\n", self.start("prog"))

    def test_precede_the_script_which_gets_all_arguments(self):
        script = self.scratch / "MacOS" / "prog-env-setup.sh"
        script.parent.mkdir()
        script.write_text('#!/bin/sh\nprintf "<%s>" "$0" "$@"\nexit 3\n', encoding="utf-8")
        script.chmod(0o755)
        output = self.start("MacOS/prog", "-d3", "two words")
        executable = script.parent / "prog"
        self.assertEqual(
            f"<{script}><--exec-name><{executable}><-d3><two words>",
            re.search(r"^<.*>\Z", output, re.M).group(0),
        )
