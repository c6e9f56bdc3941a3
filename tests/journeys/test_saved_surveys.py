"""Journeys of a diver who opens surveys again on later evenings."""

import pathlib
import shutil

from . import document, entry
from .entry import code_of, tree_in
from .reference import family_of, species_rows
from .screen import press_key
from .test_journeys import DATA_FILES, Journey
from .waiting import wait_for

START_PAGE = "Start/Open Survey"
FIX_IT = "items marked in red need to be fixed."
ALL_RIGHT = "Please check that all information is correct."
UPLOADED = "This survey has been uploaded. You can look at it, but not change it."


class SavedSurveys(Journey):
    """The base class of the journeys below."""

    def button(self, name):
        """Returns the visible button: hidden panels may have one with the same name."""
        return self.program.window().find("push button", name, lambda button: button.is_shown)

    def list_of_surveys(self):
        panel = self.program.open_panel(START_PAGE)
        return panel, tree_in(panel, "Saved surveys")

    def lines(self):
        """Returns the lines of the list of surveys, without those of folded headings."""
        _, tree = self.list_of_surveys()
        return [row[0].text for row in tree.rows()]

    def description(self, zone=True):
        place = self.place
        return f"{place.type_name} - 2021-06-30 at 9 AM" + (f" - {place.zone_name}" if zone else "")

    def select(self, text):
        """Clicks the survey with this description and returns the panel."""
        panel, tree = self.list_of_surveys()
        cell = tree.find_row(text)[0]
        cell.scroll_to()
        cell.click()
        return panel

    def press(self, panel, button):
        panel.find("push button", button).click()

    def save_for_later(self):
        self.button("Save For Later").click()
        self.program.answer("Survey saved to", "OK")
        (path,) = self.program.saved_surveys()
        return path

    def open_selected(self, button="Edit"):
        """Opens the selected survey and returns its Confirmation page."""
        self.press(self.program.open_panel(START_PAGE), button)
        return wait_for("the survey is open", self.confirmation_in_front)

    def confirmation_in_front(self):
        panel = self.program.panel_shown()
        return panel if panel.name == "Confirmation" else None

    def start_again(self):
        """Quits the program and starts it in the same home."""
        self.program.activate_menu("File", "Quit")
        self.expect_end()
        self.program = self.enterContext(self.program.again())
        self.program.window()


class ComingBackToASurvey(SavedSurveys):
    def test_it_is_found_fixed_marked_unmarked_and_deleted(self):
        entry.enter_member(self.program)
        entry.enter_place_and_date(self.program, self.place)
        entry.enter_conditions(self.program, self.place)
        entry.mark_species(self.program, self.place)
        in_progress = self.save_for_later()
        self.start_again()

        # Missing entries are red, and the survey cannot be marked.
        self.select(self.description(zone=False))
        page = self.open_selected()
        self.assertTrue(any(FIX_IT in label for label in page.labels()))
        self.assertIn("Required", page.labels())
        self.assertFalse(self.button("Mark For Upload").is_sensitive)

        entry.find_zone(self.program, self.place)
        page = self.program.open_panel("Confirmation")
        self.assertIn(ALL_RIGHT, page.labels())
        self.assertNotIn("Required", page.labels())
        self.button("Mark For Upload").click()
        self.program.answer("Survey saved to", "OK")
        ready = [path for path in self.program.saved_surveys() if path.parent.name == "Ready To Upload"]
        self.assertEqual(1, len(ready))
        self.assertEqual(document.expected_species(self.place), document.species_of(ready[0]))
        in_progress.unlink()  # the name has changed with the zone, so the first file stayed

        self.start_again()
        self.assertEqual(
            ["In Progress (none)", "Ready To Upload", self.description(), "Uploaded (none)"],
            self.lines(),
        )
        panel = self.select(self.description())
        self.press(panel, "Un-Mark For Upload")
        wait_for("it is in progress again", lambda: self.lines()[0] == "In Progress")
        self.assertEqual("In Progress", self.program.saved_surveys()[0].parent.name)

        panel = self.select(self.description())
        self.press(panel, "Delete")
        asked = self.program.answer("Really delete this survey?", "Yes")
        self.assertIn(self.description(), asked)
        wait_for("it is gone", lambda: not self.program.saved_surveys())
        self.assertEqual(
            ["In Progress (none)", "Ready To Upload (none)", "Uploaded (none)"], self.lines()
        )

    def test_the_keyboard_selects_and_next_opens_it(self):
        entry.enter_all(self.program, self.place)
        self.save_for_later()
        self.start_again()
        panel, tree = self.list_of_surveys()
        tree.focus()
        tree.find_row(self.description())[0].scroll_to()
        press_key("Return")
        edit = panel.find("push button", "Edit")
        wait_for("the survey can be edited", lambda: edit.is_sensitive)
        self.button("Next").click()
        page = wait_for("the survey is open", self.confirmation_in_front)
        self.assertIn(ALL_RIGHT, page.labels())
        # Nothing was changed, so nothing is asked.
        self.program.activate_menu("File", "Close Survey")
        self.expect_end()

    def test_its_summary_is_unfolded_as_in_a_new_one(self):
        entry.enter_all(self.program, self.place)
        self.assert_unfolded(self.program.open_panel("Confirmation"))
        self.save_for_later()
        self.start_again()
        self.select(self.description())
        self.assert_unfolded(self.open_selected())

    def assert_unfolded(self, page):
        """Expects that the summary shows each marked species below its family."""
        tree = entry.tree_in(page, "Listed species that you have marked")
        for number, _ in entry.species_to_mark(self.place):
            tree.find_row(entry.code_of(number))

    def test_a_file_that_cannot_be_read_is_reported_and_disturbs_nothing(self):
        entry.enter_all(self.program, self.place)
        path = self.save_for_later()
        (path.parent / "note.txt").write_text("buy new fins\n")
        self.start_again()
        self.assertIn("Member ID -1", self.lines())
        _, tree = self.list_of_surveys()
        heading = tree.find_row("Member ID -1")[0]
        heading.scroll_to()
        heading.click()
        panel = self.select("(corrupted survey file)")
        self.press(panel, "Edit")
        self.assertIn("note.txt", self.program.answer("note.txt", "OK"))
        self.program.activate_menu("File", "Close Survey")
        self.expect_end()


class ViewingAnUploadedSurvey(SavedSurveys):
    def test_it_can_be_viewed_but_not_changed(self):
        entry.enter_all(self.program, self.place)
        path = self.save_for_later()
        uploaded = path.parent.parent / "Uploaded"
        uploaded.mkdir(exist_ok=True)
        path = pathlib.Path(shutil.move(path, uploaded / path.name))
        before = path.read_bytes()
        self.start_again()

        _, tree = self.list_of_surveys()
        heading = tree.find_row("Uploaded")[0]
        heading.scroll_to()
        heading.click()
        self.select(self.description())
        page = self.open_selected("View")
        self.assertIn(ALL_RIGHT, page.labels())
        bar = self.program.window().find("info bar", "Uploaded survey", lambda b: b.is_shown)
        self.assertEqual([UPLOADED], bar.labels())
        self.assertEqual(UPLOADED, bar.accessible.get_description())
        for button in ("Save For Later", "Mark For Upload", "Upload"):
            self.assertFalse(self.button(button).is_sensitive, button)
        page = self.program.open_panel("Member Info")
        self.assertFalse(page.find("text", "Member number").is_sensitive)
        page = self.program.open_panel("Survey Info Part 2")
        self.assertFalse(page.find("combo box", "Habitat").is_sensitive)

        # A click on a species opens no menu, and a message refuses to save.
        tree = entry.open_species(self.program)
        species = entry.species_to_mark(self.place)[0]
        cell = tree.find_row(code_of(species[0]))[1]
        cell.scroll_to()
        cell.click()
        self.assertEqual(species[1][1], tree.find_row(code_of(species[0]))[-1].text)
        self.program.activate_menu("File", "Save survey for later")
        self.program.answer("This survey was already uploaded and cannot be changed offline.", "OK")
        self.assertEqual(before, path.read_bytes())
        self.assertFalse(any(w.role == "window" and w.look_for("menu") for w in self.program.windows()))


class SearchingSpecies(SavedSurveys):
    def setUp(self):
        super().setUp()
        entry.enter_place_and_date(self.program, self.place)
        self.species = species_rows(DATA_FILES, self.place.region)
        self.page = self.program.open_panel("Unlisted Species")

    def search(self, mode, text):
        self.page.find("combo box", "What to search in").choose(mode)
        self.page.find("text", "Search for a species").set_text(text)

    def found(self):
        """Returns the codes of the species that the tree shows."""
        tree = tree_in(self.page, "Matching species")
        return {row[0].text for row in tree.rows()} - {"Family"}

    def expect_found(self, mode, text, expected):
        self.search(mode, text)
        codes = {code_of(int(row["speciesid"])) for row in expected}
        wait_for(f"{mode} {text!r} finds {sorted(codes)[:5]}...", lambda: self.found() == codes)

    def fish(self, column, word):
        """Returns the rows of the fish with this word in a column."""
        return [
            row
            for row in self.species
            if row["invertebratetype"] == "0" and word.lower() in row[column].lower()
        ]

    def test_finds_them_in_each_of_the_six_ways(self):
        common = next(row for row in self.species if "rarefishind" in row and row["rarefishind"] == "0")
        word = common["commonname"].split()[-1]
        self.expect_found("Common Name", word, self.fish("commonname", word))
        word = common["scientificname"].split()[0]
        self.expect_found("Scientific Name", word, self.fish("scientificname", word))
        words = f"{common['scientificname'].split()[-1]} {common['commonname'].split()[0]}"
        both = [
            row
            for row in self.species
            if row["invertebratetype"] == "0"
            and all(
                part.lower() in (row["commonname"] + " " + row["scientificname"]).lower()
                for part in words.split()
            )
        ]
        self.expect_found("Common + Scientific Names", words, both)
        spanish = next(row for row in self.species if len(row.get("spanishname", "")) > 6)
        word = spanish["spanishname"].split()[0]
        self.expect_found("Spanish Name", word, self.fish("spanishname", word))
        family = family_of(DATA_FILES, self.place.region, common["familyid"])
        members = [
            row
            for row in self.species
            if row["invertebratetype"] == "0"
            and family.lower()
            in family_of(DATA_FILES, self.place.region, row["familyid"]).lower()
        ]
        self.expect_found("Family Name", family, members)
        self.expect_found("Species Code", f"000{common['speciesid']}", [common])

    def test_a_search_for_all_shows_every_fish(self):
        self.expect_found(
            "Common Name", "__ALL__", [row for row in self.species if row["invertebratetype"] == "0"]
        )

    def test_a_species_that_is_found_can_be_marked_and_is_saved(self):
        listed = {n for family in self.place.families.values() for n, _ in family}
        other = next(
            row
            for row in self.species
            if int(row["speciesid"]) not in listed and row["invertebratetype"] == "0"
        )
        number, label = int(other["speciesid"]), self.place.abundances[0][1]
        self.search("Species Code", other["speciesid"])
        entry.mark_by_click(self.program, tree_in(self.page, "Matching species"), number, label)
        added = tree_in(self.page, "Species that you have added")
        self.assertEqual(label, added.find_row(code_of(number))[-1].text)
        self.button("Save For Later").click()
        self.program.answer("Survey saved to", "OK")
        (path,) = self.program.saved_surveys()
        self.assertEqual([f"{number:04d}"], [species[0] for species in document.species_of(path)])

    def test_a_family_folds_and_unfolds(self):
        self.search("Common Name", "__all__")
        tree = tree_in(self.page, "Matching species")
        wait_for("families are shown", lambda: len(self.found()) > 1)
        before = self.found()
        family = next(tree.rows())
        family[1].scroll_to()
        family[1].click()
        wait_for("it is folded", lambda: len(self.found()) < len(before))
        next(tree.rows())[1].click()
        wait_for("it is unfolded", lambda: self.found() == before)
