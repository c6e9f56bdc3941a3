"""The paths of the tested files, and a function that runs the tools that check them."""

import subprocess

from startup.scratch import BUILD, PROJECT

APP_ID = "org.mavo.offline-survey-entry"
SOURCE = PROJECT / "packaging"
GENERATED = BUILD / "packaging"  # the files that the build generates from templates
FILE_TYPE = "application/vnd.mavo.survey+xml"


def run_tool(*command, **options):
    """Runs a tool and returns both of its outputs. Raises an AssertionError if the tool fails."""
    ended = subprocess.run(
        command,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
        check=False,
        **options,
    )
    if ended.returncode != 0:
        raise AssertionError(f"{' '.join(map(str, command))}:\n{ended.stdout}")
    return ended.stdout
