"""Tests of the files that integrate the program into a desktop, and of its package."""
