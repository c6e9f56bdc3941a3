"""Tests that the schema accepts what the program writes and reads, and refuses other documents."""

import os
import pathlib
import subprocess
import tempfile
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
SCHEMA = PROJECT / "docs" / "mavo-survey.rng"
EXPECTED = PROJECT / "tests" / "store" / "expected"
RANDOM = pathlib.Path(os.environ["MAVO_TEST_RESULTS"]) / "random-surveys"

ACCEPTED = 0
REFUSED = 3  # xmllint's status for a well-formed document that the schema does not allow


def check(*paths):
    """Returns xmllint's exit status and its messages."""
    command = ["xmllint", "--noout", "--relaxng", SCHEMA, *paths]
    ran = subprocess.run(command, capture_output=True, text=True, check=False)
    return ran.returncode, ran.stderr


OLDEST = """<MAVO_Fish_Survey version="0.2">
  <survey>
    <subregion>CAL</subregion>
    <depth>5</depth>
    <survey_subtype>24</survey_subtype>
    <month>7</month>
    <ids><species id="12" abun="0"/><species id="0031" abun="2" resp="7"/></ids>
  </survey>
</MAVO_Fish_Survey>"""


class SurveySchema(unittest.TestCase):
    def assert_status(self, status, text, why):
        with tempfile.NamedTemporaryFile("w", suffix=".xml") as file:
            file.write(text)
            file.flush()
            found, messages = check(file.name)
        self.assertEqual(status, found, f"{why}: {messages}")

    def changed(self, document, change):
        """Returns the document after a change (old, new). Fails if it does not contain `old`."""
        old, new = change
        self.assertIn(old, document)
        return document.replace(old, new)

    def test_accepts_the_documents_that_the_writer_must_write(self):
        documents = sorted(EXPECTED.glob("*.xml"))
        self.assertGreaterEqual(len(documents), 3)
        status, messages = check(*documents)
        self.assertEqual(ACCEPTED, status, messages)

    def test_accepts_random_surveys(self):
        documents = sorted(RANDOM.glob("*.xml"))
        self.assertGreaterEqual(len(documents), 200)
        status, messages = check(*documents)
        self.assertEqual(ACCEPTED, status, messages)

    def test_accepts_what_older_programs_wrote(self):
        self.assert_status(ACCEPTED, OLDEST, "the oldest")
        changes = {
            "newer version": ('"0.2"', '"1.9"'),
            "two depths": ("<depth>5</depth>", "<max_depth>5</max_depth><avg_depth>2</avg_depth>"),
            "unit as a word": ("<depth>5</depth>", "<temp_units>Celsius</temp_units><depth>5</depth>"),
            "nothing but a place": (OLDEST[OLDEST.index("<depth>") : OLDEST.index("</survey>")], ""),
        }
        for why, change in changes.items():
            self.assert_status(ACCEPTED, self.changed(OLDEST, change), why)

    def test_refuses_what_the_program_does_not_write(self):
        changes = {
            "other root": ("MAVO-Survey", "Survey"),
            "newer format": ('Survey version="1.0"', 'Survey version="2.0"'),
            "no program version": (' software_version="1.1205.1003"', ""),
            "no element": ("<last_name>Núñez</last_name>", ""),
            "element twice": ("<mday>30</mday>", "<mday>30</mday><mday>30</mday>"),
            "other order": ("<year>2021</year>\n    <month>06</month>", "<month>06</month><year>2021</year>"),
            "unknown element": ("<ids>", "<weather>5</weather><ids>"),
            "text among elements": ("<ids>", "fish<ids>"),
            "month 13": ("<month>06</month>", "<month>13</month>"),
            "short month": ("<month>06</month>", "<month>6</month>"),
            "day 32": ("<mday>30</mday>", "<mday>32</mday>"),
            "empty choice": ("<habitat>3</habitat>", "<habitat></habitat>"),
            "blank in a number": ("<habitat>3</habitat>", "<habitat> 3</habitat>"),
            "unit as a word": ("<temp_units>C</temp_units>", "<temp_units>Celsius</temp_units>"),
            "confirmed as a word": ('confirmed="1"', 'confirmed="yes"'),
            "single depth": ("<avg_depth>2</avg_depth>", "<depth>2</depth>"),
            "short species": ('id="0010"', 'id="10"'),
            "cleared species": ('abun="2"', 'abun="0"'),
            "no response": (' resp="302"', ""),
            "negative response": ('resp="302"', 'resp="-1"'),
            "species with text": ('resp="302"/>', 'resp="302">many</species>'),
        }
        full = (EXPECTED / "full.xml").read_text(encoding="utf-8")
        for why, change in changes.items():
            self.assert_status(REFUSED, self.changed(full, change), why)

    def test_refuses_what_the_program_cannot_open(self):
        changes = {
            "too old": ('"0.2"', '"0.1"'),
            "too new": ('"0.2"', '"2.0"'),
            "no version": (' version="0.2"', ""),
            "version as a word": ('"0.2"', '"old"'),
            "no survey": ("survey>", "dive>"),
            "no place": ("<subregion>CAL</subregion>", ""),
            "empty place": ("CAL", ""),
            "type before the place": ("<subregion>", "<survey_subtype>24</survey_subtype><subregion>"),
            "species 0": ('id="12"', 'id="0"'),
            "negative abundance": ('abun="2"', 'abun="-2"'),
            "no abundance": (' abun="2"', ""),
            "unknown element in ids": ("<ids>", "<ids><fish/>"),
            "two surveys": ("</survey>", "</survey><survey/>"),
        }
        for why, change in changes.items():
            self.assert_status(REFUSED, self.changed(OLDEST, change), why)
