"""Tests of the documents: their links, the schema of surveys and the texts made from the guide."""
