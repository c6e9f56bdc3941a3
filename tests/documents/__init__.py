"""Tests of the documents: links, README, schema of surveys, and text generated from the guide."""
