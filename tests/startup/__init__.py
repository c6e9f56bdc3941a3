"""Tests of how the program is started and installed, without a display.

The journeys test what a start shows on the screen.
"""
