"""The fewest keys that do a job, worked out from the reference data alone.

Nothing here asks the program: what it really does with the keys is seen in the survey
that it saves.
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
    """A name as the tree shows it from the start."""
    if not common or not scientific or common == scientific:
        return common or scientific
    return f"{common} ({scientific})"


def folded(name):
    """Without case and accents."""
    letters = unicodedata.normalize("NFKD", name.casefold())
    return "".join(c for c in letters if not unicodedata.combining(c))


def beginnings(name):
    """{text: 0 if the name begins with it, 1 if a later word does}."""
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
    """{number: the keys that put the cursor on its row}, from anywhere in the tree.

    A text, and Down or Up to one of the later matches.
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
    """The key that chooses a label in the menu of numbers."""
    first = [text[0].lower() for text in labels]
    key = label[0].lower()
    assert first.count(key) == 1, f"{key!r} begins several of {labels}"
    return key


def keys_to_mark(way, labels, label):
    return [*way, "Return", key_of_label(labels, label)]


def text_that_selects(labels, label):
    """The fewest letters of which `label` is the first to begin with, None without any."""
    for length in range(1, len(label) + 1):
        text = label[:length].lower()
        first = next(other for other in labels if other.lower().startswith(text))
        if first == label and set(text) <= PLAIN_KEYS:
            return text
    return None


def keys_to_choose(labels, label):
    """The fewest keys that choose a label of a closed box where nothing is chosen yet.

    Arrows choose all that is on the way, so that only the first label is chosen like this.
    """
    text = text_that_selects(labels, label)
    return ["Down"] if labels.index(label) == 0 or not text else keys_of_text(text)


def presses(keys):
    """How many keys go down: of Ctrl+Page_Down two."""
    return sum(len(key.split("+")) for key in keys)
