"""Tests backups of the store and their restoration."""

import json
import os
import shutil
import stat
import subprocess
import zipfile

from startup.scratch import ScratchTest

from .surveys import TOOL, random_surveys, run

STATES = ("In Progress", "Ready To Upload", "Uploaded")


def tree(root):
    """Returns the content and the time of each file below a directory."""
    found = {}
    for path in sorted(root.rglob("*")):
        status = path.lstat()
        content = path.read_bytes() if path.is_file() else None
        found[str(path.relative_to(root))] = (content, status.st_mtime_ns, stat.S_IFMT(status.st_mode))
    return found


def contents(root):
    return {name: content for name, (content, *_) in tree(root).items()}


class StoreTest(ScratchTest):
    def setUp(self):
        super().setUp()
        self.home = self.scratch / "home"
        self.store = self.home / "Documents" / "MAVO-Survey"
        self.environment = {**os.environ, "HOME": str(self.home)}
        self.environment.pop("XDG_CONFIG_HOME", None)
        for number, path in enumerate(random_surveys()[:9]):
            place = self.store / STATES[number % 3]
            place.mkdir(parents=True, exist_ok=True)
            shutil.copy(path, place / f"Núñez {number}-さかな.MAVO-Survey")
        self.backup = self.scratch / "backup.zip"

    def run_tool(self, *arguments, status=0, **changes):
        return run(*arguments, status=status, env={**self.environment, **changes}).decode()

    def said(self, *arguments, status):
        """Returns the standard error of a run with this status and no other output."""
        ran = subprocess.run(
            [TOOL, *arguments], capture_output=True, env=self.environment, check=False, text=True
        )
        self.assertEqual((status, ""), (ran.returncode, ran.stdout))
        return ran.stderr


class Backups(StoreTest):
    def test_restore_the_complete_store(self):
        (self.store / "In Progress" / "notes.txt").write_text("mine")
        (self.store / "In Progress" / "old").mkdir()
        before = contents(self.store)
        self.run_tool("backup", "-o", self.backup)
        shutil.rmtree(self.store)
        self.run_tool("restore", self.backup)
        self.assertEqual(before, contents(self.store))

    def test_work_with_names_beyond_ascii_in_any_locale(self):
        before = contents(self.store)
        self.run_tool("backup", "-o", self.backup, LC_ALL="C")
        with zipfile.ZipFile(self.backup) as archive:
            names = {name.rstrip("/") for name in archive.namelist()}
            self.assertIsNone(archive.testzip())
        self.assertEqual(set(before), names)
        elsewhere = self.scratch / "elsewhere"
        self.run_tool("restore", self.backup, elsewhere, LC_ALL="C")
        self.assertEqual(before, contents(elsewhere))

    def test_report_and_include_a_damaged_survey(self):
        damaged = self.store / "Uploaded" / "damaged.MAVO-Survey"
        damaged.write_text("<MAVO-Survey")
        said = self.run_tool("backup", "-o", self.backup, status=1)
        self.assertIn(str(damaged), said)
        self.assertIn("[not-readable]", said)
        with zipfile.ZipFile(self.backup) as archive:
            self.assertEqual(b"<MAVO-Survey", archive.read("Uploaded/damaged.MAVO-Survey"))

    def test_report_files_that_they_cannot_contain(self):
        os.symlink("/nowhere", self.store / "Uploaded" / "dangling.MAVO-Survey")
        nameless = os.path.join(os.fsencode(self.store), b"Uploaded", b"\xff.MAVO-Survey")
        with open(nameless, "wb") as file:
            file.write(b"x")
        said = self.run_tool("backup", "-o", self.backup, status=1)
        self.assertEqual(2, said.count("[not-backed-up]"))

    def test_do_not_replace_an_existing_file(self):
        self.backup.write_bytes(b"earlier")
        self.said("backup", "-o", self.backup, status=2)
        self.assertEqual(b"earlier", self.backup.read_bytes())

    def test_require_a_store(self):
        shutil.rmtree(self.store)
        self.said("backup", "-o", self.backup, status=2)
        self.assertFalse(self.backup.exists())
        self.assertFalse(self.store.exists())

    def test_are_not_written_to_the_store(self):
        before = tree(self.store)
        self.assertIn("store", self.said("backup", "-o", self.store / "b.zip", status=2))
        self.assertEqual(before, tree(self.store))

    def test_leave_no_file_when_the_disk_is_full(self):
        limited = f"ulimit -f 4; trap '' XFSZ; exec '{TOOL}' backup -o '{self.backup}'"
        ran = subprocess.run(["bash", "-c", limited], env=self.environment, capture_output=True, check=False)
        self.assertEqual(2, ran.returncode, ran.stderr)
        self.assertEqual([self.home.name], os.listdir(self.scratch))


class Restoring(StoreTest):
    def setUp(self):
        super().setUp()
        self.run_tool("backup", "-o", self.backup)

    def test_keeps_existing_files(self):
        kept = self.store / "In Progress" / "Núñez 0-さかな.MAVO-Survey"
        kept.write_text("edited meanwhile")
        gone = self.store / "Uploaded" / "Núñez 2-さかな.MAVO-Survey"
        content = gone.read_bytes()
        gone.unlink()
        before = tree(self.store)
        said = self.run_tool("restore", self.backup, status=1)
        self.assertEqual(8, said.count("[exists]"))
        self.assertEqual(1, said.count("differs"))
        self.assertEqual(content, gone.read_bytes())
        after = tree(self.store)
        for name in before:
            if name != "Uploaded":
                self.assertEqual(before[name], after[name], name)

    def assert_refused(self, *entries):
        """Checks that the tool refuses an archive with these entries after a harmless one."""
        shutil.rmtree(self.store)
        hostile = self.scratch / "hostile.zip"
        with zipfile.ZipFile(hostile, "w") as archive:
            archive.writestr("In Progress/harmless.MAVO-Survey", "x")
            for info, content in entries:
                archive.writestr(info, content)
        before = contents(self.scratch)
        self.said("restore", hostile, status=2)
        self.assertEqual(before, contents(self.scratch))

    def test_refuses_names_that_lead_out_of_the_store(self):
        for name in ("../outside", "In Progress/../../outside", "/tmp/outside", "./x", "a//b", ".."):
            with self.subTest(name=name):
                self.setUp()
                self.assert_refused((name, "x"))

    def test_refuses_links_and_devices(self):
        for kind in (stat.S_IFLNK, stat.S_IFCHR, stat.S_IFBLK):
            with self.subTest(kind=kind):
                self.setUp()
                info = zipfile.ZipInfo("Uploaded/special")
                info.create_system = 3
                info.external_attr = (kind | 0o777) << 16
                self.assert_refused((info, "../../outside"))

    def test_refuses_a_damaged_archive_before_it_writes(self):
        shutil.rmtree(self.store)
        complete = self.backup.read_bytes()
        spoilt = self.scratch / "spoilt.zip"
        flipped = bytearray(complete)
        flipped[len(complete) // 2] ^= 0xFF
        for content in (bytes(flipped), complete[: len(complete) // 2], b"", b"no archive"):
            spoilt.write_bytes(content)
            self.said("restore", spoilt, status=2)
            self.assertFalse(self.store.exists())


class ReadingCommands(StoreTest):
    def test_do_not_change_the_store(self):
        before = tree(self.store)
        survey = self.store / "Uploaded" / "Núñez 2-さかな.MAVO-Survey"
        for command in (["list"], ["check"], ["show", survey], ["show", "--html", survey]):
            subprocess.run([TOOL, *command], env=self.environment, capture_output=True, check=False)
        for form in ("csv", "json", "dwca"):
            self.run_tool("export", f"--format={form}", "-o", self.scratch / form)
        self.assertEqual(before, tree(self.store))

    def test_do_not_create_a_store(self):
        shutil.rmtree(self.store.parent)
        for command in (["list"], ["check"], ["export", "--format=csv"]):
            self.assertIn(" does not exist", self.said(*command, status=2))
        self.assertFalse(self.store.parent.exists())

    def test_write_nothing_to_the_store(self):
        before = tree(self.store)
        for place in (self.store / "x.csv", self.store / "Uploaded" / "x.csv"):
            self.said("export", "--format=csv", "-o", place, status=2)
        self.assertEqual(before, tree(self.store))

    def test_list_states_and_descriptions(self):
        lines = [line.split("\t") for line in self.run_tool("list").splitlines()]
        self.assertEqual(9, len(lines))
        for state, path, description in lines:
            self.assertIn(f"/{state}/", path)
            self.assertNotEqual("", description)

    def test_list_one_object_for_each_survey_as_json(self):
        (self.store / "Uploaded" / "x.MAVO-Survey").write_text("x")
        lines = self.run_tool("list", "--format=json", status=1).splitlines()
        rows = [json.loads(line) for line in lines]
        self.assertEqual(10, len(rows))
        for row in rows:
            self.assertEqual(["state", "file", "description"], list(row))
            self.assertIn(row["state"], STATES)
        self.assertEqual(1, [row["description"] for row in rows].count(None))

    def test_list_a_damaged_file_like_the_program(self):
        (self.store / "Uploaded" / "x.MAVO-Survey").write_text("x")
        self.assertIn("\t(corrupted survey file)\n", self.run_tool("list", status=1))

    def test_report_files_whose_names_are_not_those_of_surveys(self):
        (self.store / "Uploaded" / "notes.txt").write_text("x")
        (self.store / "Uploaded" / ".hidden").write_text("x")
        ran = subprocess.run([TOOL, "list"], env=self.environment, capture_output=True, text=True, check=True)
        self.assertEqual(9, len(ran.stdout.splitlines()))
        self.assertIn("notes.txt: hint: ", ran.stderr)
        self.assertNotIn(".hidden", ran.stderr)
