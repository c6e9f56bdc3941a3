"""Tests the findings of mavo-surveys check."""

import json
import re

from startup.scratch import ScratchTest

from .surveys import DATA, PROJECT, rows_of, run

EXPECTED = PROJECT / "tests" / "store" / "expected" / "full.xml"


class Checks(ScratchTest):
    def setUp(self):
        super().setUp()
        zone = next(
            row["geogid"] for row in rows_of("PAC-geog.csv") if re.fullmatch("[^4].{7}", row["geogid"])
        )
        place = next(row for row in rows_of("region-info.csv") if row["subregioncode"] == "PNW")
        text = EXPECTED.read_text(encoding="utf-8")
        text = text.replace("31020003", zone).replace("subtype>3<", f"subtype>{place['surveytypeid']}<")
        self.good = text.replace('      <species id="12345" abun="1" resp="301"/>\n', "")
        self.path = self.scratch / "survey.MAVO-Survey"

    def findings(self, text, status):
        self.path.write_text(text, encoding="utf-8")
        lines = run("check", "--format=json", f"--data={DATA}", self.path, status=status)
        found = [json.loads(line) for line in lines.splitlines()]
        for finding in found:
            self.assertEqual(["file", "line", "rule", "severity", "consequence"], list(finding))
            self.assertEqual((str(self.path), "error"), (finding["file"], finding["severity"]))
        return [(finding["rule"], finding["line"]) for finding in found]

    def line_of(self, part):
        return self.good[: self.good.index(part)].count("\n") + 1

    def test_find_nothing_in_a_good_survey(self):
        self.assertEqual([], self.findings(self.good, 0))

    def test_find_each_entry_that_the_confirmation_page_marks(self):
        faults = {
            "member_id": "",
            "last_name": "",
            "year": "0000",
            "dive_start": "-1",
            "zonecode": "12",
            "surface_temp": "99",
            "bottom_temp": "-40",
            "visibility": "-1",
            "avg_depth": "-1",
            "max_depth": "1",
            "current": "-1",
            "habitat": "-1",
        }
        for element, text in faults.items():
            with self.subTest(element=element):
                spoilt = re.sub(rf"<{element}>[^<]*", f"<{element}>{text}", self.good)
                rule = "entry-" + element.replace("_", "-")
                if element == "max_depth":  # a snorkel survey, whose depths agree
                    spoilt = spoilt.replace("<max_depth>1", "<max_depth>-1")
                self.assertEqual([(rule, self.line_of(f"<{element}>"))], self.findings(spoilt, 1))

    def test_find_an_unusual_bottom_time(self):
        spoilt = self.good.replace('confirmed="1"', 'confirmed="0"')
        self.assertEqual([("entry-bottom-time", self.line_of("<bottom_time"))], self.findings(spoilt, 1))

    def test_find_a_survey_without_species(self):
        spoilt = re.sub("<ids>.*</ids>", "<ids></ids>", self.good, flags=re.DOTALL)
        self.assertEqual([("entry-ids", self.line_of("<ids>"))], self.findings(spoilt, 1))

    def test_find_the_line_of_a_schema_violation(self):
        spoilt = self.good.replace("<month>06<", "<month>6<")
        found = self.findings(spoilt, 1)
        self.assertIn(("schema", self.line_of("<month>")), found)
        self.assertEqual({"schema"}, {rule for rule, _ in found})

    def test_find_species_that_the_data_lack(self):
        spoilt = self.good.replace('id="0021"', 'id="99999"')
        self.assertEqual([("unknown-species", None)], self.findings(spoilt, 1))

    def test_find_a_location_that_the_data_lack(self):
        spoilt = self.good.replace("<subregion>PNW", "<subregion>XYZ")
        self.assertEqual([("unknown-location", None)], self.findings(spoilt, 1))

    def test_find_a_file_that_cannot_be_opened(self):
        self.assertEqual([("not-readable", None)], self.findings(self.good[:-40], 1))

    def test_look_at_all_files_of_a_directory(self):
        self.path.write_text(self.good, encoding="utf-8")
        (self.scratch / "below").mkdir()
        (self.scratch / "below" / "b.MAVO_survey").write_text("x")
        said = run("check", f"--data={DATA}", self.scratch, status=1).decode()
        self.assertEqual(1, len(said.splitlines()))
        self.assertIn("b.MAVO_survey: error: ", said)
