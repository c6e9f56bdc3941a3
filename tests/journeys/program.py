"""The running program, with a separate home directory, used through its window."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile

from .screen import DIALOGS, STATE, application_of
from .waiting import wait_for


class Program:
    """A process of the program, from its start to its end.

    `application_dir` is the directory that contains MacOS, resources and data-files.
    `home` is its home directory; by default a new one, which is removed at the end.
    `executable` is the command that starts it; by default the full path. `environment` has
    additional variables. `separate_errors` excludes standard error from the output.
    """

    def __init__(
        self,
        application_dir,
        home=None,
        arguments=(),
        executable=None,
        environment=None,
        working_directory=None,
        separate_errors=False,
    ):
        self.application_dir = application_dir
        self.own_home = home is None
        self.home = pathlib.Path(home or tempfile.mkdtemp(prefix="mavo-journey-"))
        self.output_path = self.home / "output.txt"
        self.errors_path = self.home / "errors.txt" if separate_errors else self.output_path
        found = pathlib.Path(application_dir).resolve() / "MacOS" / "mavo-survey"
        with open(self.output_path, "wb") as output, open(self.errors_path, "ab") as errors:
            self.process = subprocess.Popen(
                [executable or found, *arguments],
                cwd=working_directory,
                env=self.environment(environment or {}),
                stdout=output,
                stderr=errors if separate_errors else subprocess.STDOUT,
            )

    def environment(self, additional):
        own = {
            "HOME": str(self.home),
            "XDG_CONFIG_HOME": str(self.home / ".config"),
            "NO_AT_BRIDGE": "0",
        }
        return {**os.environ, **own, **additional}

    def __enter__(self):
        return self

    def __exit__(self, kind, value, traceback):
        if kind is not None:
            print(f"The program's output:\n{self.output().split('Proceeding...')[-1]}")
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        if self.own_home:
            shutil.rmtree(self.home, ignore_errors=True)

    def output(self):
        """Returns everything that it has printed so far."""
        return self.output_path.read_text(errors="replace")

    def errors(self):
        """Returns everything that it has printed to standard error so far."""
        return self.errors_path.read_text(errors="replace")

    def version(self):
        """Returns the version that the program reports."""
        return re.search(r"^MAVO-Survey version ([\d.]+), built ", self.output(), re.M).group(1)

    def again(self):
        """Returns the same program for another start in the same home."""
        return Program(self.application_dir, home=self.home)

    def wait_for_end(self):
        """Waits for its end and returns its exit status."""
        return self.process.wait(timeout=30)

    # --- its windows ---

    def application(self):
        """Returns its accessible application, or None if it is not on the accessibility bus."""
        return application_of(self.process.pid)

    def windows(self):
        """Returns all visible windows and dialogs, the newest last."""
        assert self.process.poll() is None, f"the program has ended: {self.output()}"
        application = self.application()
        if application is None:
            return []
        application.accessible.clear_cache()
        return [window for window in application.children() if window.is_shown]

    def window(self, title_end="MAVO Survey"):
        """Returns the survey's window. Its title may begin with date and location."""

        def look():
            frames = [w for w in self.windows() if w.role == "frame"]
            return next((w for w in frames if w.name.endswith(title_end)), None)

        return wait_for("the program's window", look)

    def dialogs(self):
        return [window for window in self.windows() if window.role in DIALOGS]

    def dialog(self, title):
        """Returns the dialog with this title. Messages hide their titles: see `message`."""

        def look():
            return next((dialog for dialog in self.dialogs() if dialog.name == title), None)

        return wait_for(f"dialog {title!r}", look)

    def message(self, words):
        """Returns the message whose text contains these words."""

        def look():
            return next((d for d in self.dialogs() if words in "\n".join(d.labels())), None)

        return wait_for(f"message with {words!r}", look)

    def answer(self, words, button, other_follows=False):
        """Presses a button of the message with these words, and returns its whole text.

        Returns once no dialog is left, unless another one follows.
        """
        message = self.message(words)
        text = "\n".join(message.labels())
        message.find("push button", button).click()
        if not other_follows:
            self.wait_for_no_dialog()
        return text

    def wait_for_no_dialog(self):
        wait_for(
            "all dialogs are gone", lambda: self.process.poll() is not None or not self.dialogs()
        )

    # --- its menus and panels ---

    def activate_menu(self, menu, item):
        """Chooses an item of the menu bar."""
        menu = self.window().find("menu", menu)
        menu.click()
        menu.find("menu item", item).choose_item()

    def open_panel(self, tab):
        """Opens a panel of the notebook and returns it."""
        notebook = self.window().find("page tab list")
        page = notebook.find("page tab", tab)
        index = [child.name for child in notebook.children()].index(tab)
        notebook.select(index)
        wait_for(f"panel {tab!r} is shown", lambda: page.has(STATE.SELECTED))
        return page

    def panel_shown(self):
        """Returns the current page of the notebook."""
        notebook = self.window().find("page tab list")
        return notebook.find("page tab", where=lambda page: page.has(STATE.SELECTED))

    def wait_for_other_panel(self, name):
        """Waits until the current panel has another name than this, and returns its name."""

        def look():
            shown = self.panel_shown().name
            return shown if shown != name else None

        return wait_for(f"another panel than {name!r}", look)

    def popup_menu(self):
        """Returns the open pop-up menu."""

        def look():
            for window in self.windows():
                menu = window if window.role == "menu" else window.look_for("menu")
                if menu and menu.is_shown and window.role == "window":
                    return menu
            return None

        return wait_for("a menu pops up", look)

    # --- the survey store ---

    def saved_surveys(self):
        """Returns the paths of all saved surveys, by state and name."""
        return sorted((self.home / "Documents" / "MAVO-Survey").glob("*/*.MAVO-Survey"))
