"""documents TEST_RESULTS RESULTS.xml [NAME...]: runs all these tests, or those with these names.

TEST_RESULTS is the directory in which the store's tests have left random surveys. Writes the
outcome of each test to RESULTS.xml, in the format of GoogleTest.
"""

import os
import sys

from journeys.results import run

os.environ["MAVO_TEST_RESULTS"] = os.path.abspath(sys.argv[1])
from . import (  # noqa: E402  they read the variable
    test_instructions,
    test_links,
    test_readme,
    test_survey_schema,
)

MODULES = (test_instructions, test_links, test_readme, test_survey_schema)
sys.exit(run(MODULES, sys.argv[2], sys.argv[3:]))
