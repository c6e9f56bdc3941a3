"""packaging BUILD RESULTS.xml [NAME...]: runs these tests on a build, or those with these names.

RESULTS.xml receives the outcome of each test in the format of GoogleTest.
"""

import os
import sys

from journeys.results import run

os.environ["MAVO_BUILD"] = os.path.abspath(sys.argv[1])
from . import (  # noqa: E402
    test_desktop,
    test_file_type,
    test_icons,
    test_package,
    test_scripts,
    test_tools,
    test_viewer,
)

MODULES = (
    test_desktop,
    test_file_type,
    test_icons,
    test_package,
    test_scripts,
    test_tools,
    test_viewer,
)
sys.exit(run(MODULES, sys.argv[2], sys.argv[3:]))
