"""Random use of the program, and tests of the checks that judge it."""

import pathlib
import shutil
import tempfile
import unittest

from . import document, entry
from .random_store import StoreWatch
from .random_use import RandomUse, toolkit_warnings
from .reference import a_place, labels
from .test_journeys import APPLICATION_DIR, DATA_FILES

STEPS = 100
OPENED = "loading subregion X\n"  # what the program prints when it opens a survey


class UsingAtRandom(unittest.TestCase):
    def use(self, seed):
        use = RandomUse(APPLICATION_DIR, seed, STEPS, minutes=5)
        use.run()
        self.assertEqual(STEPS, use.count)
        self.tried = use.count

    def test_does_no_harm_with_seed_3(self):
        self.use(3)

    def test_does_no_harm_with_seed_5(self):
        self.use(5)

    def test_does_no_harm_with_seed_8(self):
        self.use(8)


class JudgingRandomUse(unittest.TestCase):
    """Which changes of the store the checks accept, and which they report."""

    def setUp(self):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="mavo-journey-"))
        self.addCleanup(shutil.rmtree, self.root)
        for state in ("In Progress", "Ready To Upload", "Uploaded"):
            (self.root / state).mkdir()
        self.path = self.put("In Progress", 9)
        self.watch = StoreWatch(self.root)

    def put(self, state, hour):
        """Writes a survey as the program does, and returns its path."""
        groups = ("visibility", "depth", "current")
        choices = {group: labels(DATA_FILES, group)[entry.CHOICE][0] for group in groups}
        path = self.root / state / f"{hour}.MAVO-Survey"
        document.write(path, a_place(DATA_FILES), choices, hour)
        software = 'version="1.0" software_version="1" software_build="2021-12-18 19:29:14"'
        text = path.read_text().replace('version="1.0">', software + ' software_platform="">')
        path.write_text(text)
        return path

    def judge(self, output="", may_delete=False):
        return self.watch.program_acted(output, may_delete)

    def expect(self, *words, **given):
        wrong = self.judge(**given)
        self.assertEqual(len(words), len(wrong), wrong)
        for expected, found in zip(words, wrong):
            self.assertIn(expected, found)

    def test_a_step_that_changes_nothing_is_accepted(self):
        self.expect()

    def test_a_survey_that_vanishes_is_reported_unless_the_user_deleted_it(self):
        self.path.unlink()
        self.expect("vanished")
        other = self.put("In Progress", 10)
        self.watch.others_acted()
        other.unlink()
        self.expect(may_delete=True)

    def test_one_deletion_does_not_excuse_two(self):
        other = self.put("In Progress", 10)
        self.watch.others_acted()
        self.path.unlink()
        other.unlink()
        self.expect("vanished", may_delete=True)

    def test_a_survey_may_move(self):
        self.path.rename(self.root / "Uploaded" / self.path.name)
        self.expect()

    def test_a_move_may_replace_a_survey_only_in_uploaded(self):
        for state, words in (("Uploaded", ()), ("Ready To Upload", ("a move replaced",))):
            with self.subTest(state):
                source, target = self.put("In Progress", 10), self.put(state, 11)
                self.watch.others_acted()
                source.rename(target)
                self.expect(*words)

    def test_a_file_may_be_overwritten_only_if_it_was_opened_or_saved(self):
        first, second = self.path.read_bytes(), self.put("Uploaded", 11).read_bytes()
        self.watch.others_acted()
        self.path.write_bytes(second)
        self.expect("overwritten")
        self.watch.program_starts()
        self.path.write_bytes(first)
        self.expect(output=OPENED)

    def test_a_file_that_others_changed_since_it_was_saved_may_not_be_overwritten(self):
        first, second = self.path.read_bytes(), self.put("Uploaded", 11).read_bytes()
        self.watch.others_acted()
        self.path.write_bytes(second)
        self.expect(output=f"{OPENED}Selected filename {self.path}\n")
        self.path.write_text("another program's")
        self.watch.others_acted()
        self.path.write_bytes(first)
        self.expect("overwritten")

    def test_what_the_program_writes_has_to_be_a_survey(self):
        self.path.write_text("half a sur")
        (self.root / "Uploaded" / "new.MAVO-Survey").write_text("<MAVO-Survey>")
        self.expect("is not a survey after", "new.MAVO-Survey is not a survey", output=OPENED)

    def test_a_temporary_file_that_a_save_leaves_is_reported(self):
        (self.root / "In Progress" / ".goutputstream-ABCDEF").write_bytes(b"")
        self.expect("left over")

    def test_any_change_by_other_programs_is_accepted(self):
        (self.root / "In Progress" / "note.txt").write_text("buy new fins")
        (self.root / "Uploaded" / "link").symlink_to("nowhere")
        self.path.unlink()
        self.watch.others_acted()
        self.expect()

    def test_warnings_of_the_toolkit_are_distinguished_from_lines_of_the_program(self):
        own = "*** ERROR: Failed to contact MAVO server\nWarning: region X has no species 7\n"
        self.assertEqual([], toolkit_warnings(own))
        for warning in (
            "(mavo-survey:1): Gtk-WARNING **: 12:00:00.1: Theme parsing error",
            "(mavo-survey:1): libsoup-CRITICAL **: 12:00:00.1: assertion failed",
            "** (mavo-survey:1): WARNING **: 12:00:00.1: oh",
            "src/x.cc:1:2: runtime error: signed integer overflow",
            "==1==ERROR: AddressSanitizer: heap-use-after-free",
        ):
            self.assertEqual([warning], toolkit_warnings(f"{own}{warning}\n"))
