"""Tests of what docs/ says of files: the schema of surveys and the texts made from the guide."""
