"""Journeys of a diver through the program."""

import os
import pathlib
import unittest

from . import document, entry
from .program import Program
from .reference import a_place, labels
from .screen import press_key
from .waiting import wait_for

APPLICATION_DIR = pathlib.Path(os.environ.get("MAVO_APPLICATION_DIR", "build/MAVO-Survey"))
DATA_FILES = APPLICATION_DIR / "data-files"
# The tabs from left to right.
PANELS = (
    "Start/Open Survey",
    "Member Info",
    "Survey Info Part 1",
    "Survey Info Part 2",
    "Listed Species",
    "Unlisted Species",
    "Confirmation",
)
CLEAR_ICON = "edit-clear-symbolic"
UNSAVED = "Survey has been changed without being saved!"


class Journey(unittest.TestCase):
    """Each journey starts the program in a new home directory, without saved surveys."""

    environment = None  # additional variables for the program

    def setUp(self):
        self.place = a_place(DATA_FILES)
        self.program = self.enterContext(Program(APPLICATION_DIR, environment=self.environment))
        self.program.window()

    def button(self, name):
        return self.program.window().find("push button", name)

    def expect_end(self):
        self.assertEqual(0, self.program.wait_for_end())


class EnteringASurvey(Journey):
    def save(self):
        """Saves. Returns the text of the message that follows and the path of the only survey."""
        self.button("Save For Later").click()
        words = "\n".join(self.program.message("Survey saved to").labels())
        (path,) = self.program.saved_surveys()
        return words, path

    def test_saves_one_file_with_all_entries(self):
        entry.enter_all(self.program, self.place)
        words, path = self.save()
        self.assertEqual("In Progress", path.parent.name)
        zone = self.place.zone_code
        name = f"{entry.MEMBER}-{self.place.subregion}-20210630-0900-{zone}.MAVO-Survey"
        self.assertEqual(name, path.name)
        self.assertIn(str(path), words)
        self.assertTrue(document.follows_the_schema(path))
        groups = ("visibility", "depth", "current")
        choices = {group: labels(DATA_FILES, group)[entry.CHOICE][0] for group in groups}
        self.assertEqual(document.expected_values(self.place, choices), document.values_of(path))
        self.assertEqual(document.expected_species(self.place), document.species_of(path))

    def test_marks_the_document_with_format_program_and_machine(self):
        entry.enter_place_and_date(self.program, self.place)
        _, path = self.save()
        found = document.root_attributes(path)
        names = ["version", "software_version", "software_build", "software_platform"]
        self.assertEqual(names, list(found))
        self.assertEqual("1.0", found["version"])
        self.assertTrue(document.looks_like_a_build_date(found["software_build"]))
        self.assertTrue(found["software_platform"].startswith("Linux "))

    def test_survives_a_name_that_no_screen_can_show(self):
        entry.enter_place_and_date(self.program, self.place)
        name = 3500 * "W"
        panel = self.program.open_panel("Member Info")
        panel.find("text", "Last name").set_text(name)
        self.program.open_panel("Confirmation")
        _, path = self.save()
        self.assertEqual(name, dict(document.values_of(path))["last_name"])

    def test_goes_on_with_the_next_one_for_the_same_member_and_place(self):
        entry.enter_member(self.program)
        entry.enter_place_and_date(self.program, self.place)
        self.save()
        self.program.answer("Survey saved to", "Start New Survey")
        window = self.program.window("MAVO Survey")
        self.assertEqual("MAVO Survey", window.name)
        panel = self.program.panel_shown()
        self.assertEqual("Survey Info Part 1", panel.name)
        self.assertEqual(self.place.subregion_name, panel.find("combo box", "Location").chosen)
        self.assertEqual(self.place.type_name, panel.find("combo box", "Survey type").chosen)
        panel = self.program.open_panel("Member Info")
        self.assertEqual(entry.MEMBER, panel.find("text", "Member number").text)
        self.assertEqual(entry.NAME, panel.find("text", "Last name").text)
        # The user typed nothing for the new survey, so the program asks no question.
        self.program.activate_menu("File", "Close Survey")
        self.expect_end()

    def test_is_not_asked_about_again_once_it_is_saved(self):
        entry.enter_place_and_date(self.program, self.place)
        self.save()
        self.program.answer("Survey saved to", "OK")
        self.program.activate_menu("File", "Quit")
        self.expect_end()


class ClearingASearch(Journey):
    """Clears both searches by the icon and by Escape."""

    def setUp(self):
        super().setUp()
        entry.enter_place_and_date(self.program, self.place)

    def expect_to_clear(self, field, words, has_results):
        """Clears the field in both ways. The icon is visible only while there is text."""
        for clear in (lambda: field.find("icon", CLEAR_ICON).click(), lambda: press_key("Escape")):
            field.focus()
            field.set_text(words)
            wait_for(f"results for {words!r}", has_results)
            clear()
            wait_for(f"{field!r} is empty", lambda: field.text == "")
            wait_for("the results are gone", lambda: not has_results())
            wait_for("the icon is gone", lambda: not has_clear_icon(field))

    def test_shows_all_zones_again(self):
        panel = self.program.open_panel("Survey Info Part 1")
        zones = entry.tree_in(panel, "Geographic zones")
        everything = len(list(zones.rows()))
        self.expect_to_clear(
            panel.find("text", "Search names of zones"),
            self.place.zone_name.lower(),
            has_results=lambda: len(list(zones.rows())) != everything,
        )

    def test_hides_the_species_that_were_found(self):
        panel = self.program.open_panel("Unlisted Species")
        name = next(iter(self.place.families.values()))[0][1]
        self.expect_to_clear(
            panel.find("text", "Search for a species"),
            name.lower(),
            has_results=lambda: any(
                thing.name == "Matching species" and thing.is_shown for thing in panel.walk()
            ),
        )


def has_clear_icon(field):
    field.accessible.clear_cache()
    return field.look_for("icon", CLEAR_ICON) is not None


class LeavingASurvey(Journey):
    def enter_something_and_close(self):
        entry.enter_member(self.program)
        entry.enter_place_and_date(self.program, self.place)
        self.program.activate_menu("File", "Close Survey")

    def test_the_answer_cancel_keeps_all_that_was_typed(self):
        self.enter_something_and_close()
        asked = self.program.answer(UNSAVED, "Cancel")
        self.assertIn("Save it before closing this survey?", asked)
        panel = self.program.open_panel("Survey Info Part 1")
        self.assertEqual(self.place.subregion_name, panel.find("combo box", "Location").chosen)
        panel = self.program.open_panel("Member Info")
        self.assertEqual(entry.NAME, panel.find("text", "Last name").text)

    def test_the_answer_no_ends_the_program_and_saves_nothing(self):
        self.enter_something_and_close()
        self.program.answer(UNSAVED, "No")
        self.expect_end()
        self.assertEqual([], self.program.saved_surveys())

    def test_the_answer_save_reports_the_path_of_the_survey_and_ends_the_program(self):
        self.enter_something_and_close()
        self.program.answer(UNSAVED, "Save", other_follows=True)
        words = self.program.answer("Survey saved to", "OK")
        self.expect_end()
        (path,) = self.program.saved_surveys()
        self.assertIn(str(path), words)

    def test_closing_with_nothing_entered_asks_nothing(self):
        self.program.activate_menu("File", "Close Survey")
        self.expect_end()

    def test_saving_without_a_place_is_refused_with_the_reason(self):
        self.assertFalse(self.button("Save For Later").is_sensitive)
        self.program.activate_menu("File", "Save survey for later")
        self.program.answer("you must select a location before you can save a survey", "OK")
        self.assertEqual([], self.program.saved_surveys())


class AskingForHelp(Journey):
    def read(self, item, title):
        self.program.activate_menu("Help", item)
        dialog = self.program.dialog(title)
        words = "\n".join(dialog.labels())
        dialog.find("push button", "Close").click()
        self.program.wait_for_no_dialog()
        return words

    def test_instructions_are_shown(self):
        words = self.read("Instructions", "Instructions for survey data entry")
        self.assertGreater(len(words), 500)

    def test_the_organisation_can_be_reached(self):
        self.assertIn("@", self.read("Contact MAVO", "Contact MAVO"))

    def test_release_notes_name_the_version(self):
        version = self.program.version()
        words = self.read("Release Notes", f"Release notes - Version {version}")
        self.assertGreater(len(words), 100)

    def test_the_about_box_names_version_and_build(self):
        words = self.read("About MAVO Survey...", "About MAVO Survey")
        self.assertIn(f"Version {self.program.version()}\nBuilt ", words)


class MovingThroughThePanels(Journey):
    def test_next_and_back_walk_through_all_seven_panels(self):
        walked = [self.program.panel_shown().name]
        for _ in range(6):
            self.button("Next").click()
            walked.append(self.program.wait_for_other_panel(walked[-1]))
        self.assertEqual(
            list(PANELS),
            walked,
        )
        self.assertFalse(self.button("Next").is_sensitive)
        self.button("Back").click()
        self.assertEqual(walked[-2], self.program.wait_for_other_panel(walked[-1]))
