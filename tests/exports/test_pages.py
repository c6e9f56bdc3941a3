"""Reads the page of a survey as HTML and as XML."""

import html.parser
import re
import shutil
import xml.etree.ElementTree as ElementTree

from startup.scratch import ScratchTest

from .surveys import DATA, PROJECT, Reference, Survey, random_surveys, rows_of, run

HTML = "{http://www.w3.org/1999/xhtml}"
MARKUP = "<script>alert(1)</script><b onclick=\"x\">&amp;'</b>]]><!--"
VOID = {"meta"}  # elements without an end tag


class Reader(html.parser.HTMLParser):
    """Counts elements and attributes, and checks that each element ends in the right place."""

    def __init__(self):
        super().__init__()
        self.open, self.elements, self.attributes, self.declarations = [], [], [], []

    def handle_decl(self, decl):
        self.declarations.append(decl)

    def handle_starttag(self, tag, attrs):
        self.elements.append(tag)
        self.attributes += [name for name, _ in attrs]
        if tag not in VOID:
            self.open.append(tag)

    def handle_startendtag(self, tag, attrs):
        assert tag in VOID, tag
        self.handle_starttag(tag, attrs)

    def handle_endtag(self, tag):
        assert self.open.pop() == tag, tag


def page(path, **options):
    """Returns the page of a survey. The options are those of run(), and `data`, the data set."""
    return run("show", "--html", f"--data={options.pop('data', DATA)}", path, **options).decode()


def read(text):
    reader = Reader()
    reader.feed(text)
    reader.close()
    return reader


def texts(text, element):
    """Returns the texts of all elements with this tag name."""
    root = ElementTree.fromstring(text)
    return ["".join(found.itertext()) for found in root.iter(HTML + element)]


class Pages(ScratchTest):
    def assert_sound(self, text):
        reader = read(text)
        self.assertEqual(["DOCTYPE html"], reader.declarations)
        self.assertEqual([], reader.open)
        allowed = "html head meta title style body main h1 h2 section dl dt dd bdi table thead"
        allowed += " tbody tr th td i p footer"
        self.assertLessEqual(set(reader.elements), set(allowed.split()))
        attributes = {"lang", "xmlns", "charset", "name", "content", "http-equiv", "class", "scope"}
        self.assertLessEqual(set(reader.attributes), attributes)

    def survey_of(self, **texts_of):
        """Returns a copy of a complete survey with other texts."""
        text = (PROJECT / "tests" / "store" / "expected" / "full.xml").read_text(encoding="utf-8")
        for element, words in texts_of.items():
            text, count = re.subn(
                rf"(<{element}[^>]*>)[^<]*", lambda m, w=words: m[1] + w, text, count=1
            )
            self.assertEqual(1, count, element)
        path = self.scratch / "survey.MAVO-Survey"
        path.write_text(text, encoding="utf-8")
        return path

    def test_are_valid_for_random_surveys(self):
        for path in random_surveys()[:40]:
            text = page(path)
            self.assert_sound(text)
            self.assertEqual(2, text.count("default-src 'none'") + text.count("<!DOCTYPE html>"))
            species = texts(text, "h2")[-1]
            self.assertEqual(f"Species seen: {len(Survey(path).species)}", species)

    def test_show_texts_with_markup_literally(self):
        written = MARKUP.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")
        elements = ("member_id", "last_name", "zonecode", "surface_temp", "bottom_temp", "bottom_time")
        text = page(self.survey_of(**dict.fromkeys(elements, written)))
        self.assert_sound(text)
        shown = texts(text, "dd")
        for wanted in (MARKUP, MARKUP + " °C", MARKUP + " minutes, confirmed"):
            self.assertIn(wanted, shown)

    def test_show_names_with_markup_without_their_tags(self):
        data = self.scratch / "data"
        shutil.copytree(DATA, data)
        names = data / "PAC-species-info.csv"
        text = names.read_text(encoding="utf-8")
        first = text.splitlines()[10].split(",")
        tagged = [first[0], "<i>Salmo</i> &amp; <b>trutta</b>", "A < B & C", *first[3:]]
        names.write_text(text.replace(",".join(first), ",".join(tagged)), encoding="utf-8")
        path = self.survey_of()
        survey = re.sub(r'<species id="\d+"', f'<species id="{int(first[0]):04}"', path.read_text(), count=1)
        path.write_text(survey)
        text = page(path, data=data)
        self.assert_sound(text)
        cells = texts(text, "td")
        self.assertIn("Salmo & trutta", cells)
        self.assertIn("A < B & C", cells)

    def test_show_missing_entries(self):
        text = page(self.survey_of(member_id="", bottom_temp="99"))
        shown = dict(zip(texts(text, "dt"), texts(text, "dd"), strict=True))
        self.assertIn("Missing or not right", texts(text, "h2"))
        self.assertEqual("–", shown["Member number"])  # dict() keeps the last of several entries
        self.assertIn("Temperature must be between", text)

    def test_show_names_instead_of_ids(self):
        zone = next(row["geogid"] for row in rows_of("PAC-geog.csv") if len(row["geogid"]) == 8)
        place = next(row for row in rows_of("region-info.csv") if row["subregioncode"] == "PNW")
        path = self.survey_of(zonecode=zone, survey_subtype=place["surveytypeid"])
        survey, names = Survey(path), Reference()
        shown = texts(page(path), "dd")
        for name in (
            names.choice("visibility", "2"),
            names.choice("depth", "3"),
            "9 AM",
            f"{names.zone(survey)} ({zone})",
            place["surveytypename"],
            f"{place['subregionname']} (PNW)",
        ):
            self.assertIn(name, shown)

    def test_are_not_written_for_a_damaged_survey(self):
        path = self.scratch / "damaged.MAVO-Survey"
        path.write_text("<survey")
        self.assertEqual("", page(path, status=2))
