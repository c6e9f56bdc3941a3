"""How widgets are found by role with any release of the accessibility bus."""

import unittest

from .screen import Thing


class FakeAccessible:
    """An accessible with a role and a name, and with children."""

    def __init__(self, role, name, *children):
        self.role, self.name, self.children = role, name, children

    def get_role_name(self):
        return self.role

    def get_name(self):
        return self.name

    def get_child_count(self):
        return len(self.children)

    def get_child_at_index(self, index):
        return self.children[index]


class TellingThingsApart(unittest.TestCase):
    def test_finds_a_button_by_its_old_and_its_new_role(self):
        for role in ("push button", "button"):
            with self.subTest(role=role):
                panel = FakeAccessible("panel", "Save", FakeAccessible(role, "Save"))
                frame = Thing(FakeAccessible("frame", "", panel))
                found = frame.look_for("push button", "Save")
                self.assertIsNotNone(found)
                self.assertEqual("push button", found.role)

    def test_does_not_find_a_toggle_button_as_a_button(self):
        frame = Thing(FakeAccessible("frame", "", FakeAccessible("toggle button", "Save")))
        self.assertIsNone(frame.look_for("push button", "Save"))
