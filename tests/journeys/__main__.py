"""journeys APPLICATION_DIR RESULTS.xml [NAME...]: runs all journeys, or those with these names.

RESULTS.xml receives the outcome of each test in the format of GoogleTest.
"""

import os
import sys

from .results import run

os.environ["MAVO_APPLICATION_DIR"] = sys.argv[1]
from . import (  # noqa: E402
    test_drop_downs,
    test_journeys,
    test_keyboard,
    test_pictures,
    test_random_use,
    test_saved_surveys,
    test_screen,
    test_server,
    test_startup,
)

MODULES = (
    test_drop_downs,
    test_journeys,
    test_keyboard,
    test_pictures,
    test_random_use,
    test_saved_surveys,
    test_screen,
    test_server,
    test_startup,
)
sys.exit(run(MODULES, sys.argv[2], sys.argv[3:]))
