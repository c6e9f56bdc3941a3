"""Journeys without a mouse, and with a screen reader."""

import re

from . import document, entry
from .entry import code_of, tree_in
from .keyboard import Keyboard
from .quick_keys import type_quickly
from .reference import labels
from .screen import STATE, Thing
from .test_journeys import DATA_FILES, PANELS, Journey
from .waiting import wait_for


class KeyboardJourney(Journey):
    """A journey that uses the program with the keyboard."""

    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard(self.program)
        wait_for("the window is active", lambda: self.program.window().has(STATE.ACTIVE))

    def next_panel(self, name):
        before = self.program.panel_shown().name
        self.keyboard.press("Alt+n")
        self.assertEqual(name, self.program.wait_for_other_panel(before))
        return self.program.panel_shown()


class UsingTheKeyboardOnly(KeyboardJourney):
    def test_leads_from_the_first_field_to_a_survey_marked_ready(self):
        self.next_panel("Member Info")
        self.enter_member()
        self.enter_place_and_date()
        self.enter_conditions(self.next_panel("Survey Info Part 2"))
        self.mark_listed_species(self.next_panel("Listed Species"))
        self.mark_found_species(self.next_panel("Unlisted Species"))
        summary = self.next_panel("Confirmation").labels()
        self.assertIn("Please check that all information is correct.", summary)
        self.keyboard.press("Alt+r", then="OK")
        self.keyboard.press("Return")
        self.program.wait_for_no_dialog()
        (path,) = self.program.saved_surveys()
        self.assertEqual("Ready To Upload", path.parent.name)
        self.keyboard.press("Alt+f")
        self.keyboard.press("q")
        self.expect_end()

    def enter_member(self):
        panel, keyboard = self.program.panel_shown(), self.keyboard
        keyboard.wait_for_focus("Member number")
        keyboard.type_text("1234", panel.find("text", "Member number"))
        keyboard.press("Return", then="Last name")
        keyboard.type_text("Diver", panel.find("text", "Last name"))
        keyboard.press("Return", then="Location")

    def enter_place_and_date(self):
        panel = self.program.panel_shown()
        self.assertEqual("Survey Info Part 1", panel.name)
        place = self.place
        self.fill(panel, "Location", place.subregion_name, "Survey type")
        self.fill(panel, "Survey type", place.type_name, "Month")
        self.fill(panel, "Month", "February", "Day")
        self.fill(panel, "Day", "3", "Year")
        self.fill(panel, "Year", "2021", "Start time")
        self.fill(panel, "Start time", "9 AM", "Zone code")
        self.keyboard.type_text(place.zone_code, panel.find("text", "Zone code"))

    def fill(self, panel, box, label, following):
        """Chooses a label in the focused box and moves to the next field."""
        self.keyboard.choose(label, panel.find("combo box", box))
        self.keyboard.press("Tab", then=following)

    def enter_conditions(self, panel):
        keyboard = self.keyboard
        keyboard.wait_for_focus("Surface temperature")
        for field, text, following in (
            ("Surface temperature", entry.SURFACE, "Bottom temperature"),
            ("Bottom temperature", entry.BOTTOM, "Temperature units"),
        ):
            keyboard.type_text(text, panel.find("text", field))
            keyboard.press("Tab", then=following)
        self.fill(panel, "Temperature units", "Celsius", "Bottom time in minutes")
        keyboard.type_text(entry.MINUTES, panel.find("text", "Bottom time in minutes"))
        keyboard.press("Tab", then="Average depth")
        for box, group, following in (
            ("Average depth", "depth", "Maximum depth"),
            ("Maximum depth", "depth", "Visibility"),
            ("Visibility", "visibility", "Current"),
            ("Current", "current", "Habitat"),
        ):
            self.fill(panel, box, labels(DATA_FILES, group)[entry.CHOICE][1], following)
        keyboard.choose(self.place.habitat_name, panel.find("combo box", "Habitat"))

    def mark_listed_species(self, panel):
        """Unfolds the first family, marks its first species, folds it and unfolds it again."""
        tree = tree_in(panel, "Species of this view")
        species = next(iter(self.place.families.values()))[0][0]
        self.keyboard.press("Alt+p", then="Species of this view")
        self.keyboard.press("Home")
        folded = len(list(tree.rows()))
        self.keyboard.press("plus")
        tree.find_row(code_of(species))
        self.mark_next(tree, species, self.place.abundances[1][1])
        self.keyboard.press("Up")
        self.keyboard.press("minus")
        wait_for("the family is folded", lambda: len(list(tree.rows())) == folded)
        self.keyboard.press("plus")
        tree.find_row(code_of(species))

    def mark_found_species(self, panel):
        """Finds the last listed species by its number and marks it."""
        species = list(self.place.families.values())[-1][-1][0]
        self.keyboard.wait_for_focus("Search for a species")
        self.keyboard.press("Tab", then="What to search in")
        self.keyboard.choose("Species Code", panel.find("combo box", "What to search in"))
        self.keyboard.press("Alt+c", then="Search for a species")
        self.keyboard.type_text(str(species), panel.find("text", "Search for a species"))
        self.keyboard.press("Alt+m", then="Matching species")
        tree = tree_in(panel, "Matching species")
        tree.find_row(code_of(species))
        self.keyboard.press("Home")
        self.mark_next(tree, species, self.place.abundances[0][1])

    def mark_next(self, tree, species, label):
        """Marks the species in the row below the current one, through its menu."""
        self.keyboard.press("Down")
        self.keyboard.press("Return")
        self.keyboard.choose_from_menu(label, self.program.popup_menu())
        entry.wait_until_marked(tree, species, label)

    def test_reaches_every_panel_from_the_tabs(self):
        self.next_panel("Member Info")
        self.keyboard.wait_for_focus("Member number")
        for before, panel in zip(PANELS[1:], PANELS[2:]):
            self.keyboard.press("Ctrl+Alt+Page_Down")
            self.assertEqual(panel, self.program.wait_for_other_panel(before))


class SavingKeystrokes(KeyboardJourney):
    def open_tree(self):
        """Opens the tree of listed species, moves the focus to it and returns it."""
        entry.enter_place_and_date(self.program, self.place)
        panel = self.program.open_panel("Listed Species")
        self.keyboard.press("Alt+p", then="Species of this view")
        return tree_in(panel, "Species of this view")

    def test_marks_a_species_by_letters_of_its_name_and_of_its_number(self):
        tree = self.open_tree()
        number, name = list(self.place.families.values())[-1][-1]
        label = self.place.abundances[1][1]
        self.keyboard.press(name[0].lower(), then="Find a name")
        for letter in name[1:].lower():
            self.keyboard.press("space" if letter == " " else letter)
        self.keyboard.press("Return")
        self.program.popup_menu()
        self.keyboard.press(label[0].lower())
        entry.wait_until_marked(tree, number, label)
        self.keyboard.wait_for_focus("Species of this view")

    def test_turns_the_page_inside_a_tree(self):
        self.open_tree()
        self.keyboard.press("Ctrl+Page_Down", then="Search for a species")
        self.keyboard.press("Ctrl+Page_Up")
        self.assertEqual("Listed Species", self.program.wait_for_other_panel("Unlisted Species"))

    def test_goes_from_the_search_for_zones_to_the_first_one_found(self):
        entry.enter_place_and_date(self.program, self.place)
        panel = self.program.panel_shown()
        self.keyboard.press("Alt+a", then="Search names of zones")
        search = panel.find("text", "Search names of zones")
        self.keyboard.type_text(self.place.zone_name.lower(), search)
        self.keyboard.press("Down", then="Geographic zones")
        code = panel.find("text", "Zone code")
        wait_for("the zone's code is filled in", lambda: code.text == self.place.zone_code)
        self.keyboard.press("Alt+a", then="Search names of zones")
        self.keyboard.press("Escape")
        wait_for("the search is empty", lambda: search.text == "")

    def test_marks_a_species_that_a_search_has_found(self):
        entry.enter_place_and_date(self.program, self.place)
        panel = self.program.open_panel("Unlisted Species")
        number, name = list(self.place.families.values())[-1][-1]
        label = self.place.abundances[0][1]
        self.keyboard.press("Alt+c", then="Search for a species")
        self.keyboard.type_text(name.lower(), panel.find("text", "Search for a species"))
        self.keyboard.press("Return", then="Matching species")
        self.keyboard.press("Return")
        self.program.popup_menu()
        self.keyboard.press(label[0].lower())
        entry.wait_until_marked(tree_in(panel, "Matching species"), number, label)

    def test_goes_from_the_verdict_to_what_is_missing(self):
        self.open_tree()
        self.keyboard.press("Ctrl+Page_Down", then="Search for a species")
        self.keyboard.press("Ctrl+Page_Down")
        wait_for("the verdict has the keyboard", self.verdict_has_the_keyboard)
        self.keyboard.press("Return", then="Member number")
        self.assertEqual("Member Info", self.program.panel_shown().name)

    def verdict_has_the_keyboard(self):
        role, name = self.keyboard.station() or ("", "")
        return role == "push button" and name.endswith(" entries are missing or need a look")

    def test_goes_through_the_summary_without_folding_a_family(self):
        entry.enter_all(self.program, self.place)
        panel = self.program.open_panel("Confirmation")
        tree = tree_in(panel, "Listed species that you have marked")
        numbers = [number for number, _ in entry.species_to_mark(self.place)]
        self.assertEqual(2 * len(numbers), len(list(tree.rows())))
        panel.find("push button", "Complete").focus()
        self.keyboard.press("Tab", then="Listed species that you have marked")
        for key in ["Home"] + ["Down"] * 5 + ["Up"] * 5:
            self.keyboard.press(key)
        for number in numbers:
            tree.find_row(code_of(number))


class TypingFast(KeyboardJourney):
    """Marks species by their whole names, with keys that do not wait for the program."""

    COUNT = 10

    def species_with_plain_names(self):
        """Returns (number, name) of species whose names are not the beginning of another name."""
        listed = [species for family in self.place.families.values() for species in family]
        names = [name.lower() for _, name in listed]
        plain = [
            (number, name.lower())
            for number, name in listed
            if re.fullmatch("[A-Za-z -]+", name)
            and sum(other.startswith(name.lower()) for other in names) == 1
        ]
        return plain[:: len(plain) // self.COUNT][: self.COUNT]

    def type_all(self, pause):
        """Types all names and numbers, saves, and expects exactly these marks in the survey."""
        entry.enter_place_and_date(self.program, self.place)
        self.program.open_panel("Listed Species")
        self.keyboard.press("Alt+p", then="Species of this view")
        keys, expected = [], []
        for count, (number, name) in enumerate(self.species_with_plain_names()):
            choices = self.place.abundances
            abundance, label, response = choices[count % len(choices)]
            keys += [*name, "Return", label[0].lower()]
            expected.append((f"{number:04d}", str(abundance), str(response)))
        type_quickly(keys, pause)
        self.keyboard.press("Alt+s")
        self.program.message("Survey saved to")
        (path,) = self.program.saved_surveys()
        self.assertEqual(self.COUNT, len(expected))
        self.assertEqual(sorted(expected), document.species_of(path))

    def test_loses_no_key_without_any_pause(self):
        self.type_all(0)

    def test_loses_no_key_at_2_milliseconds(self):
        self.type_all(0.002)

    def test_loses_no_key_at_5_milliseconds(self):
        self.type_all(0.005)

    def test_loses_no_key_at_20_milliseconds(self):
        self.type_all(0.02)


class ListeningToAScreenReader(KeyboardJourney):
    def test_finds_a_name_for_each_widget_that_gets_the_focus(self):
        entry.enter_all(self.program, self.place)
        stops = {}
        for panel in PANELS:
            self.program.open_panel(panel)
            stops[panel] = self.keyboard.stations()
            self.assertEqual([], [role for role, name in stops[panel] if not name], panel)
            self.assert_all_named(self.program.window())
        in_order = [name for _, name in stops["Survey Info Part 1"]]
        first = in_order.index("Location")
        fields = ["Location", "Survey type", "Month", "Day", "Year", "Start time", "Zone code"]
        self.assertEqual(fields, in_order[first : first + len(fields)])

    def test_finds_a_name_for_each_widget_of_a_dialog(self):
        for item, title in (
            ("Instructions", "Instructions for survey data entry"),
            ("Contact MAVO", "Contact MAVO"),
            ("About MAVO Survey...", "About MAVO Survey"),
        ):
            self.program.activate_menu("Help", item)
            dialog = self.program.dialog(title)
            self.assert_all_named(dialog)
            dialog.find("push button", "Close").click()
            self.program.wait_for_no_dialog()

    def test_finds_a_name_for_each_widget_of_messages_and_menus(self):
        entry.enter_place_and_date(self.program, self.place)
        tree = entry.open_species(self.program)
        number = entry.species_to_mark(self.place)[0][0]
        tree.find_row(code_of(number))[1].scroll_to()
        self.keyboard.press("Return")
        self.assert_all_named(self.program.popup_menu())
        self.keyboard.press("Escape")
        self.keyboard.press("Alt+s", then="OK")
        self.assert_all_named(self.program.message("Survey saved to"))

    def assert_all_named(self, thing):
        def unnamed():
            thing.accessible.clear_cache()
            return [repr(inside) for inside in thing.walk() if lacks_a_name(inside)] or ["none"]

        self.assertEqual(["none"], wait_for(f"a look at {thing!r}", unnamed))


def lacks_a_name(thing):
    """Returns whether a widget that can get the focus has no name.

    The name of a link is the text of the label that contains it.
    """
    if thing.role == "link":
        return not Thing(thing.accessible.get_parent()).text
    return thing.has(STATE.FOCUSABLE) and not thing.name
