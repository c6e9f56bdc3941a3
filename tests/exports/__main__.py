"""exports BUILD TEST_RESULTS RESULTS.xml [NAME...]: runs all tests here, or those with these names.

TEST_RESULTS is the directory in which the tests of the store have saved random
surveys. The results go to RESULTS.xml in the format of GoogleTest.
"""

import os
import sys

from journeys.results import run

os.environ["MAVO_BUILD"] = os.path.abspath(sys.argv[1])
os.environ["MAVO_TEST_RESULTS"] = os.path.abspath(sys.argv[2])
from . import (  # noqa: E402  these modules read the variables
    test_backups,
    test_checks,
    test_darwin_core,
    test_pages,
    test_tables,
)

MODULES = (test_backups, test_checks, test_darwin_core, test_pages, test_tables)
sys.exit(run(MODULES, sys.argv[3], sys.argv[4:]))
