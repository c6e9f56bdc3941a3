"""The screen: widgets with a role and a name that can be used.

A thin layer over AT-SPI. Widgets can change or disappear at any time, so each call queries
the program again. Only the role of a widget is cached.
"""

import functools
import os
import time

import gi

gi.require_version("Atspi", "2.0")
gi.require_version("Gdk", "3.0")
from gi.repository import Atspi, Gdk, GLib  # noqa: E402  the versions come first

from .waiting import PAUSE, wait_for  # noqa: E402

STATE = Atspi.StateType
DIALOGS = ("dialog", "alert", "file chooser")
WINDOWS = ("frame", *DIALOGS)
TREES = ("tree table", "table")
TEXTS = ("label", "static")
# Roles that newer releases of AT-SPI have renamed, and their names here.
RENAMED_ROLES = {"button": "push button"}
# Positions are in the program's pixels. Each of them may be several pixels of the screen.
SCALE = int(os.environ.get("GDK_SCALE", "1"))
KEYS = {
    "Return": Gdk.KEY_Return,
    "Left": Gdk.KEY_Left,
    "Right": Gdk.KEY_Right,
    "Down": Gdk.KEY_Down,
    "Up": Gdk.KEY_Up,
    "Home": Gdk.KEY_Home,
    "Escape": Gdk.KEY_Escape,
    "Tab": Gdk.KEY_Tab,
    "Menu": Gdk.KEY_Menu,
    "Page_Down": Gdk.KEY_Page_Down,
    "Page_Up": Gdk.KEY_Page_Up,
    "BackSpace": Gdk.KEY_BackSpace,
    "Delete": Gdk.KEY_Delete,
    "F1": Gdk.KEY_F1,
    "F4": Gdk.KEY_F4,
    "F10": Gdk.KEY_F10,
    "plus": Gdk.KEY_plus,
    "minus": Gdk.KEY_minus,
    "space": Gdk.KEY_space,
}
MODIFIERS = {"Alt": Gdk.KEY_Alt_L, "Ctrl": Gdk.KEY_Control_L, "Shift": Gdk.KEY_Shift_L}


class Thing:
    """A widget on the screen."""

    def __init__(self, accessible):
        self.accessible = accessible

    def __repr__(self):
        return f"{self.role} {self.name!r}"

    # --- properties ---

    @functools.cached_property
    def role(self):
        name = self.accessible.get_role_name()
        return RENAMED_ROLES.get(name, name)

    @property
    def name(self):
        return self.accessible.get_name() or ""

    @property
    def text(self):
        """Returns the text of a label or an entry."""
        interface = self.accessible.get_text_iface()
        if interface is None:
            return self.name
        return Atspi.Text.get_text(interface, 0, -1)

    def has(self, state):
        return self.accessible.get_state_set().contains(state)

    @property
    def is_shown(self):
        return self.has(STATE.SHOWING)

    @property
    def is_sensitive(self):
        return self.has(STATE.SENSITIVE)

    @property
    def is_checked(self):
        return self.has(STATE.CHECKED)

    @property
    def is_in_active_window(self):
        """Returns whether its window has the focus. Pop-up menus are not such windows."""
        above = self.accessible
        while above is not None and above.get_role_name() != "application":
            if above.get_role_name() in WINDOWS:
                return above.get_state_set().contains(STATE.ACTIVE)
            above = above.get_parent()
        return True

    @property
    def is_picked(self):
        """Returns whether an item of an open menu is selected."""
        return self.has(STATE.SELECTED) or self.has(STATE.FOCUSED)

    @property
    def extents(self):
        """Returns its rectangle on the screen in the program's pixels: x, y, width, height."""
        rect = Atspi.Component.get_extents(
            self.accessible.get_component_iface(), Atspi.CoordType.SCREEN
        )
        return rect.x, rect.y, rect.width, rect.height

    # --- children ---

    def children(self):
        count = self.accessible.get_child_count()
        found = (self.accessible.get_child_at_index(i) for i in range(count))
        return [Thing(child) for child in found if child is not None]

    def walk(self, into_trees=False):
        """Yields itself and all widgets in it; rows of trees only if requested."""
        yield self
        if into_trees or self.role not in TREES:
            for child in self.children():
                yield from child.walk(into_trees)

    def look_for(self, role, name=None, where=None):
        """Returns the first widget in it with that role and name, or None if there is none."""
        try:
            for thing in self.walk():
                if thing.role != role or name is not None and thing.name != name:
                    continue
                if where is None or where(thing):
                    return thing
        except GLib.Error:  # a widget disappeared during the search
            pass
        return None

    def find(self, role, name=None, where=None):
        """Like look_for, but waits for the widget."""

        def look():
            self.accessible.clear_cache()
            return self.look_for(role, name, where)

        return wait_for(f"{role} {name!r} in {self!r}", look)

    def find_any(self, roles, name):
        """Waits for a widget with that name and one of these roles."""

        def look():
            self.accessible.clear_cache()
            return next(filter(None, (self.look_for(role, name) for role in roles)), None)

        return wait_for(f"{' or '.join(roles)} {name!r} in {self!r}", look)

    def select(self, index):
        """Selects the child with that number of a notebook or list."""
        Atspi.Selection.select_child(self.accessible.get_selection_iface(), index)

    def labels(self):
        """Returns the texts of all visible labels in it."""
        return [thing.text for thing in self.walk() if thing.role in TEXTS and thing.is_shown]

    # --- using it ---

    def click(self, button=1):
        """Clicks on its middle with the mouse when it is sensitive and does not move.

        Does not use the action interface of the bus: if the action opens a dialog, the
        program does not answer on the bus until the dialog is closed.
        """
        wait_for(f"{self!r} can be used", lambda: self.is_shown and self.is_sensitive)
        # A window that has just opened is active once the window manager has placed it.
        wait_for(f"the window of {self!r} is active", lambda: self.is_in_active_window)
        x, y, width, height = wait_for(f"{self!r} does not move", self.settled_extents)
        x, y = (x + width // 2) * SCALE, (y + height // 2) * SCALE
        Atspi.generate_mouse_event(x, y, f"b{button}c")

    def choose_item(self):
        """Chooses an item of an open menu: points at it and presses Return.

        GTK 3.24.52 takes no click there that follows the one that opened the menu.
        """
        wait_for(f"{self!r} can be used", lambda: self.is_shown and self.is_sensitive)
        x, y, width, height = wait_for(f"{self!r} does not move", self.settled_extents)
        Atspi.generate_mouse_event((x + width // 2) * SCALE, (y + height // 2) * SCALE, "abs")
        wait_for(f"{self!r} is marked", lambda: self.has(STATE.SELECTED))
        press_key("Return")

    def turn_wheel(self, down=True):
        """Turns the wheel of the mouse by one step over its middle."""
        x, y, width, height = self.extents
        x, y = (x + width // 2) * SCALE, (y + height // 2) * SCALE
        Atspi.generate_mouse_event(x, y, "b5c" if down else "b4c")

    def settled_extents(self):
        """Returns its extents, or None if they have changed after a pause."""
        before = self.extents
        time.sleep(PAUSE)
        return before if before == self.extents else None

    def set_text(self, text):
        """Replaces the text of an entry."""
        wait_for(f"{self!r} can be used", lambda: self.is_sensitive)
        self.write(text)
        wait_for(f"{self!r} contains {text!r}", lambda: self.text == text)

    def write(self, text):
        """Like set_text, for an entry that may refuse the text."""
        Atspi.EditableText.set_text_contents(self.accessible.get_editable_text_iface(), text)

    def choices(self):
        """Returns the labels that a combo box offers."""
        menu = Thing(self.accessible.get_child_at_index(0))
        return [item.name for item in menu.children()]

    @property
    def chosen(self):
        """Returns the label that a combo box shows; empty if nothing is chosen."""
        chosen = Atspi.Selection.get_selected_child(self.accessible.get_selection_iface(), 0)
        return Thing(chosen).name if chosen else ""

    def choose(self, label):
        """Chooses the entry of a combo box with this label."""

        def offers():
            self.accessible.clear_cache()
            return label in self.choices()

        wait_for(f"{self!r} offers {label!r}", offers)
        Atspi.Selection.select_child(
            self.accessible.get_selection_iface(), self.choices().index(label)
        )

    def focus(self):
        Atspi.Component.grab_focus(self.accessible.get_component_iface())
        wait_for(f"{self!r} has the focus", lambda: self.has(STATE.FOCUSED))

    # --- trees ---

    def rows(self):
        """Yields the visible rows of a tree, each as a list of its cells."""
        self.accessible.clear_cache()
        table = self.accessible.get_table_iface()
        columns = Atspi.Table.get_n_columns(table)
        for row in range(Atspi.Table.get_n_rows(table)):
            cells = (Atspi.Table.get_accessible_at(table, row, n) for n in range(columns))
            yield [Thing(cell) for cell in cells]

    def find_row(self, text):
        """Returns the cells of the first row with this text in one of them."""

        def look():
            try:
                return next((row for row in self.rows() if text in [c.text for c in row]), None)
            except GLib.Error:
                return None

        return wait_for(f"row {text!r} in {self!r}", look)

    def scroll_to(self):
        """Scrolls to a cell and makes its row the tree's current one."""
        Atspi.Component.grab_focus(self.accessible.get_component_iface())
        wait_for(f"{self!r} is in view", lambda: self.is_shown and self.extents[1] >= 0)


def press_key(name):
    """Presses and releases a key: a letter, one of KEYS, or as in "Alt+s"."""
    *modifiers, key = name.split("+")
    symbol = KEYS.get(key) or Gdk.unicode_to_keyval(ord(key))
    code, level = place_on_keyboard(symbol)
    # The bus can hold Shift down, but as a locked modifier, which the X server drops when
    # another input device, such as the mouse, is used in between.
    if level == 1 and "Shift" not in modifiers:
        modifiers.append("Shift")
    held = [place_on_keyboard(MODIFIERS[modifier])[0] for modifier in modifiers]
    for modifier in held:
        Atspi.generate_keyboard_event(modifier, None, Atspi.KeySynthType.PRESS)
    Atspi.generate_keyboard_event(code, None, Atspi.KeySynthType.PRESSRELEASE)
    for modifier in reversed(held):
        Atspi.generate_keyboard_event(modifier, None, Atspi.KeySynthType.RELEASE)


def place_on_keyboard(symbol):
    """Returns code and level of the key with this symbol. Level 1 needs Shift."""
    Gdk.init([])
    keymap = Gdk.Keymap.get_for_display(Gdk.Display.get_default())
    found, keys = keymap.get_entries_for_keyval(symbol)
    assert found, f"no key has the symbol {Gdk.keyval_name(symbol)}"
    key = min(keys, key=lambda key: (key.group, key.level))
    assert key.level <= 1, f"{Gdk.keyval_name(symbol)} needs more than Shift"
    return key.keycode, key.level


def applications():
    """Yields the accessible applications on this display."""
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for index in range(desktop.get_child_count()):
        child = desktop.get_child_at_index(index)
        if child is not None:
            yield Thing(child)


def application_of(pid):
    """Returns the accessible application with this process id, or None."""
    for application in applications():
        try:
            if application.accessible.get_process_id() == pid:
                return application
        except GLib.Error:  # a program that has just ended
            pass
    return None


def screen_size():
    """Returns the width and the height of the display in pixels."""
    Gdk.init([])
    root = Gdk.get_default_root_window()
    return root.get_width(), root.get_height()


def picture_of(thing=None):
    """Returns a picture of the display, or of the area of `thing`."""
    Gdk.init([])
    root = Gdk.get_default_root_window()
    area = thing.settled_extents() if thing else None
    return Gdk.pixbuf_get_from_window(root, *(area or (0, 0, root.get_width(), root.get_height())))


def take_picture(path, thing=None):
    """Saves a picture of the display as a PNG file."""
    picture_of(thing).savev(str(path), "png", ["compression"], ["9"])


def move_pointer_away():
    """Moves the mouse to a corner of the display, where there is no tooltip."""
    Atspi.generate_mouse_event(0, 0, "abs")


def wait_until_still():
    """Waits until everything is drawn: two pictures in succession are the same."""

    def is_still():
        before = picture_of().get_pixels()
        time.sleep(0.25)
        return before == picture_of().get_pixels()

    wait_for("the display does not change", is_still)
