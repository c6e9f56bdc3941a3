"""What makes the program at home on a desktop, and the package of it."""
