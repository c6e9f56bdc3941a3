"""Tests of the launch script and of the command in bin. A stand-in replaces the executable."""

import re
import shutil
import subprocess

from .scratch import BUILD, PROJECT, ScratchTest, environment

LAUNCH_SCRIPT = PROJECT / "packaging" / "mavo-survey-env-setup.sh"
COMMAND = BUILD / "packaging" / "mavo-survey"
# Prints its working directory, GTK_PATH, its path and its arguments, one per line.
STAND_IN = '#!/bin/sh\npwd\nprintf "%s\\n" "$GTK_PATH" "$0" "$@"\n'


class LaunchTest(ScratchTest):
    """An installed tree in which the stand-in replaces the program."""

    def setUp(self):
        super().setUp()
        self.application_dir = self.scratch / "share" / "mavo-survey"
        self.executable = self.application_dir / "MacOS" / "mavo-survey"
        self.executable.parent.mkdir(parents=True)
        self.executable.write_text(STAND_IN, encoding="utf-8")
        self.executable.chmod(0o755)
        self.script = self.executable.parent / LAUNCH_SCRIPT.name
        shutil.copy(LAUNCH_SCRIPT, self.script)
        self.command = self.scratch / "bin" / "mavo-survey"
        self.command.parent.mkdir()
        shutil.copy(COMMAND, self.command)

    def start(self, *command, directory="/", **changes):
        """Runs a command. Returns (working directory, GTK_PATH, path, arguments) of the stand-in."""
        ended = subprocess.run(
            command,
            cwd=directory,
            env=environment(**changes),
            capture_output=True,
            text=True,
            check=True,
        )
        self.assertEqual("", ended.stderr)
        started_in, gtk_path, path, *arguments = ended.stdout.splitlines()
        return started_in, gtk_path, path, arguments

    def expect_start(self, started, arguments=()):
        started_in, gtk_path, path, given = started
        self.assertEqual(str(self.application_dir), started_in)
        self.assertNotEqual("", gtk_path)
        self.assertEqual(str(self.executable), path)
        self.assertEqual(list(arguments), given)


class LaunchScript(LaunchTest):
    def test_starts_the_executable_in_its_application_directory(self):
        self.expect_start(self.start(self.script, "--exec-name", self.executable))

    def test_passes_all_arguments_unchanged(self):
        odd = ["-d3", "two words", "", "*", "$HOME", "--exec-name"]
        self.expect_start(self.start(self.script, "--exec-name", self.executable, *odd), odd)

    def test_accepts_a_relative_path_of_the_executable(self):
        started = self.start(
            self.script, "--exec-name", "MacOS/mavo-survey", directory=self.application_dir
        )
        self.expect_start(started)

    def test_keeps_a_module_path_that_is_set(self):
        started = self.start(
            self.script, "--exec-name", self.executable, GTK_PATH="/of the user"
        )
        self.assertEqual("/of the user", started[1])

    def test_ignores_the_users_cdpath(self):
        self.expect_start(self.start(self.script, "--exec-name", self.executable, CDPATH="/usr:/"))

    def test_refuses_other_arguments(self):
        for arguments in ([], ["--exec-name"], [self.executable], ["--name", self.executable]):
            with self.subTest(arguments=arguments):
                ended = subprocess.run([self.script, *arguments], capture_output=True, check=False)
                self.assertEqual(2, ended.returncode)
                self.assertEqual(b"", ended.stdout)
                self.assertIn(b"usage: ", ended.stderr)


class InstalledCommand(LaunchTest):
    def test_starts_the_program_from_any_directory(self):
        self.expect_start(self.start(self.command, "-d3", "two words"), ["-d3", "two words"])

    def test_is_found_by_a_relative_path(self):
        self.expect_start(self.start("./mavo-survey", directory=self.command.parent))

    def test_is_found_through_the_search_path(self):
        for entry, directory in ((self.command.parent, "/"), ("bin", self.scratch)):
            with self.subTest(entry=entry):
                path = f"{entry}:/usr/bin:/bin"
                self.expect_start(
                    self.start("sh", "-c", "mavo-survey", PATH=path, directory=directory)
                )

    def test_is_found_through_symbolic_links(self):
        links = self.scratch / "elsewhere"
        links.mkdir()
        (links / "first").symlink_to(self.command)
        (links / "second").symlink_to("first")
        self.expect_start(self.start(links / "second"))
        self.expect_start(self.start("sh", "-c", "second", PATH=f"{links}:/usr/bin:/bin"))

    def test_changes_the_directory_even_if_the_module_path_is_set(self):
        started_in, gtk_path, *_ = self.start(self.command, GTK_PATH="/of the user")
        self.assertEqual(str(self.application_dir), started_in)
        self.assertEqual("/of the user", gtk_path)


class AskingTheInstalledCommand(LaunchTest):
    """Options that the command answers itself, because the program would need a display."""

    def setUp(self):
        super().setUp()
        self.executable.unlink()

    def answer(self, *arguments):
        ended = subprocess.run(
            [self.command, *arguments],
            cwd="/",
            env=environment(),
            capture_output=True,
            text=True,
            check=True,
        )
        self.assertEqual("", ended.stderr)
        return ended.stdout

    def test_prints_the_version_of_the_program(self):
        lists = (PROJECT / "CMakeLists.txt").read_text(encoding="utf-8")
        version = re.search(r"project\(.* VERSION ([\d.]+)", lists).group(1)
        self.assertEqual(f"MAVO-Survey {version}", self.answer("--version").splitlines()[0])

    def test_prints_its_options(self):
        answer = self.answer("--help")
        self.assertTrue(answer.startswith("Usage: mavo-survey "))
        for option in ("-dLEVEL", "--help", "--version", "--help-gtk"):
            self.assertIn(option, answer)
        self.assertTrue(all(len(line) <= 80 for line in answer.splitlines()))

    def test_answers_in_few_lines(self):
        self.assertLess(len(self.answer("--version").splitlines()), 5)
        self.assertLess(len(self.answer("--help").splitlines()), 20)

    def test_answers_after_other_arguments_too(self):
        for option in ("--help", "--version"):
            self.assertEqual(self.answer(option), self.answer("-d3", option))


class OptionsLikeThoseOfTheInstalledCommand(LaunchTest):
    def test_are_passed_to_the_program(self):
        for arguments in (
            ["--help-all"],
            ["--help-gtk"],
            ["--versions"],
            ["-h"],
            ["help"],
            ["--", "--help"],
            ["--", "--version"],
        ):
            with self.subTest(arguments=arguments):
                self.expect_start(self.start(self.command, *arguments), arguments)
