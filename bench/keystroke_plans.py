"""Computes the fewest keys for a job from the reference data alone.

This module does not use the program. bench/keystrokes sends the keys to the program and
checks their effect in the survey that it saves.
"""

import collections
import re
import unicodedata
from dataclasses import dataclass

LONGEST = 12  # letters of a name that are tried
PLAIN_KEYS = set("abcdefghijklmnopqrstuvwxyz0123456789 -',.")  # without Shift


@dataclass
class Row:
    """A row of the tree of listed species; a family has no number."""

    number: int
    name: str


def both_names(common, scientific):
    """Returns a name as the tree shows it by default."""
    if not common or not scientific or common == scientific:
        return common or scientific
    return f"{common} ({scientific})"


def folded(name):
    """Returns the name in lower case and without accents."""
    letters = unicodedata.normalize("NFKD", name.casefold())
    return "".join(c for c in letters if not unicodedata.combining(c))


def beginnings(name):
    """Returns {text: 0 if the name begins with it, 1 if a later word does}."""
    found = {}
    for start in [0, *(match.start() for match in re.finditer(r"[^\W_]+", name))]:
        for end in range(start + 1, min(len(name), start + LONGEST) + 1):
            text = name[start:end]
            if text[0].isalnum() and set(text) <= PLAIN_KEYS:
                found.setdefault(text, int(start > 0))
    return found


def keys_of_text(text):
    return ["space" if letter == " " else letter for letter in text]


def species_first(indexes, rows):
    """Returns the rows in the order in which the tree offers them: families last."""
    return sorted(indexes, key=lambda index: rows[index].number is None)


def ways_to_species(rows):
    """Returns {number: the keys that move the cursor to its row, from anywhere in the tree}.

    The keys are a text, and Down or Up if the row is one of the later matches.
    """
    matches = collections.defaultdict(lambda: ([], []))
    for index, row in enumerate(rows):
        for text, rank in beginnings(folded(row.name)).items():
            matches[text][rank].append(index)
    best = {}
    for text, (first, later) in sorted(matches.items()):
        found = species_first(first, rows) + species_first(later, rows)
        for place, index in enumerate(found):
            back = len(found) - place
            steps = ["Down"] * place if place <= back else ["Up"] * back
            way = keys_of_text(text) + steps
            number = rows[index].number
            if number is not None and len(way) < len(best.get(number, way + ["more"])):
                best[number] = way
    return best


def key_of_label(labels, label):
    """Returns the key that chooses a label in the menu of numbers."""
    first = [text[0].lower() for text in labels]
    key = label[0].lower()
    assert first.count(key) == 1, f"{key!r} begins several of {labels}"
    return key


def keys_to_mark(way, labels, label):
    return [*way, "Return", key_of_label(labels, label)]


def text_that_selects(labels, label):
    """Returns the shortest text with which `label` is the first label to begin, or None."""
    for length in range(1, len(label) + 1):
        text = label[:length].lower()
        first = next(other for other in labels if other.lower().startswith(text))
        if first == label and set(text) <= PLAIN_KEYS:
            return text
    return None


def keys_to_choose(labels, label):
    """Returns the fewest keys that choose a label of a closed box where nothing is chosen yet.

    An arrow key chooses each label that it passes, so only the first label uses one.
    """
    text = text_that_selects(labels, label)
    return ["Down"] if labels.index(label) == 0 or not text else keys_of_text(text)


def presses(keys):
    """Returns the number of keys that go down: two for Ctrl+Page_Down."""
    return sum(len(key.split("+")) for key in keys)
