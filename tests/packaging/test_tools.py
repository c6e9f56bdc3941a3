"""What the command-line tools bring along: manual pages and completion in bash."""

import re
import subprocess
import unittest

from startup.scratch import BUILD

from .checks import MADE, SOURCE, said

TOOLS = ("mavo-data", "mavo-surveys")


def helped(tool, *command):
    return said(BUILD / "bin" / tool, *command, "--help")


def commands(tool):
    """The names of its commands, from its own help."""
    listed = helped(tool).partition("Commands:\n")[2].partition("\n\n")[0]
    return re.findall(r"(?m)^  (\w+)", listed)


def options(tool, *command):
    """The options that its own help, or that of a command, names: "-o" and "--output"."""
    listed = helped(tool, *command).partition("Options:\n")[2].partition("Commands:")[0]
    return [
        option
        for line in re.findall(r"(?m)^  (-.*?)(?:  |$)", listed)
        for option in re.findall(r"--?\w[\w-]*", line)
    ]


def completed(tool, *words):
    """What bash offers for the last word."""
    script = (
        f"source '{SOURCE / 'bash-completion' / tool}'; COMP_WORDS=(\"$@\");"
        f' COMP_CWORD=$(($# - 1)); _{tool.replace("-", "_")}; printf "%s\\n" "${{COMPREPLY[@]}}"'
    )
    return said("bash", "-c", script, tool, tool, *words).split()


def manual(tool):
    """The manual page as it is read."""
    page = said("mandoc", "-T", "ascii", MADE / f"{tool}.1")
    return re.sub(".\b", "", page)


class CommandLineTools(unittest.TestCase):
    def each_command(self):
        for tool in TOOLS:
            for command in commands(tool):
                with self.subTest(tool=tool, command=command):
                    yield tool, command

    def test_have_manual_pages_without_a_fault(self):
        for tool in TOOLS:
            self.assertEqual("", said("mandoc", "-T", "lint", "-W", "warning", MADE / f"{tool}.1"))

    def test_name_each_command_in_the_manual_page_and_the_completion(self):
        for tool, command in self.each_command():
            self.assertRegex(manual(tool), rf"\n {{5,}}{command}\b")
            self.assertIn(command, completed(tool, ""))

    def test_name_each_option_in_the_manual_page_and_the_completion(self):
        for tool, command in self.each_command():
            offered = completed(tool, command, "-")
            for option in options(tool, command):
                self.assertRegex(manual(tool), rf"(?<![\w-]){option}\b")
                if option.startswith("--"):
                    self.assertIn(option, offered)

    def test_name_their_own_options_too(self):
        for tool in TOOLS:
            self.assertEqual(["-h", "--help", "--version"], options(tool))
            self.assertEqual(["--help", "--version"], completed(tool, "--"))
            for option in options(tool):
                self.assertRegex(manual(tool), rf"(?<![\w-]){option}\b")

    def test_complete_no_option_that_they_do_not_know(self):
        for tool, command in self.each_command():
            self.assertLessEqual(set(completed(tool, command, "--")), set(options(tool, command)))

    def test_complete_formats(self):
        self.assertEqual(["plain", "json"], completed("mavo-data", "check", "--format", ""))
        self.assertEqual(["plain", "json"], completed("mavo-data", "check", "--format", "="))
        self.assertEqual(["json"], completed("mavo-data", "check", "--format", "=", "j"))

    def test_leave_files_to_the_shell(self):
        for tool, command in self.each_command():
            self.assertEqual([], completed(tool, command, ""))

    def test_are_completed_by_valid_scripts(self):
        for tool in TOOLS:
            subprocess.run(["bash", "-n", SOURCE / "bash-completion" / tool], check=True)
