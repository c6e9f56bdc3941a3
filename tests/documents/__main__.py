"""documents TEST_RESULTS RESULTS.xml [NAME...]: runs these tests, or those with these names.

TEST_RESULTS is where the store's tests have left random surveys. The outcome of
each goes to RESULTS.xml in the form that GoogleTest writes.
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
