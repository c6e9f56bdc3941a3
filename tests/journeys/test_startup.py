"""Starts of the real program: its output, its dialogs and its exit status."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import time
import unittest

from .program import Program
from .screen import press_key
from .waiting import wait_for

APPLICATION_DIR = pathlib.Path(os.environ.get("MAVO_APPLICATION_DIR", "build/MAVO-Survey"))


class Start(unittest.TestCase):
    """Each test has its own copy of the application directory and can change it."""

    def setUp(self):
        above = pathlib.Path(tempfile.mkdtemp(prefix="mavo start "))  # users' paths have blanks
        self.directory = above / "MAVO-Survey"
        self.addCleanup(shutil.rmtree, self.directory.parent)
        shutil.copytree(APPLICATION_DIR, self.directory)

    def start(self, *arguments, **options):
        return self.enterContext(Program(self.directory, arguments=arguments, **options))

    def start_and_close(self, *arguments, **options):
        """Starts the program, quits it and returns its output."""
        program = self.start(*arguments, **options)
        program.activate_menu("File", "Quit")
        self.assertEqual(0, program.wait_for_end())
        return program.output()

    def expect_fatal(self, words):
        """Expects a dialog with these words, whose button Close ends the program with status 1.

        Returns the text of the dialog and the output.
        """
        program = self.start()
        said = program.answer(words, "Close")
        self.assertEqual(1, program.wait_for_end())
        self.assertIn("*** FATAL ERROR: ", program.output())
        return said, program.output()

    def change(self, name, change):
        """Rewrites a file of the application directory."""
        path = self.directory / name
        text = path.read_text(encoding="utf-8")
        changed = change(text)
        self.assertNotEqual(text, changed)
        path.write_text(changed, encoding="utf-8")


class StartingWithDamage(Start):
    failed_to_read = "Failed to read data files; you may need to reinstall the app.  Sorry!"

    def test_no_data_set_is_fatal(self):
        shutil.rmtree(self.directory / "data-files")
        _, output = self.expect_fatal(self.failed_to_read)
        self.assertIn("Oh no!  We have no valid data!!\n", output)

    def test_data_without_a_date_are_fatal(self):
        (self.directory / "data-files" / "data-file-info.txt").unlink()
        self.expect_fatal(self.failed_to_read)

    def test_data_information_without_an_equals_sign_is_fatal(self):
        self.change("data-files/data-file-info.txt", lambda text: text + "nonsense\n")
        self.expect_fatal("Data file metadata is corrupted!")

    def test_a_missing_data_file_is_fatal(self):
        (self.directory / "data-files" / "habitat.csv").unlink()
        _, output = self.expect_fatal(self.failed_to_read)
        self.assertIn("Failed to open data-files/habitat.csv!\n", output)

    def test_a_row_of_the_wrong_width_is_fatal(self):
        self.change("data-files/habitat.csv", lambda text: text + "1,2\n")
        program = self.start()
        program.answer("habitat.csv", "OK", other_follows=True)
        program.answer(self.failed_to_read, "Close")
        self.assertEqual(1, program.wait_for_end())

    def test_a_missing_definition_file_is_fatal(self):
        (self.directory / "resources" / "survey-ui.glade").unlink()
        self.expect_fatal("FileError loading resources/survey-ui.glade: ")

    def test_a_definition_file_that_is_not_xml_is_fatal(self):
        self.change("resources/survey-ui.glade", lambda text: text.replace("</interface>", "</face>"))
        self.expect_fatal("MarkupError loading resources/survey-ui.glade: ")

    def test_a_missing_panel_is_fatal_and_named(self):
        self.change(
            "resources/survey-ui.glade",
            lambda text: text.replace('id="member_panel"', 'id="another_panel"'),
        )
        self.expect_fatal("Failed to find member_panel in UI")

    def test_a_missing_window_is_fatal_and_named(self):
        self.change(
            "resources/survey-ui.glade",
            # the dialogs refer to the window by its id
            lambda text: re.sub(r"\bsurvey_window\b", "another_window", text),
        )
        self.expect_fatal("Failed to find survey_window in UI")

    def test_a_definition_file_with_an_unknown_kind_of_widget_is_fatal(self):
        self.change(
            "resources/survey-ui.glade",
            lambda text: text.replace('class="GtkNotebook"', 'class="GtkNoSuchThing"'),
        )
        self.expect_fatal("BuilderError loading resources/survey-ui.glade: ")

    def test_a_fatal_dialog_is_closed_by_the_keyboard_too(self):
        for key in ("Escape", "Return"):
            with self.subTest(key=key):
                shutil.rmtree(self.directory / "data-files", ignore_errors=True)
                program = self.start()
                program.message(self.failed_to_read).find("push button", "Close").focus()
                press_key(key)
                self.assertEqual(1, program.wait_for_end())

    def test_missing_icons_do_not_prevent_the_start(self):
        for logo in (self.directory / "resources").glob("MAVO-logo-*.png"):
            logo.unlink()
        self.start_and_close()


class StartingByTheLaunchScript(Start):
    def test_without_gtk_path_the_script_starts_the_program_again(self):
        output = self.start_and_close()
        program = self.directory / "MacOS" / "mavo-survey"
        line = (
            f'exec("{program}-env-setup.sh", '
            f'["{program}-env-setup.sh", "--exec-name", "{program}", ...]\n'
        )
        self.assertIn(line, output)
        self.assertIn("Have GTK_PATH!  Proceeding...\n", output)
        self.assertEqual(2, output.count("\nMAVO-Survey version "))

    def test_with_gtk_path_the_program_goes_on_by_itself(self):
        output = self.start_and_close(
            environment={"GTK_PATH": "/nowhere"}, working_directory=self.directory
        )
        self.assertIn("Have GTK_PATH!  Proceeding...\n", output)
        self.assertNotIn("exec(", output)
        self.assertEqual(1, output.count("\nMAVO-Survey version "))

    def test_without_the_script_the_program_says_so_and_goes_on(self):
        (self.directory / "MacOS" / "mavo-survey-env-setup.sh").unlink()
        output = self.start_and_close(working_directory=self.directory)
        self.assertIn("FAILED to exec: 2 = No such file or directory\n", output)

    def test_a_relative_path_leads_to_the_directory_above(self):
        output = self.start_and_close(
            executable="MAVO-Survey/MacOS/mavo-survey", working_directory=self.directory.parent
        )
        line = (
            "started with MAVO-Survey/MacOS/mavo-survey, "
            f"deduced {self.directory} (mavo-survey)\n"
        )
        self.assertIn(line, output)

    def test_a_path_with_one_slash_is_taken_from_the_working_directory(self):
        output = self.start_and_close(
            executable="MacOS/mavo-survey", working_directory=self.directory
        )
        line = f"started with MacOS/mavo-survey, deduced {self.directory} (mavo-survey)\n"
        self.assertIn(line, output)

    def found_by_name(self, working_directory):
        return self.start(
            executable="mavo-survey",
            working_directory=working_directory,
            environment={"PATH": f"{self.directory / 'MacOS'}:{os.environ['PATH']}"},
        )

    def test_a_bare_name_is_taken_from_the_working_directory(self):
        program = self.found_by_name(self.directory)
        program.activate_menu("File", "Quit")
        self.assertEqual(0, program.wait_for_end())
        line = f"started with mavo-survey, deduced {self.directory} (mavo-survey)\n"
        self.assertIn(line, program.output())
        self.assertIn("Have GTK_PATH!  Proceeding...\n", program.output())

    def test_a_bare_name_elsewhere_finds_neither_script_nor_data(self):
        program = self.found_by_name(self.directory.parent)
        program.answer("Failed to read data files", "Close")
        self.assertEqual(1, program.wait_for_end())
        self.assertIn("FAILED to exec: 2 = No such file or directory\n", program.output())

    def test_a_full_path_is_reduced_to_the_directory_above(self):
        output = self.start_and_close(working_directory="/")
        program = self.directory / "MacOS" / "mavo-survey"
        self.assertIn(
            f"started with {program}, reduced to {self.directory} (mavo-survey)\n", output
        )


class StartingTheInstalledProgram(Start):
    def setUp(self):
        super().setUp()
        prefix = self.directory.parent / "installed"
        subprocess.run(
            ["cmake", "--install", APPLICATION_DIR.parent, "--prefix", prefix],
            stdout=subprocess.DEVNULL,
            check=True,
        )
        self.directory = prefix / "share" / "mavo-survey"
        self.command = prefix / "bin" / "mavo-survey"

    def test_works_through_a_symbolic_link_from_any_directory(self):
        link = self.directory.parent / "a link"
        link.symlink_to(self.command)
        output = self.start_and_close(executable=link, working_directory="/")
        self.assertIn(f"reduced to {self.directory} (mavo-survey)\n", output)
        self.assertEqual(1, output.count("\nMAVO-Survey version "))

    def test_works_through_the_search_path_with_gtk_path_set(self):
        output = self.start_and_close(
            "-d1",
            executable="mavo-survey",
            working_directory="/",
            environment={
                "PATH": f"{self.command.parent}:{os.environ['PATH']}",
                "GTK_PATH": "/nowhere",
            },
        )
        self.assertIn("Debug level 1\n", output)


class StartingWithoutHandlersOfAddresses(Start):
    """The system has no program for links, but there is a command "open"."""

    schemes = ("http", "https", "mailto")

    def setUp(self):
        super().setUp()
        self.home = self.directory.parent / "home"
        commands = self.directory.parent / "commands"
        for made in (self.home, commands):
            made.mkdir()
        (commands / "open").symlink_to("/bin/true")
        self.environment = {
            "PATH": f"{commands}:{os.environ['PATH']}",
            "XDG_DATA_DIRS": str(self.directory.parent / "none"),
            "XDG_CONFIG_DIRS": str(self.directory.parent / "none"),
            "XDG_DATA_HOME": str(self.home / ".local" / "share"),
        }

    def start_at_home(self, *arguments):
        return self.start_and_close(*arguments, home=self.home, environment=self.environment)

    def test_opens_them_with_the_command_from_the_next_start_on(self):
        output = self.start_at_home()
        for scheme in self.schemes:
            self.assertIn(f"No default app for {scheme}!\n", output)
            self.assertNotIn(f"Failed to set up handler for {scheme}\n", output)
        output = self.start_at_home("-d2")
        for scheme in self.schemes:
            self.assertRegex(
                output, rf"(?m)^default app for {scheme} is open hack \(.*\): .*\bopen$"
            )
        self.assertNotIn("default app for", self.start_at_home("-d1"))

    def test_opens_a_clicked_link_with_the_command(self):
        command = self.directory.parent / "commands" / "open"
        opened = self.directory.parent / "opened"
        command.unlink()
        command.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$@\" >'{opened}'\n", encoding="utf-8")
        command.chmod(0o755)
        program = self.start(home=self.home, environment=self.environment)
        program.activate_menu("Help", "Contact MAVO")
        contact = program.dialog("Contact MAVO")
        contact.find("label", where=lambda label: "@" in label.text).click()
        wait_for("the command has been started", lambda: opened.exists() and opened.read_text())
        self.assertRegex(opened.read_text(encoding="utf-8"), r"\Amailto:[^@\s]+@[^@\s]+\n\Z")
        contact.find("push button", "Close").click()
        program.wait_for_no_dialog()

    def test_says_that_it_could_not_set_up_the_command(self):
        (self.home / ".config").write_text("not a directory", encoding="utf-8")
        (self.home / ".local").write_text("not a directory", encoding="utf-8")
        output = self.start_at_home()
        for scheme in self.schemes:
            self.assertIn(f"Failed to set up handler for {scheme}\n", output)


class StartingWhereOpenIsXdgOpen(Start):
    """The command "open" is a link to the real xdg-open, and no program opens links."""

    schemes = ("http", "https", "mailto")
    mark = "MAVO_STARTED_BY_THIS_TEST"

    def setUp(self):
        super().setUp()
        self.home = self.directory.parent / "home"
        self.applications = self.home / ".local" / "share" / "applications"
        self.associations = self.home / ".config" / "mimeapps.list"
        commands = self.directory.parent / "commands"
        for made in (self.applications, self.associations.parent, commands):
            made.mkdir(parents=True)
        (commands / "open").symlink_to(shutil.which("xdg-open"))
        self.environment = {
            "PATH": f"{commands}:{os.environ['PATH']}",
            "XDG_DATA_DIRS": str(self.directory.parent / "none"),
            "XDG_CONFIG_DIRS": str(self.directory.parent / "none"),
            "XDG_DATA_HOME": str(self.home / ".local" / "share"),
            self.mark: str(self.directory),
        }
        self.addCleanup(self.end_processes)

    def processes(self):
        """Returns the ids of the program's process and of all its descendants."""
        mark = f"{self.mark}={self.directory}".encode()
        found = []
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if mark in (process / "environ").read_bytes().split(b"\0"):
                    found.append(int(process.name))
            except OSError:
                continue  # it has ended, or belongs to another user
        return found

    def end_processes(self):
        while found := self.processes():
            for process in found:
                try:
                    os.kill(process, signal.SIGKILL)
                except ProcessLookupError:
                    continue
            time.sleep(0.05)

    def add_entries_of_an_earlier_start(self):
        """Writes the entries of a version that registered any "open", and one of the user."""
        lines = ["[Default Applications]"]
        for scheme, name in zip(self.schemes, ("AAAAAA", "BBBBBB", "CCCCCC")):
            (self.applications / f"userapp-open hack-{name}.desktop").write_text(
                "[Desktop Entry]\nEncoding=UTF-8\nVersion=1.0\nType=Application\nNoDisplay=true\n"
                "Exec=open %u\nName=open hack\nComment=Custom definition for open hack\n"
            )
            lines.append(f"x-scheme-handler/{scheme}=userapp-open hack-{name}.desktop")
        lines.append("text/plain=editor.desktop")
        self.associations.write_text("\n".join(lines) + "\n", encoding="utf-8")

    def start_here(self):
        return self.start(home=self.home, environment=self.environment)

    def expect_no_entries(self):
        self.assertEqual([], list(self.applications.glob("*.desktop")))
        if self.associations.exists():
            self.assertNotIn("open hack", self.associations.read_text(encoding="utf-8"))

    def test_registers_nothing_at_any_start(self):
        for _ in range(2):
            program = self.start_here()
            program.activate_menu("File", "Quit")
            self.assertEqual(0, program.wait_for_end())
            for scheme in self.schemes:
                self.assertIn(
                    f"No default app for {scheme}!\nFailed to set up handler for {scheme}\n",
                    program.output(),
                )
            self.expect_no_entries()

    def test_shows_the_address_of_a_link_and_starts_no_chain_of_processes(self):
        self.add_entries_of_an_earlier_start()
        program = self.start_here()
        program.activate_menu("Help", "Contact MAVO")
        before = len(self.processes())
        contact = program.dialog("Contact MAVO")
        contact.find("label", where=lambda label: "@" in label.text).click()
        message = program.message("No program could be found")
        time.sleep(3)  # a chain would have tens of processes by now
        self.assertLessEqual(len(self.processes()), before)
        message.find("push button", "Copy Address").click()
        contact.find("push button", "Close").click()
        program.wait_for_no_dialog()
        self.expect_no_entries()
        self.assertIn("editor.desktop", self.associations.read_text(encoding="utf-8"))



class StartingTwice(Start):
    def test_gives_each_process_a_separate_window(self):
        first = self.start()
        first.window()
        second = self.start()
        second.window()
        self.assertNotEqual(first.process.pid, second.process.pid)
        second.activate_menu("File", "Quit")
        self.assertEqual(0, second.wait_for_end())
        first.window()
        first.activate_menu("File", "Quit")
        self.assertEqual(0, first.wait_for_end())


class StartingWithArguments(Start):
    def test_debug_level_is_what_follows_d(self):
        for argument, level in (("-d3", 3), ("-d", 0), ("-dx", 0), ("-d-2", -2)):
            with self.subTest(argument=argument):
                output = self.start_and_close(argument)
                self.assertEqual([str(level)], re.findall(r"^Debug level (.*)$", output, re.M))
                self.assertIn(f'    argv[1] = "{argument}"\n', output)

    def test_debug_level_2_prints_the_handlers_of_addresses(self):
        output = self.start_and_close("-d2")
        self.assertTrue(re.search(r"^(default app for http is|No default app for http!)", output, re.M))

    def test_debug_level_below_0_is_silent_about_handlers(self):
        self.assertNotIn("No default app for", self.start_and_close("-d-1"))

    def test_a_file_cannot_be_opened_by_its_name(self):
        program = self.start("a survey.MAVO-Survey")
        self.assertNotEqual(0, program.wait_for_end())
        self.assertIn("can not open files", program.output())

    def test_an_argument_that_the_toolkit_does_not_know_ends_the_start(self):
        for arguments in (("--debug",), ("--sync", "-d3")):
            with self.subTest(arguments=arguments):
                program = self.start(*arguments)
                self.assertNotEqual(0, program.process.wait(timeout=30))
                self.assertNotIn("Debug level", program.output())


class StartingWithoutADisplay(Start):
    def test_ends_with_a_failure_and_no_window(self):
        environment = {k: v for k, v in os.environ.items() if k != "DISPLAY"}
        ended = subprocess.run(
            [self.directory / "MacOS" / "mavo-survey"],
            env={**environment, "HOME": str(self.directory.parent)},
            capture_output=True,
            timeout=30,
            check=False,
        )
        self.assertNotEqual(0, ended.returncode)
