"""startup BUILD RESULTS.xml [NAME...]: runs all these tests on a build, or those with these names.

Writes the outcome of each test to RESULTS.xml, in the format of GoogleTest.
"""

import os
import sys

from journeys.results import run

os.environ["MAVO_BUILD"] = os.path.abspath(sys.argv[1])
from . import test_installing, test_launch_lines, test_launch_scripts  # noqa: E402

sys.exit(run((test_installing, test_launch_lines, test_launch_scripts), sys.argv[2], sys.argv[3:]))
