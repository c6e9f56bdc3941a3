"""Journeys through the lists of the drop-down boxes, by keyboard."""

import time

from . import entry
from .keyboard import picked_in
from .screen import SCALE, press_key, screen_size
from .test_keyboard import KeyboardJourney
from .waiting import wait_for

PAUSE_OF_SEARCH = 1.1  # seconds after which a letter starts a new search
PAGES = {
    "Survey Info Part 1": ["Location", "Survey type", "Month", "Day", "Year", "Start time"],
    "Survey Info Part 2": [
        "Temperature units",
        "Average depth",
        "Maximum depth",
        "Visibility",
        "Current",
        "Habitat",
    ],
    "Listed Species": ["Species view"],
    "Unlisted Species": ["What to search in"],
}


class ListJourney(KeyboardJourney):
    def go_to(self, name):
        """Moves the focus to a box of the current page and returns the box."""
        for _ in range(40):
            if self.keyboard.station() == ("combo box", name):
                return self.program.panel_shown().find("combo box", name)
            before = self.keyboard.station()
            self.keyboard.press("Tab")
            wait_for(f"another than {before}", lambda: self.keyboard.station() != before)
        raise AssertionError(f"the focus does not reach {name!r}")

    def open_list(self):
        """Opens the list of the focused box and returns it."""
        self.keyboard.press("space")
        return self.program.popup_menu()

    def close_list(self, name):
        self.keyboard.press("Escape")
        self.keyboard.wait_for_focus(name)

    def type(self, text):
        for letter in text:
            press_key("space" if letter == " " else letter)

    def expect_pick(self, label, menu):
        wait_for(f"{label!r} is picked", lambda: picked_in(menu) == label)

    def expect_choice(self, label, box):
        wait_for(f"{box!r} shows {label!r}, not {box.chosen!r}", lambda: box.chosen == label)


class ChoosingFromLists(ListJourney):
    def setUp(self):
        super().setUp()
        self.program.open_panel("Survey Info Part 1")

    def test_fills_in_the_date_by_typing_into_closed_boxes(self):
        for name, text, label in (
            ("Month", "ju", "June"),
            ("Day", "12", "12"),
            ("Year", "2019", "2019"),
            ("Start time", "1 p", "1 PM"),
        ):
            box = self.go_to(name)
            self.type(text)
            self.expect_choice(label, box)
        month = self.go_to("Month")
        self.type("Ju")
        self.expect_choice("July", month)
        time.sleep(PAUSE_OF_SEARCH)
        self.type("o")
        self.expect_choice("October", month)

    def test_picks_what_is_typed_in_an_open_list(self):
        day = self.go_to("Day")
        menu = self.open_list()
        self.type("12")
        self.expect_pick("12", menu)
        self.assertEqual("", day.chosen)
        self.keyboard.press("Return", then="Day")
        self.expect_choice("12", day)
        menu = self.open_list()
        self.expect_pick("12", menu)
        self.type("3")
        self.expect_pick("30", menu)
        self.close_list("Day")
        self.assertEqual("12", day.chosen)

    def test_goes_through_a_grid_with_all_arrow_keys(self):
        day = self.go_to("Day")
        menu = self.open_list()
        self.expect_pick("1", menu)
        for key, label in (("Down", "8"), ("Right", "9"), ("Up", "2"), ("Left", "1")):
            self.keyboard.press(key)
            self.expect_pick(label, menu)
        self.keyboard.press("Down")
        self.expect_pick("8", menu)
        self.keyboard.press("Return", then="Day")
        self.expect_choice("8", day)

    def test_does_not_search_for_the_letters_of_shortcuts(self):
        month = self.go_to("Month")
        self.keyboard.press("Ctrl+d")
        self.keyboard.press("Alt+d", then="Day")
        self.assertEqual("", month.chosen)

    def test_ignores_the_wheel_of_the_mouse(self):
        day = self.go_to("Day")
        self.type("12")
        self.expect_choice("12", day)
        for down in (True, True, False):
            day.turn_wheel(down)
        self.keyboard.press("Tab", then="Year")  # arrives after the wheel
        self.assertEqual("12", day.chosen)


class ListsOnTheScreen(ListJourney):
    """Opens the list of every box."""

    def open_every_list(self):
        entry.enter_place_and_date(self.program, self.place)
        for page, names in PAGES.items():
            self.program.open_panel(page)
            for name in names:
                self.go_to(name)
                with self.subTest(name):
                    self.look_at(self.open_list(), name)
                self.close_list(name)

    def look_at(self, menu, name):
        self.assertEqual(name, menu.name)
        self.assertNotIn("", [item.name for item in menu.children()])
        x, y, width, height = wait_for("it does not move", menu.settled_extents)
        across, down = screen_size()
        self.assertGreaterEqual(min(x, y), 0)
        self.assertLessEqual((x + width) * SCALE, across)
        self.assertLessEqual((y + height) * SCALE, down)


class SeeingEveryList(ListsOnTheScreen):
    def test_inside_the_screen_with_a_name_for_each_row(self):
        self.open_every_list()


class SeeingLargeLists(ListsOnTheScreen):
    environment = {"GDK_DPI_SCALE": "2"}

    def test_inside_the_screen_with_a_name_for_each_row(self):
        self.open_every_list()
