"""The manual pages of the command-line tools, and their completion in bash."""

import re
import subprocess
import unittest

from startup.scratch import BUILD

from .checks import GENERATED, SOURCE, run_tool

TOOLS = ("mavo-data", "mavo-surveys")


def help_of(tool, *command):
    return run_tool(BUILD / "bin" / tool, *command, "--help")


def commands(tool):
    """Returns the names of the tool's commands, from its help."""
    listed = help_of(tool).partition("Commands:\n")[2].partition("\n\n")[0]
    return re.findall(r"(?m)^  (\w+)", listed)


def options(tool, *command):
    """Returns the options in the help of a tool or of its command, such as "-o" and "--output"."""
    listed = help_of(tool, *command).partition("Options:\n")[2].partition("Commands:")[0]
    return [
        option
        for line in re.findall(r"(?m)^  (-.*?)(?:  |$)", listed)
        for option in re.findall(r"--?\w[\w-]*", line)
    ]


def completed(tool, *words):
    """Returns what bash offers for the last word."""
    script = (
        f"source '{SOURCE / 'bash-completion' / tool}'; COMP_WORDS=(\"$@\");"
        f' COMP_CWORD=$(($# - 1)); _{tool.replace("-", "_")}; printf "%s\\n" "${{COMPREPLY[@]}}"'
    )
    return run_tool("bash", "-c", script, tool, tool, *words).split()


def manual(tool):
    """Returns the text of the manual page, without formatting."""
    page = run_tool("mandoc", "-T", "ascii", GENERATED / f"{tool}.1")
    return re.sub(".\b", "", page)


class CommandLineTools(unittest.TestCase):
    def each_command(self):
        for tool in TOOLS:
            for command in commands(tool):
                with self.subTest(tool=tool, command=command):
                    yield tool, command

    def test_have_manual_pages_without_a_fault(self):
        for tool in TOOLS:
            page = GENERATED / f"{tool}.1"
            self.assertEqual("", run_tool("mandoc", "-T", "lint", "-W", "warning", page))

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
