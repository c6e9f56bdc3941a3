"""Tests that all files exist to which documents link."""

import pathlib
import re
import unittest

PROJECT = pathlib.Path(__file__).resolve().parents[2]
LINK = re.compile(r"\[[^]]*\]\(([^)#\s]+)[^)]*\)")  # matches pictures, too


class Links(unittest.TestCase):
    def test_lead_to_existing_files(self):
        documents = [*PROJECT.glob("*.md"), *PROJECT.glob("docs/*.md"), *PROJECT.glob("bench/*.md")]
        links = [(d, link) for d in documents for link in LINK.findall(d.read_text(encoding="utf-8"))]
        local = [(d, link) for d, link in links if "://" not in link]
        self.assertGreater(len(local), 10)
        dead = [f"{d.relative_to(PROJECT)}: {link}" for d, link in local if not (d.parent / link).exists()]
        self.assertEqual([], dead)
