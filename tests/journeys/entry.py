"""Entering a survey through the window, panel by panel, as a diver does."""

from .screen import TREES, press_key
from .waiting import wait_for

MEMBER, NAME = "1234", "O'Brien & Søn"
DATE = {"Year": "2021", "Month": "June", "Day": "30"}
START = "9 AM"
CHOICE = 2  # the index of the choice in each list of conditions
SURFACE, BOTTOM, MINUTES = "24", "22", "45"


def tree_in(panel, name):
    """Returns the tree with that name. Its role depends on whether rows have children."""
    return panel.find_any(TREES, name)


def enter_member(program):
    panel = program.open_panel("Member Info")
    panel.find("text", "Member number").set_text(MEMBER)
    panel.find("text", "Last name").set_text(NAME)


def enter_place_and_date(program, place):
    panel = program.open_panel("Survey Info Part 1")
    panel.find("combo box", "Location").choose(place.subregion_name)
    panel.find("combo box", "Survey type").choose(place.type_name)
    for box, label in DATE.items():
        panel.find("combo box", box).choose(label)
    panel.find("combo box", "Start time").choose(START)


def in_other_case(text):
    """Swaps the case of all letters except i, whose other case depends on the language."""
    return "".join(c if c in "Iiİı" else c.swapcase() for c in text)


def find_zone(program, place, words=None):
    """Searches for the zone by `words`, or by its name in other case, and clicks it."""
    panel = program.open_panel("Survey Info Part 1")
    words = words or in_other_case(place.zone_name)
    panel.find("text", "Search names of zones").set_text(words)
    row = tree_in(panel, "Geographic zones").find_row(f"{place.zone_code}: {place.zone_name}")
    row[0].scroll_to()
    row[0].click()
    code = panel.find("text", "Zone code")
    wait_for("the zone's code is filled in", lambda: code.text == place.zone_code)


def enter_conditions(program, place):
    panel = program.open_panel("Survey Info Part 2")
    panel.find("combo box", "Temperature units").choose("Celsius")
    panel.find("text", "Surface temperature").set_text(SURFACE)
    panel.find("text", "Bottom temperature").set_text(BOTTOM)
    panel.find("text", "Bottom time in minutes").set_text(MINUTES)
    for box in ("Average depth", "Maximum depth", "Visibility", "Current"):
        combo = panel.find("combo box", box)
        combo.choose(combo.choices()[CHOICE])
    panel.find("combo box", "Habitat").choose(place.habitat_name)


def open_species(program):
    """Opens the panel of listed species, unfolds all families and returns the tree."""
    panel = program.open_panel("Listed Species")
    tree = tree_in(panel, "Species of this view")
    panel.find("push button", "Expand All").click()
    return tree


def species_to_mark(place):
    """Returns three species of neighbouring families far down: (number, abundance) of each."""
    families = list(place.families.values())
    middle = len(families) // 2
    species = [family[0] for family in families[middle : middle + 3]]
    return [(number, place.abundances[index]) for index, (number, _) in enumerate(species)]


def mark_by_click(program, tree, species, label):
    """Clicks a species and chooses from the menu that pops up, with the mouse."""
    cell = tree.find_row(code_of(species))[1]
    cell.scroll_to()
    cell.click()
    program.popup_menu().find("menu item", label).click()
    wait_until_marked(tree, species, label)


def mark_by_keyboard(program, tree, species, label, key="Return"):
    """Selects a species, opens its menu with a key and chooses with the arrow keys."""
    tree.focus()
    tree.find_row(code_of(species))[1].scroll_to()
    press_key(key)
    menu = program.popup_menu()
    labels = [item.name for item in menu.children() if item.role == "menu item"]
    for wanted in labels[: labels.index(label) + 1]:
        press_key("Down")
        wait_for(f"{wanted!r} is picked", lambda: menu.find("menu item", wanted).is_picked)
    press_key("Return")
    wait_until_marked(tree, species, label)


def wait_until_marked(tree, species, label):
    wait_for(
        f"species {species} is marked {label!r}",
        lambda: tree.find_row(code_of(species))[-1].text == label,
    )


def code_of(species):
    """Returns the number of a species as the trees show it."""
    return f"{species:04d}:"


def mark_species(program, place):
    """Marks three species: with the mouse, with Return and with the right arrow key."""
    tree = open_species(program)
    clicked, returned, arrowed = species_to_mark(place)
    mark_by_click(program, tree, clicked[0], clicked[1][1])
    mark_by_keyboard(program, tree, returned[0], returned[1][1])
    mark_by_keyboard(program, tree, arrowed[0], arrowed[1][1], key="Right")


def enter_all(program, place):
    """Enters a complete survey."""
    enter_member(program)
    enter_place_and_date(program, place)
    find_zone(program, place)
    enter_conditions(program, place)
    mark_species(program, place)
