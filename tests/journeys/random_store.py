"""The survey store under random use: changes by other programs, and checks.

`contents_of` reads the store, `OtherPrograms` changes it like another program, and
`StoreWatch` checks what the program does with it.
"""

import os
import pathlib
import shutil
import stat
import xml.etree.ElementTree as ElementTree
from dataclasses import dataclass

from . import document, entry
from .reference import labels

EXTENSION = ".MAVO-Survey"
STATES = "In Progress", "Ready To Upload", "Uploaded"
MOST_FILES = 24  # if there are more, other programs delete some
TEMPORARY = ".goutputstream-"  # the toolkit's temporary files
OTHER_NAMES = "note.txt", f"x{EXTENSION}", f"1 é &<{EXTENSION}"
OTHER_KINDS = "text", "empty", "bytes", "pipe", "directory", "loop", "dangling"

# Texts that are typed, or that other programs write into surveys.
TEXTS = (
    "",
    " ",
    "0",
    "7",
    "45",
    "1234",
    "-1",
    "12.5",
    "99999999999999999999",
    "O'Brien & Søn",
    "<b>bold</b> &amp; & <",
    "a/b",
    "./1234",
    "../1234",
    "shark",
    "__ALL__",
    "日本語 ñandú",
    "مرحبا 1234 שלום",
    "e\u0301\u0302\u0303" * 1000,
    "\u202e\u200b\ufeff",
    "\ttab",
    "%s%n%d",
    "word " * 60,
    "W" * 3500,
)


@dataclass(frozen=True)
class Item:
    """An entry of the store. `contents` are the bytes of a file, or the target of a link."""

    kind: str
    contents: bytes = b""


def item_at(path):
    mode = path.lstat().st_mode
    if stat.S_ISLNK(mode):
        return Item("link", os.fsencode(os.readlink(path)))
    if stat.S_ISREG(mode):
        return Item("file", path.read_bytes())
    return Item("directory" if stat.S_ISDIR(mode) else "special")


def contents_of(root):
    """Returns all entries of the store as {path: Item}. Does not follow links."""
    found = {}
    for directory, directories, files in os.walk(root):
        for name in (*directories, *files):
            path = pathlib.Path(directory, name)
            if path.parent != root or name not in STATES:
                found[path] = item_at(path)
    return found


class StoreWatch:
    """Checks each step of the program by the contents of the store before and after it."""

    def __init__(self, root):
        self.root = root
        self.before = contents_of(root)
        self.own = set()  # files that the program may overwrite: it opened or saved them
        self.saved = set()  # those that it saved since it last opened a survey

    def program_starts(self):
        """Resets the state for a new process, which owns no file yet."""
        self.own.clear()
        self.saved.clear()

    def others_acted(self):
        """Accepts the changes of other programs."""
        after = contents_of(self.root)
        for path in set(self.before) | set(after):
            if self.before.get(path) != after.get(path) and path in self.saved:
                self.own.discard(path)
                self.saved.discard(path)
        self.before = after

    def program_acted(self, output, may_delete):
        """Returns one sentence for each fault of the last step.

        `output` is what it printed meanwhile; `may_delete` says whether the user was
        asked to confirm a deletion.
        """
        before, after = self.before, contents_of(self.root)
        if "loading subregion " in output:  # it may have opened any of them
            self.own = set(before)
            self.saved.clear()
        wrong = [
            *self.wrong_losses(after, may_delete),
            *self.wrong_changes(after),
            *self.wrong_additions(after),
        ]
        changed = {path for path in after if after[path] != before.get(path)}
        selected = {
            pathlib.Path(line.removeprefix("Selected filename "))
            for line in output.splitlines()
            if line.startswith("Selected filename ")
        }
        self.own |= changed
        self.saved |= changed & {pathlib.Path(os.path.normpath(path)) for path in selected}
        self.before = after
        return wrong

    def wrong_losses(self, after, may_delete):
        for path in sorted(set(self.before) - set(after)):
            if self.is_elsewhere(path, after):
                continue
            if not may_delete:
                yield f"{path} vanished"
            may_delete = False

    def is_elsewhere(self, path, after):
        """Returns whether it was moved unchanged, or saved in another state with its name."""
        if self.before[path] in after.values():
            return True
        arrived = (other for other in after if after[other] != self.before.get(other))
        saved = (other for other in arrived if other.name == path.name)
        return path in self.own and any(is_survey(other, after[other]) for other in saved)

    def wrong_changes(self, after):
        moved = [self.before[path] for path in self.before if path not in after]
        for path in sorted(set(self.before) & set(after)):
            if self.before[path] == after[path]:
                continue
            if after[path] in moved:
                if path.parent.name != "Uploaded":
                    yield f"a move replaced {path}"
            elif path not in self.own:
                yield f"{path} was overwritten, although the program neither opened nor saved it"
            elif not is_survey(path, after[path]):
                yield f"{path} is not a survey after the program has changed it"

    def wrong_additions(self, after):
        known = set(self.before.values())
        for path in sorted(set(after) - set(self.before)):
            if path.name.startswith(TEMPORARY):
                yield f"{path} is left over"
            elif after[path] not in known and not is_survey(path, after[path]):
                yield f"{path} is not a survey"


def is_survey(path, item):
    return item.kind == "file" and document.follows_the_schema(path)


class OtherPrograms:
    """Changes the store like other programs. `random` makes all choices."""

    def __init__(self, root, place, data_files, random):
        self.root = root
        self.place = place
        self.random = random
        groups = ("visibility", "depth", "current")
        self.choices = {group: labels(data_files, group)[entry.CHOICE][0] for group in groups}
        for state in STATES:
            (root / state).mkdir(parents=True, exist_ok=True)

    def act(self):
        """Makes one change and returns a sentence about it."""
        paths = sorted(contents_of(self.root))
        if len(paths) > MOST_FILES:
            return self.delete(self.random.choice(paths))
        files = [path for path in paths if item_at(path).kind == "file"]
        if not files or self.random.random() < 0.35:
            return self.random.choice((self.put_survey, self.put_survey, self.put_other_thing))()
        action = self.random.choice(
            (
                self.copy,
                self.move,
                self.delete,
                self.truncate,
                self.damage,
                self.edit,
                self.touch,
                self.make_old,
                self.link_to,
            )
        )
        return action(self.random.choice(files))

    def free_path(self, name):
        """Returns a free path with that name, or with a number, in some state."""
        directory = self.root / self.random.choice(STATES)
        number, path = 0, directory / name
        while os.path.lexists(path):
            number += 1
            path = directory / f"{pathlib.Path(name).stem}-{number}{EXTENSION}"
        return path

    def put_survey(self):
        """Writes a complete survey with a random start time. Returns a sentence about it."""
        hour = self.random.randint(6, 20)
        place = self.place
        name = f"{entry.MEMBER}-{place.subregion}-20210630-{hour:02d}00-{place.zone_code}"
        path = self.free_path(name + EXTENSION)
        document.write(path, place, self.choices, hour)
        return f"put a survey at {path}"

    def put_other_thing(self):
        path = self.free_path(self.random.choice(OTHER_NAMES))
        kind = self.random.choice(OTHER_KINDS)
        if kind == "text":
            path.write_text("buy new fins\n")
        elif kind == "empty":
            path.touch()
        elif kind == "bytes":
            path.write_bytes(self.random.randbytes(500))
        elif kind == "pipe":
            os.mkfifo(path)
        elif kind == "directory":
            path.mkdir()
        else:
            path.symlink_to(path if kind == "loop" else "nowhere")
        return f"put something ({kind}) at {path}"

    def copy(self, path):
        target = self.free_path(path.name)
        shutil.copyfile(path, target)
        return f"copied {path} to {target}"

    def move(self, path):
        target = self.free_path(path.name)
        path.rename(target)
        return f"moved {path} to {target}"

    def link_to(self, path):
        target = self.free_path(path.name)
        target.symlink_to(path)
        return f"linked {target} to {path}"

    def delete(self, path):
        if item_at(path).kind == "directory":
            shutil.rmtree(path)
        else:
            path.unlink()
        return f"deleted {path}"

    def truncate(self, path):
        size = self.random.randint(0, path.stat().st_size)
        os.truncate(path, size)
        return f"truncated {path} to {size} bytes"

    def damage(self, path):
        contents = bytearray(path.read_bytes() or b"x")
        for _ in range(self.random.randint(1, 4)):
            contents[self.random.randrange(len(contents))] = self.random.randrange(256)
        path.write_bytes(contents)
        return f"damaged {path}"

    def touch(self, path):
        os.utime(path, (0, self.random.randint(1_000_000_000, 1_600_000_000)))
        return f"touched {path}"

    def edit(self, path):
        """Changes the text of one element of a survey."""
        name, text = self.random.choice(document.ELEMENTS[:-1]), self.random.choice(TEXTS)
        return self.rewrite(path, lambda root: setattr(root.find(f"survey/{name}"), "text", text))

    def make_old(self, path):
        """Converts a survey to the oldest format."""

        def change(root):
            root.tag = "MAVO_Fish_Survey"
            root.set("version", "0.2")

        return self.rewrite(path, change)

    def rewrite(self, path, change):
        try:
            tree = ElementTree.parse(path)
            change(tree.getroot())
            tree.write(path, encoding="UTF-8", xml_declaration=True)
        except (ElementTree.ParseError, AttributeError, ValueError):
            return f"found no survey at {path} to change"
        return f"changed {path}"
