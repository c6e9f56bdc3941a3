"""Tests that read the output of mavo-surveys with programs that share no code with it."""
