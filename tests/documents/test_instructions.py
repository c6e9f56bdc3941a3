"""Tests of the help text, which is generated from the user guide."""

import pathlib
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree

PROJECT = pathlib.Path(__file__).resolve().parents[2]
MARKUP = {"span", "b", "i", "tt"}


def generated():
    ran = subprocess.run([PROJECT / "tools" / "make-instructions", "--print"], capture_output=True, check=True)
    return ran.stdout.decode("utf-8")


class Instructions(unittest.TestCase):
    def test_are_generated_from_the_guide(self):
        committed = (PROJECT / "resources" / "instructions.txt").read_text(encoding="utf-8")
        self.assertEqual(generated(), committed, "run tools/make-instructions")

    def test_are_valid_markup(self):
        tree = ElementTree.fromstring(f"<text>{generated()}</text>")
        self.assertEqual(MARKUP, {element.tag for element in tree.iter()} - {"text"})

    def test_contain_no_markdown(self):
        words = "".join(ElementTree.fromstring(f"<text>{generated()}</text>").itertext())
        for mark in ("**", "`", "![", "](", "<!--", "\n#", "\n- ", "\n\n\n"):
            self.assertNotIn(mark, words)

    def test_explain_how_to_collapse_families_by_keyboard(self):
        self.assertIn("<b>+</b> expands a family and <b>-</b> collapses it", generated())
