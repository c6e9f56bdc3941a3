"""Tests of how the program is started and installed, without a display.

What a start shows on the screen is tested among the journeys.
"""
