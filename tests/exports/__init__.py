"""Tests of what mavo-surveys writes, read back by programs that share no code with it."""
