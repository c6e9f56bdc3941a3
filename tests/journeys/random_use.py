"""random_use [--seed N] [--steps M] [--minutes K] APPLICATION_DIR: uses the program at random.

Each step uses a widget on the screen, by mouse or keyboard, or changes the store or the
server. After each step the program must run and respond, standard error must have no
warning of the toolkit, and the survey store must be correct: see `StoreWatch`. All choices
depend only on the seed and on the screen. A failure shows the seed and the last steps.

The program must use a server on this machine. MAVO_SERVER_PORT and MAVO_SURVEY_SERVER are
as for the journeys. The command random-use in the build directory sets them.
"""

import argparse
import collections
import contextlib
import os
import pathlib
import random
import re
import shutil
import sys
import tempfile
import time

from .program import Program
from .random_screen import WEIGHTS, Screen
from .random_server import RandomServer
from .random_store import TEXTS, OtherPrograms, StoreWatch
from .reference import a_place
from .screen import SCALE, TREES, Atspi, GLib, Thing, press_key

DEADLINE = 60.0  # seconds until the program must answer
RESTLESS = 3.0  # seconds after which a screen that keeps changing is used nevertheless
PAUSE = 0.015
LOGGED = 25  # the number of steps that a failure shows
WAY_OUT = 5  # steps; the window manager reports late that the user closed a window with Alt+F4

TOOLKIT_WARNING = re.compile(
    r"^(\(.*:\d+\): \S+-|\*\* \(.*:\d+\): |\*\* )(WARNING|CRITICAL|ERROR)( \*\*)?:|"
    r"runtime error:|AddressSanitizer|terminate called"
)
# Lines that look like a warning of the toolkit but do not indicate a fault.
BENIGN = (
    # The toolkit reports each page that is removed from a notebook to the accessibility bus,
    # and asks the notebook for its tab, which no longer exists.
    r"Gtk-CRITICAL.*gtk_notebook_get_tab_label: assertion 'list != NULL' failed",
)

LEAVING = "Quit", "Close Survey", "Quit Program"
# The weights of widgets with these names. Widgets that lead to other pages or dialogs are
# used more often, widgets that end the program or only turn pages less often.
NAMES = {
    **dict.fromkeys(("Edit", "View", "Mark For Upload", "Un-Mark For Upload"), 40),
    **dict.fromkeys(("Upload", "Delete", "Open", "Yes"), 4),
    **dict.fromkeys(("Start/Open Survey", "Saved surveys", "Upload All Ready Surveys"), 4),
    **dict.fromkeys(("Next", "Back", "Files"), 0.5),
    **dict.fromkeys(LEAVING, 0.2),
}
LEAVING_KEYS = "Ctrl+q", "Ctrl+w", "Alt+F4"
WINDOW_KEYS = (
    *("Tab", "Tab", "Shift+Tab", "Up", "Down", "Down", "Left", "Right", "Home", "Return"),
    *("Escape", "space", "plus", "minus", "Menu", "Page_Down", "Page_Up", "Shift+F10", "F1"),
    *("Ctrl+Page_Down", "Ctrl+Page_Up", "Ctrl+f", "Ctrl+n", "Ctrl+o", "Ctrl+s", "F10"),
    *("BackSpace", "Delete", "a", "1", "2", "0", "x", "Alt+n", "Alt+b", "Alt+f", "Alt+m"),
    *LEAVING_KEYS,
)
MENU_KEYS = "Up", "Down", "Left", "Right", "Home", "Return", "Escape", "space", "a", "1"
DIALOG_KEYS = "Tab", "Up", "Down", "Left", "Return", "Escape", "space"


class Failure(AssertionError):
    """A fault of the program. The text describes it."""


class RandomUse:
    """One run: as many steps as `steps` and `minutes` allow."""

    def __init__(self, application_dir, seed, steps, minutes):
        self.application_dir = pathlib.Path(application_dir)
        self.seed, self.steps = seed, steps
        self.end = time.monotonic() + 60 * minutes
        self.random = random.Random(seed)
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="mavo-random-"))
        self.log = collections.deque(maxlen=LOGGED)
        self.count = 0
        data_files = self.application_dir / "data-files"
        root = self.home / "Documents" / "MAVO-Survey"
        self.others = OtherPrograms(root, a_place(data_files), data_files, self.random)
        self.server = RandomServer(self.home / "server", data_files, self.random)
        self.store = StoreWatch(root)
        self.program = self.screen = None
        self.output_seen = 0
        self.led_out = 0  # the last step that may lead out of the program

    # --- the run ---

    def run(self):
        """Takes all steps. Raises a Failure that says how to repeat the run if it finds a fault."""
        try:
            with self.server:
                self.take_steps()
        except (AssertionError, GLib.Error, OSError) as reason:
            raise Failure(self.report(reason)) from reason
        finally:
            if self.program:
                self.stop_program()
            shutil.rmtree(self.home, ignore_errors=True)

    def take_steps(self):
        for _ in range(4):
            self.others.put_survey()
        self.store.others_acted()
        self.server.act()
        self.start_program()
        look = self.settled_look()
        while self.count < self.steps and time.monotonic() < self.end:
            self.count += 1
            if self.act_behind_the_program():
                continue
            look = self.step(look)
            if look is None:
                self.start_program()
                look = self.settled_look()

    def act_behind_the_program(self):
        """In some steps, changes the store or the server. Does not change the screen."""
        draw = self.random.random()
        if draw < 0.10:
            self.note(self.others.act())
            self.store.others_acted()
        elif draw < 0.14:
            self.note(self.server.act())
        return draw < 0.14

    def step(self, look):
        """Uses the program. Returns the new screen, or None if the program has ended."""
        if self.random.random() < 0.003:
            self.note("killed the program")
            self.stop_program()
            self.store.others_acted()
            return None
        may_delete = "Really delete this survey?" in look.words
        self.use(look)
        after = self.settled_look()
        self.check(may_delete)
        return after

    def note(self, text):
        self.log.append(f"{self.count}: {text}")

    def report(self, reason):
        steps = "\n".join(self.log)
        output = errors = ""
        if self.program:
            output = self.program.output().split("Proceeding...")[-1][-3000:]
            errors = self.program.errors()[-5000:]
        return (
            f"{reason}\nSeed {self.seed}, step {self.count}; the last steps:\n{steps}\n"
            f"Standard output ends with:\n{output}\nStandard error ends with:\n{errors}\n"
            f"To repeat it: random-use --seed {self.seed} --steps {self.count}"
        )

    # --- the program ---

    def start_program(self):
        opener = self.home / "bin" / "open"  # opens links that are clicked
        opener.parent.mkdir(exist_ok=True)
        opener.write_text("#!/bin/sh\nexit 0\n")
        opener.chmod(0o755)
        environment = {"PATH": f"{opener.parent}:{os.environ['PATH']}"}
        self.program = Program(
            self.application_dir,
            home=self.home,
            arguments=["-d1"],
            environment=environment,
            separate_errors=True,
        )
        self.screen = Screen(self.program)
        self.store.program_starts()
        self.output_seen = 0
        self.note("started the program")

    def stop_program(self):
        if self.program.process.poll() is None:
            self.program.process.kill()
        self.program.process.wait()

    def settled_look(self):
        """Returns the screen when it is stable, or None if the program has ended."""
        end, restless = time.monotonic() + DEADLINE, time.monotonic() + RESTLESS
        before = None
        while time.monotonic() < end:
            if self.program.process.poll() is not None:
                self.check_end()
                return None
            look = None
            with contextlib.suppress(GLib.Error, TypeError, AssertionError):  # a widget is gone
                look = self.screen.look()
            if look and (look == before or time.monotonic() > restless):
                return look
            before = look
            time.sleep(PAUSE)
        raise Failure(f"the program has not answered for {DEADLINE:g} seconds")

    # --- using it ---

    def use(self, look):
        """Uses one widget of the screen."""
        keys = {"window": WINDOW_KEYS, "menu": MENU_KEYS}.get(look.kind, DIALOG_KEYS)
        if not look.offers or self.random.random() < 0.15:
            self.press(self.random.choice(keys))
            return
        weights = [WEIGHTS[offer.role] * NAMES.get(offer.name, 1) for offer in look.offers]
        offer = self.random.choices(look.offers, weights)[0]
        if offer.name in LEAVING or look.kind == "dialog":
            self.led_out = self.count
        if offer.role == "text":
            self.write_into(offer)
        elif offer.role in TREES:
            self.use_tree(offer, look.kind)
        else:
            self.click(offer)

    def press(self, key):
        self.note(f"pressed {key}")
        self.led_out = self.count  # a key may press any button
        press_key(key)

    def click(self, offer, button=1, clicks="c", spot=None):
        x, y, width, height = offer.extents
        x, y = spot or (x + width // 2, y + height // 2)
        self.note(f"clicked {offer} at {x},{y} ({button}{clicks})")
        Atspi.generate_mouse_event(x * SCALE, y * SCALE, f"b{button}{clicks}")

    def write_into(self, offer):
        """Types a text, or appends a few characters."""
        text = self.random.choice(TEXTS)
        if self.random.random() < 0.3:
            self.click(offer)
            for key in self.random.choices(("a", "1", "space", "BackSpace", "Left", "Tab"), k=3):
                self.press(key)
            return
        self.note(f"wrote {text!r} into {offer}")
        with contextlib.suppress(GLib.Error):
            Thing(offer.accessible).write(text)

    def use_tree(self, offer, kind):
        x, y, width, height = offer.extents
        # Most rows are at the top.
        spot = x + int(width * self.random.random()), y + int(height * self.random.random() ** 2)
        # The menu of a file in a file chooser belongs to the desktop.
        ways = ((1, "c"), (1, "d"), (4, "c"), (5, "c")) + (((3, "c"),) if kind == "window" else ())
        weights = (8, 1, 1, 2, 1)[: len(ways)]
        button, clicks = self.random.choices(ways, weights)[0]
        self.click(offer, button, clicks, spot)

    # --- checks ---

    def check(self, may_delete):
        output = self.program.output()
        new, self.output_seen = output[self.output_seen :], len(output)
        wrong = [*self.warnings(), *self.store.program_acted(new, may_delete)]
        if wrong:
            raise Failure("\n".join(wrong))

    def check_end(self):
        status = self.program.process.returncode
        if status != 0 or self.count > self.led_out + WAY_OUT:
            raise Failure(f"the program has ended with status {status}")
        wrong = self.warnings()
        if wrong:
            raise Failure("\n".join(wrong))

    def warnings(self):
        return toolkit_warnings(self.program.errors())


def toolkit_warnings(errors):
    """Returns the lines of standard error that the toolkit or a sanitizer wrote."""
    return [
        line
        for line in errors.splitlines()
        if TOOLKIT_WARNING.search(line) and not any(re.search(b, line) for b in BENIGN)
    ]


def main():
    parser = argparse.ArgumentParser(prog="random-use")
    parser.add_argument("--seed", type=int, default=time.time_ns() // 1000 % 1_000_000)
    parser.add_argument("--steps", type=int, default=sys.maxsize)
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("application_dir", metavar="APPLICATION_DIR")
    given = parser.parse_args()
    use = RandomUse(given.application_dir, given.seed, given.steps, given.minutes)
    try:
        use.run()
    except Failure as failure:
        print(failure, file=sys.stderr)
        return 1
    print(f"Seed {given.seed}: {use.count} steps, no fault found")
    return 0


if __name__ == "__main__":
    sys.exit(main())
