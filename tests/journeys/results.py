"""Runs unittest cases and writes their outcomes in the format of GoogleTest."""

import pathlib
import time
import unittest
import xml.etree.ElementTree as ElementTree


class Recorder(unittest.TextTestResult):
    """Records the outcome of every single case."""

    def __init__(self, *args, **kwargs):
        super().__init__(*args, **kwargs)
        self.suites = ElementTree.Element("testsuites")
        self.started = 0.0

    def startTest(self, test):
        super().startTest(test)
        self.started = time.monotonic()

    def stopTest(self, test):
        failed = self.failures + self.errors
        case = ElementTree.SubElement(
            self.suites,
            "testcase",
            classname=type(test).__name__,
            name=test.id().split(".")[-1],
            status="run",
            time=f"{time.monotonic() - self.started:.3f}",
        )
        if hasattr(test, "tried"):  # the number of cases, for tools/reliability-table
            properties = ElementTree.SubElement(case, "properties")
            ElementTree.SubElement(properties, "property", name="tried", value=str(test.tried))
        for reason in (reason for which, reason in failed if which is test):
            ElementTree.SubElement(case, "failure").text = reason
        super().stopTest(test)


def run(modules, results_path, names=()):
    """Runs all cases of these modules, or those whose ids contain one of the names.

    Returns the exit status.
    """
    loader = unittest.TestLoader()
    loader.testNamePatterns = [f"*{name}*" for name in names] or None
    runner = unittest.TextTestRunner(resultclass=Recorder, verbosity=2)
    result = runner.run(unittest.TestSuite(map(loader.loadTestsFromModule, modules)))
    pathlib.Path(results_path).parent.mkdir(parents=True, exist_ok=True)
    ElementTree.ElementTree(result.suites).write(results_path, encoding="UTF-8")
    return 0 if result.wasSuccessful() and result.testsRun else 1
