"""The contents that a saved survey must have, by the rules of its format."""

import pathlib
import re
import subprocess
import xml.etree.ElementTree as ElementTree

from . import entry

ELEMENTS = (
    "member_id last_name subregion survey_subtype year month mday dive_start zonecode "
    "surface_temp bottom_temp temp_units bottom_time visibility avg_depth max_depth current "
    "habitat species_view ids"
).split()


SCHEMA = pathlib.Path(__file__).parents[2] / "docs" / "mavo-survey.rng"


def follows_the_schema(path):
    command = ["xmllint", "--noout", "--relaxng", SCHEMA, path]
    return subprocess.run(command, check=False, stderr=subprocess.DEVNULL).returncode == 0


def values_of(path):
    """Returns the elements of the survey in order, as (name, text) pairs."""
    root = ElementTree.parse(path).getroot()
    assert [child.tag for child in root] == ["survey"], "the root contains one survey"
    return [(child.tag, (child.text or "").strip("\n ") if len(child) else child.text or "") for child in root.find("survey")]


def species_of(path):
    """Returns (id, abundance, response) of each species, as texts."""
    root = ElementTree.parse(path).getroot()
    found = root.findall("survey/ids/species")
    return [(s.get("id"), s.get("abun"), s.get("resp")) for s in found]


def expected_values(place, choices):
    """Returns the same pairs for the survey that `entry.enter_all` enters.

    `choices` has the id of the choice that it makes in each list, by the list's name.
    """
    return [
        ("member_id", entry.MEMBER),
        ("last_name", entry.NAME),
        ("subregion", place.subregion),
        ("survey_subtype", str(place.type_id)),
        ("year", "2021"),
        ("month", "06"),
        ("mday", "30"),
        ("dive_start", "9"),
        ("zonecode", place.zone_code),
        ("surface_temp", entry.SURFACE),
        ("bottom_temp", entry.BOTTOM),
        ("temp_units", "C"),
        ("bottom_time", entry.MINUTES),
        ("visibility", str(choices["visibility"])),
        ("avg_depth", str(choices["depth"])),
        ("max_depth", str(choices["depth"])),
        ("current", str(choices["current"])),
        ("habitat", str(place.habitat_id)),
        ("species_view", str(place.view_id)),
        ("ids", ""),
    ]


def expected_species(place):
    """Returns the species that `entry.enter_all` marks, in the form of `species_of`."""
    marked = sorted(entry.species_to_mark(place))
    return [(f"{n:04d}", str(abun), str(resp)) for n, (abun, _, resp) in marked]


def write(path, place, choices, start):
    """Writes the survey that `entry.enter_all` enters, with the start hour `start`."""
    root = ElementTree.Element("MAVO-Survey", version="1.0")
    survey = ElementTree.SubElement(root, "survey")
    for name, text in expected_values(place, choices):
        ElementTree.SubElement(survey, name).text = str(start) if name == "dive_start" else text
    survey.find("bottom_time").set("confirmed", "0")
    for number, abundance, response in expected_species(place):
        ElementTree.SubElement(
            survey.find("ids"), "species", id=number, abun=abundance, resp=response
        )
    ElementTree.ElementTree(root).write(path, encoding="UTF-8", xml_declaration=True)


def root_attributes(path):
    return ElementTree.parse(path).getroot().attrib


def looks_like_a_build_date(text):
    return re.fullmatch(r"\d{4}-\d\d-\d\d \d\d:\d\d:\d\d", text) is not None
