"""Journeys through the running program, only by its screen.

A journey starts the real executable from its application directory and uses it like a
screen reader: it finds widgets by role and name on the accessibility bus, types, clicks,
and reads texts. It uses no id and no class of the program.
"""
