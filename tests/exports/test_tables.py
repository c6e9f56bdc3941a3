"""Compares the tables of sightings with their surveys."""

import csv
import io
import json
import os
import pty
import subprocess
import zipfile

from startup.scratch import ScratchTest

from .surveys import DATA, TOOL, Reference, Survey, random_surveys, run

# For the comparison of memory.
MANY = int(os.environ.get("MAVO_MANY_SURVEYS", "2500"))


def number(text, none):
    return None if text == none else int(text)


def survey_columns(path, survey, names):
    """Returns the fields that all rows of a survey have in common, except the id."""
    place = names.places[survey["subregion"]]
    row = {"file": path.name}
    for element in ("member_id", "last_name", "subregion", "zonecode", "bottom_time"):
        row[element] = survey[element] or None
    for element in ("surface_temp", "bottom_temp", "temp_units"):
        row[element] = survey[element] or None
    row |= {
        "region": place["regioncode"],
        "region_name": place["regionname"],
        "subregion_name": place["subregionname"],
        "survey_subtype": number(survey["survey_subtype"], "-1"),
        "survey_subtype_name": names.type_name(survey) or None,
        "zone_name": names.zone(survey) or None,
        "year": number(survey["year"], "0000"),
        "month": number(survey["month"], "00"),
        "mday": number(survey["mday"], "00"),
        "dive_start": number(survey["dive_start"], "-1"),
        "dive_start_name": names.choice("divestart", survey["dive_start"]) or None,
        "bottom_time_confirmed": survey.confirmed == "1",
        "habitat": number(survey["habitat"], "-1"),
        "habitat_name": names.habitat(survey) or None,
        "species_view": number(survey["species_view"], "-1"),
        "species_view_name": names.views.get(survey["species_view"]),
    }
    for element in ("visibility", "avg_depth", "max_depth", "current"):
        group = "depth" if element.endswith("depth") else element
        row[element] = number(survey[element], "-1")
        row[f"{element}_name"] = names.choice(group, survey[element]) or None
    return row


def species_columns(survey, species, names):
    kind = names.kind(survey, species)
    family = names.family(survey, species)
    return {
        "species_id": int(species["id"]),
        "scientific_name": kind["scientificname"] or None,
        "common_name": kind["commonname"] or None,
        "spanish_name": kind.get("spanishname") or None,
        "family_id": kind["familyid"] or None,
        "family_scientific_name": family.get("scientificname") or None,
        "family_common_name": family.get("commonname") or None,
        "abundance": int(species["abun"]),
        "abundance_name": names.abundance(survey, species) or None,
        "response_id": int(species["resp"]),
    }


def as_text(value):
    if isinstance(value, bool):
        return "1" if value else "0"
    return "" if value is None else str(value)


class Tables(ScratchTest):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        names = Reference()
        cls.paths = random_surveys()
        cls.expected = []
        for path in cls.paths:
            survey = Survey(path)
            common = survey_columns(path, survey, names)
            cls.expected += [
                common | species_columns(survey, species, names) for species in survey.species
            ]

    def test_of_json_have_every_field(self):
        rows = json.loads(run("export", "--format=json", f"--data={DATA}", *self.paths))
        self.assertEqual(len(self.expected), len(rows))
        for expected, row in zip(self.expected, rows, strict=True):
            self.assertRegex(row.pop("survey_id"), "^[0-9a-f-]{36}$")
            self.assertEqual(expected, row)

    def test_of_comma_separated_values_have_every_field(self):
        text = run("export", "--format=csv", f"--data={DATA}", *self.paths).decode()
        rows = list(csv.DictReader(io.StringIO(text, newline=""), strict=True))
        self.assertEqual(len(self.expected), len(rows))
        for expected, row in zip(self.expected, rows, strict=True):
            row.pop("survey_id")
            self.assertEqual({key: as_text(value) for key, value in expected.items()}, row)

    def test_use_no_more_memory_for_many_surveys(self):
        self.grow(50)
        few = self.peak("csv"), self.peak("dwca")
        self.grow(MANY)
        many = self.peak("csv"), self.peak("dwca")
        for before, after in zip(few, many, strict=True):
            self.assertLess(after - before, 3 * 1024, "kB")
        self.assertGreater((self.scratch / "made").stat().st_size, 0)

    def grow(self, count):
        """Writes that many different surveys: copies of the random ones with other zone codes."""
        surveys = self.scratch / "surveys"
        surveys.mkdir(exist_ok=True)
        for i in range(count):
            text = self.paths[i % len(self.paths)].read_text(encoding="utf-8")
            zone = f"<zonecode>{i} "
            text = text.replace("<zonecode/>", "<zonecode></zonecode>").replace("<zonecode>", zone)
            (surveys / f"{i}.MAVO-Survey").write_text(text, encoding="utf-8")

    def peak(self, form):
        """Returns the peak memory of an export in kB."""
        arguments = ["export", f"--format={form}", f"--data={DATA}"]
        arguments += ["-o", self.scratch / "made", self.scratch / "surveys"]
        tool = subprocess.Popen([TOOL, *arguments], stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(tool.pid, 0)
        tool.returncode = status
        self.assertEqual(0, status)
        return usage.ru_maxrss

    def export_some(self, **streams):
        """Exports 60 surveys as comma-separated values and returns the finished process."""
        command = [TOOL, "export", "--format=csv", f"--data={DATA}", *self.paths[:60]]
        return subprocess.run(command, stdout=subprocess.PIPE, check=True, **streams)

    def test_show_progress_on_a_terminal_if_the_system_has_one(self):
        try:
            ours, theirs = pty.openpty()
        except OSError as error:
            self.skipTest(f"this system has no /dev/pts: {error}")
        self.addCleanup(os.close, ours)
        exported = self.export_some(stderr=theirs).stdout
        os.close(theirs)
        shown = b""
        with self.assertRaises(OSError):  # at the end of the terminal's output
            while piece := os.read(ours, 10000):
                shown += piece
        self.assertIn(b"\r50 of 60", shown)
        self.assertEqual(exported, self.export_some(stderr=subprocess.PIPE).stdout)

    def test_show_no_progress_without_a_terminal(self):
        self.assertNotIn(b" of 60", self.export_some(stderr=subprocess.PIPE).stderr)

    def test_fail_if_they_cannot_be_written(self):
        for form in ("csv", "json", "dwca"):
            command = [TOOL, "export", f"--format={form}", f"--data={DATA}", *self.paths[:60]]
            with open("/dev/full", "wb") as full:
                done = subprocess.run(command, stdout=full, stderr=subprocess.PIPE, check=False)
            self.assertEqual(2, done.returncode, done.stderr)
            run(*command[1:], "-o", "/dev/full", status=2)
            run(*command[1:], "-o", self.scratch / "none" / "made", status=2)

    def test_replace_an_existing_file_only_when_they_are_complete(self):
        made = self.scratch / "made.csv"
        made.write_text("earlier")
        limited = f"ulimit -f 8; trap '' XFSZ; exec '{TOOL}' export --format=csv --data='{DATA}' -o '{made}' \"$@\""
        command = ["bash", "-c", limited, "bash", *self.paths[:60]]
        self.assertEqual(2, subprocess.run(command, capture_output=True, check=False).returncode)
        self.assertEqual("earlier", made.read_text())
        self.assertEqual([made], list(self.scratch.iterdir()))
        run("export", "--format=csv", f"--data={DATA}", "-o", made, *self.paths[:60])
        self.assertTrue(made.read_text().startswith("file,survey_id,"))
        self.assertEqual([made], list(self.scratch.iterdir()))

    def test_omit_damaged_files_and_report_a_fault(self):
        damaged = self.scratch / "damaged.xml"
        damaged.write_bytes(self.paths[1].read_bytes()[:-20])
        for form in ("csv", "json", "dwca"):
            complete = run("export", f"--format={form}", f"--data={DATA}", *self.paths[:2])
            rest = run(
                "export", f"--format={form}", f"--data={DATA}", *self.paths[:2], damaged, status=1
            )
            self.assertEqual(complete, rest)

    def test_have_no_row_for_a_cleared_species(self):
        old = self.scratch / "old.MAVO_survey"
        old.write_text(
            '<MAVO_Fish_Survey version="0.2"><survey><subregion>CAL</subregion><ids>'
            '<species id="12" abun="0"/><species id="31" abun="2"/></ids></survey></MAVO_Fish_Survey>'
        )
        rows = json.loads(run("export", "--format=json", f"--data={DATA}", old))
        self.assertEqual([31], [row["species_id"] for row in rows])
        made = run("export", "--format=dwca", f"--data={DATA}", old)
        with zipfile.ZipFile(io.BytesIO(made)) as archive:
            self.assertEqual(2, len(archive.read("occurrence.csv").splitlines()))

    def test_contain_a_survey_in_two_files_only_once(self):
        copy = self.scratch / "copy.xml"
        copy.write_bytes(self.paths[1].read_bytes().replace(b'software_version="', b'software_version="9.'))
        for form in ("csv", "json"):
            once = run("export", f"--format={form}", f"--data={DATA}", self.paths[1])
            twice = run("export", f"--format={form}", f"--data={DATA}", self.paths[1], copy)
            self.assertEqual(len(once.splitlines()), len(twice.splitlines()))
        made = run("export", "--format=dwca", f"--data={DATA}", self.paths[1], copy)
        with zipfile.ZipFile(io.BytesIO(made)) as archive:
            self.assertEqual(2, len(archive.read("event.csv").splitlines()))
