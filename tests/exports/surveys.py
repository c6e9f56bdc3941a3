"""Reads surveys and reference data with Python's own modules, and runs the tool."""

import csv
import os
import pathlib
import re
import subprocess
import xml.etree.ElementTree as ElementTree

from startup.scratch import BUILD, PROJECT

TOOL = BUILD / "bin" / "mavo-surveys"
DATA = PROJECT / "data-files"
RANDOM = pathlib.Path(os.environ["MAVO_TEST_RESULTS"]) / "random-surveys"


def run(*arguments, status=0, **options):
    """Returns the standard output of the tool, as bytes."""
    ran = subprocess.run([TOOL, *arguments], capture_output=True, check=False, **options)
    assert ran.returncode == status, (ran.returncode, ran.stderr.decode())
    return ran.stdout


def random_surveys():
    """Returns the paths in the order in which the tool processes them."""
    return sorted(RANDOM.glob("*.xml"), key=os.fsencode)


def rows_of(name):
    """Returns the rows of a data file. A backslash escapes the next character."""
    with open(DATA / name, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file, escapechar="\\"))


class Survey:
    """The texts of the elements of a survey file, and its species."""

    def __init__(self, path):
        survey = ElementTree.parse(path).getroot().find("survey")
        self.texts = {element.tag: element.text or "" for element in survey if element.tag != "ids"}
        self.confirmed = survey.find("bottom_time").get("confirmed")
        self.species = [dict(species.attrib) for species in survey.find("ids")]

    def __getitem__(self, element):
        return self.texts[element]


class Reference:
    """The names of the data set for the ids in surveys."""

    def __init__(self):
        self.types = {row["surveytypeid"]: row for row in rows_of("region-info.csv")}
        self.places = {row["subregioncode"]: row for row in reversed(rows_of("region-info.csv"))}
        self.choices = {
            (row["group"], row["value"]): row["label"] for row in rows_of("data-definitions.csv")
        }
        self.views = {row["viewid"]: row["viewname"] for row in rows_of("species-view-definitions.csv")}
        names = {row["habitatid"]: row["habitatname"] for row in rows_of("habitat.csv")}
        self.habitats = {
            (row["regioncode"], row["habitat"]): names[row["habitatid"]]
            for row in rows_of("habitatregion.csv")
        }
        self.labels = {
            (row["survey_subtype_id"], row["abun"]): row["label"]
            for row in rows_of("abundance-choices.csv")
        }
        regions = {row["regioncode"] for row in self.types.values()}
        self.zones = {r: self.by(f"{r}-geog.csv", "geogid") for r in regions}
        self.species = {r: self.by(f"{r}-species-info.csv", "speciesid") for r in regions}
        self.families = {r: self.by(f"{r}-family-info.csv", "familyid") for r in regions}

    @staticmethod
    def by(name, key):
        return {row[key]: row for row in rows_of(name)}

    def region(self, survey):
        return self.places[survey["subregion"]]["regioncode"]

    def type_name(self, survey):
        return self.types.get(survey["survey_subtype"], {}).get("surveytypename", "")

    def choice(self, group, value):
        return self.choices.get((group, value), "")

    def habitat(self, survey):
        return self.habitats.get((self.region(survey), survey["habitat"]), "")

    def zone(self, survey):
        """Returns the name of the zone after those of its ancestors, as in the program."""
        zones = self.zones[self.region(survey)]
        code = survey["zonecode"].strip(" ")

        def name(text):  # the program ignores what follows the digits
            digits = re.match(r"\s*([+-]?\d*)", text, re.ASCII)[1]
            return zones.get(str(int(digits)), {}).get("name") if digits.strip("+-") else None

        if name(code) is None:
            return ""
        levels = [name(code[:digits]) for digits in (1, 4) if digits < len(code)]
        return ", ".join(level for level in [*levels, name(code)] if level is not None)

    def kind(self, survey, species):
        """Returns the row of the species in its region."""
        return self.species[self.region(survey)][str(int(species["id"]))]

    def family(self, survey, species):
        return self.families[self.region(survey)].get(self.kind(survey, species)["familyid"], {})

    def abundance(self, survey, species):
        presence_only = self.kind(survey, species)["invertebratetype"] == "2"
        if presence_only and species["abun"] == "1":
            return "Present"
        kind = "99" if presence_only else survey["survey_subtype"]
        return self.labels.get((kind, species["abun"]), "")
