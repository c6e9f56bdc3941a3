"""Where the files are, and the running of the tools that judge them."""

import subprocess

from startup.scratch import BUILD, PROJECT

APP_ID = "org.mavo.offline-survey-entry"
SOURCE = PROJECT / "packaging"
MADE = BUILD / "packaging"  # what the build made of templates
FILE_TYPE = "application/vnd.mavo.survey+xml"


def said(*command, **options):
    """What a tool prints on both outputs; an error with all of it if it fails."""
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
