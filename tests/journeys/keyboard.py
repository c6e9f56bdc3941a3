"""The use of the program only by keyboard, and the widget that has the focus."""

import re

from gi.repository import Atspi, GLib

from .screen import Thing, press_key
from .waiting import wait_for


class Keyboard:
    """Presses keys and waits for their effects.

    The focused widget is known from the events that the accessibility bus sends to screen
    readers, because the bus does not list all widgets.
    """

    def __init__(self, program):
        self.program = program
        self.holder = None
        self.listener = Atspi.EventListener.new(self.on_focus)
        self.listener.register("object:state-changed:focused")

    def on_focus(self, event):
        # When the list of tabs gets the focus, the bus also reports its current tab.
        if event.detail1 and event.source.get_role_name() != "page tab":
            self.holder = Thing(event.source)

    def focused(self):
        """Returns the widget of the last focus event, or None before the first one."""
        while GLib.MainContext.default().iteration(False):
            pass
        return self.holder

    def wait_for_focus(self, name):
        wait_for(
            f"{name!r} has the keyboard, not {self.focused()!r}",
            lambda: self.focused() and self.focused().name == name,
        )

    def press(self, key, then=None):
        """Presses a key. `then` is the name of the widget that must have the focus after it."""
        press_key(key)
        if then:
            self.wait_for_focus(then)

    def type_text(self, text, field):
        """Types into the focused field."""
        for count, letter in enumerate(text, 1):
            press_key("space" if letter == " " else letter)
            wait_for(f"{text[:count]!r} is typed", lambda: field.text == text[:count])

    def choose(self, label, box):
        """Opens the list of a box that has the keyboard and goes to this label.

        Down on the closed box would choose each label on the way.
        """
        name = self.focused().name
        self.press("space")
        menu = self.program.popup_menu()
        self.type_into_menu(label, menu)
        self.choose_from_menu(label, menu)
        wait_for(f"{box!r} shows {label!r}", lambda: box.chosen == label)
        self.wait_for_focus(name)

    def type_into_menu(self, label, menu):
        """Goes to a row that begins like this label, by the letters that need no Shift key."""
        beginning = re.match("[A-Za-z0-9 -]*", label).group().rstrip().lower()
        for letter in beginning:
            press_key("space" if letter == " " else letter)
        wait_for(
            f"an item like {beginning!r} is picked",
            lambda: (picked_in(menu) or "").lower().startswith(beginning),
        )

    def choose_from_menu(self, label, menu):
        """Moves down in an open menu to this item and chooses it."""
        picked = picked_in(menu)
        while picked != label:
            self.press("Down")
            before = picked
            wait_for(f"another item than {before!r}", lambda: picked_in(menu) not in (before, None))
            picked = picked_in(menu)
        self.press("Return")

    def station(self):
        """Returns role and name of the focused widget."""
        return self.focused() and (self.holder.role, self.holder.name)

    def stations(self, most=40):
        """Returns the focused widgets after each Tab until the first one has the focus again."""
        seen = []
        while len(seen) < most:
            before = self.station()
            press_key("Tab")
            wait_for(f"another than {before}", lambda: self.station() != before)
            if self.station() in seen:
                return seen
            seen.append(self.station())
        raise AssertionError(f"the focus does not return to the first widget: {seen}")


def picked_in(menu):
    """Returns the name of the selected item of an open menu, or None if there is none."""
    menu.accessible.clear_cache()
    return next((item.name for item in menu.children() if item.is_picked), None)
