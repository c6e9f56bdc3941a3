"""Journeys through the running program, by what its screen offers alone.

A journey starts the real executable from its application directory and uses it
as a screen reader's user does: it finds things by role and name on the
accessibility bus, types, clicks, and reads what is shown. It knows no id and no
class of the program.
"""
