"""The screen for random use: the widgets that can be used at a moment."""

from dataclasses import dataclass, field

from .screen import DIALOGS, SCALE, TEXTS, TREES, screen_size

BUTTONS = "push button", "toggle button", "check box", "radio button"
MENU_ITEMS = "menu item", "check menu item", "radio menu item"
# The contents of these are ignored.
CLOSED = *TREES, *TEXTS, *BUTTONS, *MENU_ITEMS, "combo box", "text", "icon", "separator"
# The weight of each kind of widget.
WEIGHTS = {
    "push button": 3,
    "toggle button": 1,
    "check box": 2,
    "radio button": 1,
    "page tab": 2,
    "menu": 2,
    "text": 5,
    "combo box": 3,
    "tree table": 14,
    "table": 14,
    "menu item": 1,
    "check menu item": 1,
    "radio menu item": 1,
}


@dataclass(frozen=True)
class Offer:
    """A widget on the screen that can be used."""

    role: str
    name: str
    extents: tuple
    accessible: object = field(compare=False, repr=False)

    def __str__(self):
        return f"{self.role} {self.name!r}"


@dataclass(frozen=True)
class Look:
    """The usable widgets. `kind` is "window", "dialog", "file chooser" or "menu"."""

    kind: str
    title: str
    words: str
    offers: tuple


def is_inside(extents, area):
    """Returns whether the middle of a rectangle is in another one."""
    x, y, width, height = extents
    x, y = x + width // 2, y + height // 2
    return area[0] <= x < area[0] + area[2] and area[1] <= y < area[1] + area[3]


class Screen:
    """Reads the screen of the program."""

    def __init__(self, program):
        self.program = program
        width, height = screen_size()
        self.area = 0, 0, width // SCALE, height // SCALE

    def look(self):
        """Returns the current screen, or None while the program shows no window."""
        windows = self.program.windows()
        popups = [window for window in windows if window.role == "window"]
        windows = [window for window in windows if window.role != "window"]
        if not windows:
            return None
        window = next((w for w in reversed(windows) if w.role in DIALOGS), windows[-1])
        shown = list(self.shown(window))
        items = [thing for thing in shown if thing.role in MENU_ITEMS]
        items += [i for popup in popups for i in self.shown(popup) if i.role in MENU_ITEMS]
        items = tuple(self.offers(items, self.area))
        if items:
            return Look("menu", window.name, "", items)
        if window.role == "frame":
            return Look("window", window.name, "", tuple(self.offers(shown, window.extents)))
        kind = "file chooser" if window.role == "file chooser" else "dialog"
        words = "\n".join(thing.text for thing in shown if thing.role in TEXTS)
        if kind == "file chooser":  # its toggle buttons lead to other directories
            shown = [thing for thing in shown if thing.role != "toggle button"]
        return Look(kind, window.name, words, tuple(self.offers(shown, window.extents)))

    def shown(self, thing):
        """Yields it and all visible widgets in it, without rows of trees and closed lists."""
        thing.accessible.clear_cache()  # clearing the cache of its parent is not enough
        if not thing.is_shown:
            return
        yield thing
        if thing.role not in CLOSED:
            for child in thing.children():
                yield from self.shown(child)

    def offers(self, things, area):
        """Yields those of these widgets that can be used in `area`."""
        for thing in things:
            if thing.role not in WEIGHTS or not thing.is_sensitive:
                continue
            extents = thing.extents
            if is_inside(extents, area) and is_inside(extents, self.area):
                yield Offer(thing.role, thing.name, extents, thing.accessible)
