"""Compares the Darwin Core Archive with its surveys."""

import csv
import datetime
import io
import os
import re
import shutil
import xml.etree.ElementTree as ElementTree
import zipfile

from startup.scratch import ScratchTest

from .surveys import DATA, Reference, Survey, random_surveys, run

TEXT = "{http://rs.tdwg.org/dwc/text/}"
TERMS = "http://rs.tdwg.org/dwc/terms/"


class Table:
    """A table of the archive, read as meta.xml describes it."""

    def __init__(self, description, archive):
        self.row_type = description.get("rowType")
        self.file = description.find(f"{TEXT}files/{TEXT}location").text
        identifier = description.find(f"{TEXT}id")
        if identifier is None:
            identifier = description.find(f"{TEXT}coreid")
        self.id_index = int(identifier.get("index"))
        self.fields = {
            int(field.get("index")): field.get("term")
            for field in description.findall(f"{TEXT}field")
        }
        text = archive.read(self.file).decode(description.get("encoding"))
        lines = list(csv.reader(io.StringIO(text, newline="")))
        skipped = int(description.get("ignoreHeaderLines"))
        self.headings, self.lines = lines[0], lines[skipped:]
        self.rows = [
            {term.removeprefix(TERMS): line[index] for index, term in self.fields.items()}
            for line in self.lines
        ]


def ends(label):
    """Returns the limits of a depth class in metres."""
    both = re.search(r"\((\d+)-(\d+) m\)", label)
    if both:
        return both.groups()
    one = re.search(r"\((\d+) m\)", label)
    if not one:
        return "", ""
    return ("", one[1]) if label.startswith("Less") else (one[1], "")


def date(survey):
    """Returns the date up to its last valid part."""
    year, month, day, hour = (survey[e] for e in ("year", "month", "mday", "dive_start"))
    if year == "0000":
        return ""
    if month == "00":
        return year
    try:
        datetime.date(int(year), int(month), int(day))
    except ValueError:
        return f"{year}-{month}"
    if hour == "-1":
        return f"{year}-{month}-{day}"
    return f"{year}-{month}-{day}T{int(hour) % 24:02}:00"


class DarwinCoreArchive(ScratchTest):
    @classmethod
    def setUpClass(cls):
        cls.paths = random_surveys()
        cls.surveys = [Survey(path) for path in cls.paths]
        cls.bytes = run("export", "--format=dwca", f"--data={DATA}", *cls.paths)
        with zipfile.ZipFile(io.BytesIO(cls.bytes)) as archive:
            cls.names = archive.namelist()
            cls.meta = ElementTree.fromstring(archive.read("meta.xml"))
            cls.eml = ElementTree.fromstring(archive.read(cls.meta.get("metadata")))
            cls.events = Table(cls.meta.find(f"{TEXT}core"), archive)
            cls.occurrences = Table(cls.meta.find(f"{TEXT}extension"), archive)

    def test_contains_a_thousand_surveys(self):
        self.assertGreaterEqual(len(self.surveys), 1000)
        self.assertEqual(len(self.surveys), len(self.events.rows))
        self.assertEqual(
            sum(len(survey.species) for survey in self.surveys), len(self.occurrences.rows)
        )

    def test_describes_every_column_of_its_tables(self):
        for table, kind in ((self.events, "Event"), (self.occurrences, "Occurrence")):
            self.assertEqual(TERMS + kind, table.row_type)
            self.assertEqual(list(range(len(table.headings))), sorted(table.fields))
            for index, term in table.fields.items():
                self.assertEqual(TERMS + table.headings[index], term)
            for line in table.lines:
                self.assertEqual(len(table.headings), len(line))
        self.assertEqual({"meta.xml", "eml.xml", self.events.file, self.occurrences.file}, set(self.names))

    def test_has_unique_ids_and_an_event_for_every_occurrence(self):
        events = [line[self.events.id_index] for line in self.events.lines]
        self.assertEqual(len(events), len(set(events)))
        occurrences = [row["occurrenceID"] for row in self.occurrences.rows]
        self.assertEqual(len(occurrences), len(set(occurrences)))
        self.assertLessEqual(
            {line[self.occurrences.id_index] for line in self.occurrences.lines}, set(events)
        )

    def test_has_every_field_of_the_events(self):
        names = Reference()
        for path, survey, row in zip(self.paths, self.surveys, self.events.rows, strict=True):
            minutes = survey["bottom_time"].strip(" ")
            is_number = re.fullmatch("[0-9]+", minutes) is not None
            expected = {
                "eventID": row["eventID"],
                "eventDate": date(survey),
                "samplingProtocol": names.type_name(survey),
                "sampleSizeValue": minutes if is_number else "",
                "sampleSizeUnit": "minutes" if is_number else "",
                "locationID": survey["zonecode"].strip(" "),
                "locality": names.zone(survey),
                "habitat": names.habitat(survey),
                "minimumDepthInMeters": ends(names.choice("depth", survey["avg_depth"]))[0],
                "maximumDepthInMeters": ends(names.choice("depth", survey["max_depth"]))[1],
            }
            self.assertEqual(expected, row, path)

    def test_has_every_field_of_the_occurrences(self):
        names = Reference()
        rows = iter(self.occurrences.rows)
        for survey, event in zip(self.surveys, self.events.rows, strict=True):
            for species in survey.species:
                number = str(int(species["id"]))
                kind = names.kind(survey, species)
                expected = {
                    "eventID": event["eventID"],
                    "occurrenceID": f"{event['eventID']}:{number}",
                    "basisOfRecord": "HumanObservation",
                    "occurrenceStatus": "present",
                    "recordedBy": survey["last_name"].strip(" "),
                    "scientificName": kind["scientificname"],
                    "vernacularName": kind["commonname"],
                    "family": names.family(survey, species).get("scientificname", ""),
                    "taxonID": f"{names.region(survey)}:{number}",
                    "organismQuantity": names.abundance(survey, species),
                    "organismQuantityType": "abundance class",
                }
                self.assertEqual(expected, next(rows))

    def test_has_a_title_and_a_contact(self):
        self.assertTrue(self.eml.findtext("dataset/title"))
        self.assertIn("@", self.eml.findtext("dataset/contact/electronicMailAddress"))

    def test_has_the_same_bytes_at_another_place_and_time(self):
        for path in self.paths:
            shutil.copy(path, self.scratch)
        made = self.scratch / "made.zip"
        elsewhere = {**os.environ, "TZ": "Pacific/Kiritimati", "LC_ALL": "C"}
        run("export", "--format=dwca", f"--data={DATA}", "-o", made, self.scratch, env=elsewhere)
        self.assertEqual(self.bytes, made.read_bytes())
