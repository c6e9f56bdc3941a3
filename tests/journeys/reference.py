"""The choices in the shipped reference data, read from the files without the program.

The journeys use the rows that the files have, and do not rely on any name in them.
"""

import csv
import pathlib
from dataclasses import dataclass


def rows(data_files, name):
    with open(pathlib.Path(data_files) / name, encoding="utf-8", newline="") as lines:
        return list(csv.DictReader(lines))


def labels(data_files, group):
    """Returns the (value, label) pairs of one list of choices."""
    found = rows(data_files, "data-definitions.csv")
    return [(int(row["value"]), row["label"]) for row in found if row["group"] == group]


@dataclass
class Place:
    """A location and a survey type with abundances, and their choices."""

    region: str
    subregion: str
    subregion_name: str
    type_id: int
    type_name: str
    zone_code: str
    zone_name: str
    zone_parents: list
    habitat_id: int
    habitat_name: str
    view_id: int
    families: dict  # name of family -> [(species id, name)], in the order of the view
    abundances: list  # [(abundance, label, response id)]


def a_place(data_files):
    """Returns the first location of the data whose first survey type has fish abundances."""
    kind = next(
        row
        for row in rows(data_files, "region-info.csv")
        if row["hasabundance"] == row["hasfish"] == row["visible"] == "1"
    )
    region, subregion, type_id = kind["regioncode"], kind["subregioncode"], kind["surveytypeid"]
    zone, parents = a_zone(data_files, region)
    habitat = rows(data_files, "habitatregion.csv")
    habitat = next(row for row in habitat if row["regioncode"] == region)
    names = {row["habitatid"]: row["habitatname"] for row in rows(data_files, "habitat.csv")}
    views = rows(data_files, "species-view-definitions.csv")
    view = next(v for v in views if v["subregioncode"] == subregion and v["isdefault"] == "1")
    choices = rows(data_files, "abundance-choices.csv")
    return Place(
        region=region,
        subregion=subregion,
        subregion_name=kind["subregionname"],
        type_id=int(type_id),
        type_name=kind["surveytypename"],
        zone_code=zone["geogid"],
        zone_name=zone["name"],
        zone_parents=parents,
        habitat_id=int(habitat["habitat"]),
        habitat_name=names[habitat["habitatid"]],
        view_id=int(view["viewid"]),
        families=families_of(data_files, region, view["viewid"]),
        abundances=[
            (int(row["abun"]), row["label"], int(row["responseid"]))
            for row in choices
            if row["survey_subtype_id"] == type_id
        ],
    )


def a_zone(data_files, region):
    """Returns the last complete zone of a region, and the names of the levels above it."""
    zones = rows(data_files, f"{region}-geog.csv")
    zone = [row for row in zones if len(row["geogid"]) == 8][-1]
    above = [
        row["name"]
        for row in zones
        if row is not zone and zone["geogid"].startswith(row["geogid"])
    ]
    return zone, above


def families_of(data_files, region, view_id):
    """Returns the fish of a view as `Place.families` describes them."""
    family_names = {
        row["familyid"]: row["commonname"] for row in rows(data_files, f"{region}-family-info.csv")
    }
    species = {row["speciesid"]: row for row in rows(data_files, f"{region}-species-info.csv")}
    families = {}
    for row in rows(data_files, "species-views.csv"):
        if row["viewid"] == view_id:
            listed = species[row["speciesid"]]
            if listed["invertebratetype"] == "0":
                family = families.setdefault(family_names[row["familyid"]], [])
                family.append((int(row["speciesid"]), listed["commonname"]))
    return families


def species_rows(data_files, region):
    """Returns all species of a region, as in the file."""
    return rows(data_files, f"{region}-species-info.csv")


def family_of(data_files, region, family_id):
    """Returns the common name of a family; empty if the file does not have the family."""
    found = (r for r in rows(data_files, f"{region}-family-info.csv") if r["familyid"] == family_id)
    return next((row["commonname"] for row in found), "")
