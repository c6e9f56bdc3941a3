"""journeys APPLICATION_DIR RESULTS.xml [NAME...]: runs all journeys, or those with these names.

The outcome of each goes to RESULTS.xml in the form that GoogleTest writes.
"""

import os
import sys

from .results import run

os.environ["MAVO_APPLICATION_DIR"] = sys.argv[1]
from . import test_journeys, test_keyboard, test_saved_surveys, test_startup  # noqa: E402

MODULES = (test_journeys, test_keyboard, test_saved_surveys, test_startup)
sys.exit(run(MODULES, sys.argv[2], sys.argv[3:]))
