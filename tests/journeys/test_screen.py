"""How things on the screen are told apart, whatever release of the accessibility bus is there."""

import unittest

from .screen import Thing


class StandIn:
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
                frame = Thing(StandIn("frame", "", StandIn("panel", "Save", StandIn(role, "Save"))))
                found = frame.look_for("push button", "Save")
                self.assertIsNotNone(found)
                self.assertEqual("push button", found.role)

    def test_takes_no_other_thing_for_a_button(self):
        frame = Thing(StandIn("frame", "", StandIn("toggle button", "Save")))
        self.assertIsNone(frame.look_for("push button", "Save"))
