"""Journeys of a diver who has a connection: sending surveys, getting new data."""

import csv
import pathlib
import shutil
import tempfile

from . import document, entry
from .entry import code_of, tree_in
from .program import Program
from .reference import a_place, labels, species_rows
from .server import Server
from .test_journeys import APPLICATION_DIR, DATA_FILES
from .test_saved_surveys import ALL_RIGHT, START_PAGE, SavedSurveys
from .waiting import wait_for

IN_PROGRESS, READY, UPLOADED = STATES = "In Progress", "Ready To Upload", "Uploaded"

UPLOAD = "POST /dataentry/upload-survey.php"
APP_QUERY = "GET /offline-data-entry/?get-version=mac"
DATA_QUERY = "GET /offline-data-entry/?get-version=data-files"

SENT = "Survey uploaded successfully."
NOT_SENT = "Failed to upload file: "
CONTINUE = "Continue uploading remaining surveys?"
NEW_PROGRAM = "You are running version "
NEW_DATA = "You are using data files from "
UP_TO_DATE = "You are running the best available version of the program,"
NO_SERVER = "Failed to contact MAVO server"


class ServerJourney(SavedSurveys):
    """The base class of the journeys below. The hour of its dive identifies each survey."""

    def setUp(self):
        self.place = a_place(DATA_FILES)
        self.home = pathlib.Path(tempfile.mkdtemp(prefix="mavo-journey-"))
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.server = self.enterContext(Server(self.home / "server"))

    def start_program(self):
        self.program = self.enterContext(Program(APPLICATION_DIR, home=self.home))
        self.program.window()

    # --- the surveys ---

    def path(self, state, hour):
        place = self.place
        name = f"{entry.MEMBER}-{place.subregion}-20210630-{hour:02d}00-{place.zone_code}"
        return self.home / "Documents" / "MAVO-Survey" / state / f"{name}.MAVO-Survey"

    def put(self, state, *hours):
        """Puts complete surveys into a directory of the store."""
        groups = ("visibility", "depth", "current")
        choices = {group: labels(DATA_FILES, group)[entry.CHOICE][0] for group in groups}
        for hour in hours:
            path = self.path(state, hour)
            path.parent.mkdir(parents=True, exist_ok=True)
            document.write(path, self.place, choices, hour)

    def described(self, hour):
        """Returns the line of a survey in the list of surveys."""
        when = dict(labels(DATA_FILES, "divestart"))[hour]
        return f"{self.place.type_name} - 2021-06-30 at {when} - {self.place.zone_name}"

    def expect_surveys(self, in_progress=(), ready=(), uploaded=()):
        hours = zip(STATES, (in_progress, ready, uploaded))
        expected = [self.path(state, hour) for state, found in hours for hour in found]
        self.assertEqual(expected, self.program.saved_surveys())

    def open(self, hour):
        self.select(self.described(hour))
        return self.open_selected()

    def press_start(self, button):
        self.press(self.program.open_panel(START_PAGE), button)

    # --- the dialogs ---

    def answer(self, words, button):
        """Answers a message that is followed by another one."""
        return self.program.answer(words, button, other_follows=True)

    def expect_up_to_date(self):
        """Answers the message of the check for updates, which follows each upload."""
        self.program.answer(UP_TO_DATE, "OK")

    def expect_second_step(self, said):
        self.assertIn(
            "Step 1 of 2 completed. You are not done yet! To transmit your surveys to MAVO, logon"
            f" to the MAVO Online Data Entry page ({self.server.address}/dataentry)"
            " to error check and submit your survey(s).",
            said,
        )


class SendingASurvey(ServerJourney):
    def test_it_is_moved_to_uploaded_and_is_read_only(self):
        self.put(IN_PROGRESS, 9)
        self.server.start(DATA_FILES)
        self.start_program()
        self.open(9)
        self.button("Upload").click()
        self.expect_second_step(self.answer(SENT, "OK"))
        self.expect_up_to_date()

        self.expect_surveys(uploaded=[9])
        (path,) = self.program.saved_surveys()
        self.assertEqual([path.name], self.server.surveys())
        self.assertEqual(path.read_bytes(), (self.server.uploads / path.name).read_bytes())
        expected = [f"{UPLOAD} 201", f"{APP_QUERY} 200", f"{DATA_QUERY} 200"]
        self.assertEqual(expected, self.server.requests())

        self.assertFalse(self.button("Upload").is_sensitive)
        page = self.program.open_panel("Member Info")
        self.assertFalse(page.find("text", "Last name").is_sensitive)
        self.assertEqual(["In Progress (none)", "Ready To Upload (none)", UPLOADED], self.lines())
        self.program.activate_menu("File", "Upload this survey")
        self.program.answer("was already uploaded and cannot be changed offline.", "OK")
        self.assertEqual(expected, self.server.requests())

    def test_each_answer_of_the_last_message_is_carried_out(self):
        self.put(IN_PROGRESS, 8, 9)
        self.put(READY, 10, 11)
        self.server.start(DATA_FILES)
        self.start_program()
        self.open(8)
        self.program.activate_menu("File", "Upload this survey")
        self.answer(SENT, "Start New Survey")
        self.expect_up_to_date()
        self.expect_surveys(in_progress=[9], ready=[10, 11], uploaded=[8])
        self.expect_an_incomplete_one_to_stay()

        # The Start panel sends another survey than the one in the window.
        self.select(self.described(10))
        self.press_start("Upload")
        self.answer(SENT, "Open Saved Survey")
        self.answer(UP_TO_DATE, "OK")
        self.open_the_only_one(9)
        page = wait_for("the survey is open", self.confirmation_in_front)
        self.assertIn(ALL_RIGHT, page.labels())
        self.expect_surveys(in_progress=[9], ready=[11], uploaded=[8, 10])

        self.select(self.described(11))
        self.press_start("Upload")
        self.answer(SENT, "Quit Program")
        self.expect_up_to_date()
        self.expect_end()
        self.expect_surveys(in_progress=[9], uploaded=[8, 10, 11])
        sent = [self.path(UPLOADED, hour).name for hour in (8, 10, 11)]
        self.assertEqual(sent, self.server.surveys())

    def expect_an_incomplete_one_to_stay(self):
        """Expects that the new survey, which has only a member and a place, is not sent."""
        wait_for(
            "a new survey is begun",
            lambda: self.program.panel_shown().name == "Survey Info Part 1",
        )
        asked = self.server.requests()
        self.program.activate_menu("File", "Upload this survey")
        self.program.answer("Survey data is missing or invalid.", "OK")
        wait_for("the Confirmation page is shown", self.confirmation_in_front)
        self.assertEqual(asked, self.server.requests())
        self.expect_surveys(in_progress=[9], ready=[10, 11], uploaded=[8])

    def open_the_only_one(self, hour):
        """Opens the only survey in the dialog, which selects and describes it."""
        dialog = self.program.dialog("Open saved survey")
        words = f"Member {entry.MEMBER} - {self.described(hour)}"
        wait_for("the survey is described", lambda: words in dialog.labels())
        dialog.find("push button", "Open").click()

    def test_without_a_server_it_stays_ready_and_can_be_sent_later(self):
        self.put(IN_PROGRESS, 9)
        self.start_program()
        self.open(9)
        self.button("Upload").click()
        said = self.answer(NOT_SENT, "OK")
        self.assertIn("Unknown (error header missing)", said)
        self.program.answer(NO_SERVER, "OK")
        self.assertEqual(2, self.program.output().count("*** ERROR"))
        self.expect_surveys(ready=[9])
        species = document.expected_species(self.place)
        self.assertEqual(species, document.species_of(self.path(READY, 9)))

        self.server.start(DATA_FILES)
        self.button("Upload").click()
        self.answer(SENT, "OK")
        self.expect_up_to_date()
        self.expect_surveys(uploaded=[9])
        self.assertEqual(species, document.species_of(self.path(UPLOADED, 9)))


class SendingAllSurveys(ServerJourney):
    ready = "The following surveys are ready to be uploaded:"

    def test_a_failure_asks_whether_to_go_on(self):
        self.put(READY, 8, 9, 10)
        refusal = "status=400,error=The%20zone%20is%20unknown"
        self.server.start(DATA_FILES, "--upload", "ok", "--upload", refusal)
        self.start_program()
        self.press_start("Upload All Ready Surveys")
        asked = self.program.answer(self.ready, "Cancel")
        self.assertEqual([8, 9, 10], [hour for hour in range(24) if self.is_named(hour, asked)])
        self.assertEqual([], self.server.requests())

        self.press_start("Upload All Ready Surveys")
        self.answer(self.ready, "Yes")
        self.answer(NOT_SENT + "The zone is unknown", "OK")
        asked = self.answer(CONTINUE, "No")
        self.assertEqual([10], [hour for hour in range(24) if self.is_named(hour, asked)])
        said = self.answer("Failed to upload one survey.\nSuccessfully uploaded one survey.", "OK")
        self.expect_second_step(said)
        self.expect_up_to_date()
        self.expect_surveys(in_progress=[9], ready=[10], uploaded=[8])

        self.put(READY, 7, 11)
        self.server.start(DATA_FILES, "--upload", "status=500", "--upload", "ok")
        self.program.activate_menu("File", "Upload all ready surveys")
        self.answer(self.ready, "Yes")
        self.answer(NOT_SENT, "OK")
        self.answer(CONTINUE, "Yes")
        self.answer("Failed to upload one survey.\nSuccessfully uploaded 2 surveys.", "OK")
        self.expect_up_to_date()
        self.expect_surveys(in_progress=[7, 9], uploaded=[8, 10, 11])
        self.assertIn(self.described(7), self.lines())

    def is_named(self, hour, text):
        when = dict(labels(DATA_FILES, "divestart")).get(hour)
        return when is not None and f" at {when} " in text

    def test_the_window_offers_to_send_the_others_too(self):
        self.put(IN_PROGRESS, 9)
        self.put(READY, 10, 11)
        self.server.start(DATA_FILES)
        self.start_program()
        self.open(9)
        self.button("Upload").click()
        self.program.answer(self.ready, "Cancel")
        self.expect_surveys(ready=[9, 10, 11])
        self.button("Upload").click()
        self.answer(self.ready, "No")
        self.answer(SENT, "OK")
        self.expect_up_to_date()
        self.expect_surveys(ready=[10, 11], uploaded=[9])

        self.open(10)
        self.button("Upload").click()
        self.answer(self.ready, "Yes")
        self.expect_second_step(self.answer("Successfully uploaded 2 surveys.", "OK"))
        self.expect_up_to_date()
        self.expect_surveys(uploaded=[9, 10, 11])
        self.assertFalse(self.button("Upload").is_sensitive)

    def test_without_a_success_there_is_no_second_step(self):
        self.put(READY, 10)
        self.server.start(DATA_FILES, "--upload", "without=X-Survey-Upload-Successful")
        self.start_program()
        self.press_start("Upload All Ready Surveys")
        self.answer(self.ready, "Yes")
        self.answer("Confusion: response is 201 but success header is missing!?", "OK")
        said = self.answer("Failed to upload one survey.", "OK")
        self.assertNotIn("Step 1 of 2", said)
        self.expect_up_to_date()
        self.expect_surveys(in_progress=[10])

        self.press_start("Upload All Ready Surveys")
        self.program.answer("No surveys are marked as ready to upload.", "OK")


class CheckingForUpdates(ServerJourney):
    def setUp(self):
        super().setUp()
        self.newer_data = self.home / "newer-data"
        shutil.copytree(DATA_FILES, self.newer_data)
        information = "version=1\ntimestamp=20990101000000\nupdated=January 1, 2099\n"
        (self.newer_data / "data-file-info.txt").write_text(information)

    def test_reports_what_the_server_has(self):
        self.start_program()
        other_program = "--app-version", "0.9", "--app-url", "http://mavo.example/get?a=1&b=2"
        lost = "--data-query", "without=X-Data-Last-Updated-Is"
        new_program = NEW_PROGRAM, "OK"
        new_data = NEW_DATA, "Cancel"
        inconsistent = "Failed to consistently contact MAVO server", "OK"
        no_archive = "Failed to download data update! (404)", "OK"
        cases = (
            ("no server", None, (), [(NO_SERVER, "OK")]),
            ("no program", DATA_FILES, ("--app-query", "status=500"), [(NO_SERVER, "OK")]),
            ("no data", DATA_FILES, lost, [inconsistent]),
            (
                "other program, no data",
                DATA_FILES,
                other_program + lost,
                [new_program, inconsistent],
            ),
            ("nothing new", DATA_FILES, (), [(UP_TO_DATE, "OK")]),
            ("other program", DATA_FILES, other_program, [new_program]),
            ("other data", self.newer_data, (), [new_data]),
            ("both", self.newer_data, other_program, [new_program, new_data]),
            (
                "data that cannot be downloaded",
                self.newer_data,
                ("--archive", "status=404"),
                [(NEW_DATA, "Yes"), no_archive],
            ),
        )
        for name, data, options, messages in cases:
            with self.subTest(name):
                self.check(data, options, messages)
        self.assertFalse((self.home / ".config" / "MAVO-Survey" / "data-files").exists())
        # This works only if no other message is open.
        self.program.activate_menu("File", "Quit")
        self.expect_end()

    def check(self, data, options, messages):
        self.server.stop()
        if data:
            self.server.start(data, *options)
        self.press_start("Check For Updates")
        *others, (words, button) = messages
        for message in others:
            self.answer(*message)
        self.program.answer(words, button)

    def test_new_data_open_a_new_window_with_the_same_survey(self):
        number = self.add_a_species()
        self.put(IN_PROGRESS, 9)
        self.server.start(self.newer_data)
        self.start_program()
        self.open(9)
        self.press_start("Check For Updates")
        self.answer(NEW_DATA, "Yes")
        self.program.answer("Data files successfully downloaded and installed.", "OK")
        page = wait_for("the survey is open again", self.confirmation_in_front)
        self.assertIn(ALL_RIGHT, page.labels())
        wait_for("the old window is gone", self.is_only_window)

        label = self.place.abundances[0][1]
        page = self.program.open_panel("Unlisted Species")
        page.find("combo box", "What to search in").choose("Species Code")
        page.find("text", "Search for a species").set_text(str(number))
        entry.mark_by_click(self.program, tree_in(page, "Matching species"), number, label)
        self.button("Save For Later").click()
        self.program.answer("Survey saved to", "OK")
        found = [species[0] for species in document.species_of(self.path(IN_PROGRESS, 9))]
        expected = [species[0] for species in document.expected_species(self.place)]
        self.assertEqual(expected + [code_of(number)[:-1]], found)
        self.program.activate_menu("File", "Close Survey")
        self.expect_end()

    def is_only_window(self):
        return [window.role for window in self.program.windows()] == ["frame"]

    def add_a_species(self):
        """Adds a new species to the newer data and returns its number."""
        species = species_rows(self.newer_data, self.place.region)
        number = 1 + max(int(row["speciesid"]) for row in species)
        new = {**species[0], "speciesid": number, "commonname": "Journeyfish", "rarefishind": "0"}
        path = self.newer_data / f"{self.place.region}-species-info.csv"
        with open(path, "a", encoding="utf-8", newline="") as lines:
            columns = list(species[0])
            csv.DictWriter(lines, columns, quoting=csv.QUOTE_ALL, lineterminator="\n").writerow(new)
        return number
