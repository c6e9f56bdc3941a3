"""The project's own server, at the address that the program of these journeys uses."""

import os
import subprocess

from .waiting import wait_for

LISTENING = "Listening on "


class Server:
    """A server that can be stopped and started, with other options, between requests.

    `directory` is a new directory for its files; it stores surveys in `uploads` there.
    The environment variables MAVO_SURVEY_SERVER and MAVO_SERVER_PORT name its executable and
    its port, which depend on the build.
    """

    def __init__(self, directory):
        self.port = os.environ["MAVO_SERVER_PORT"]
        self.address = f"http://127.0.0.1:{self.port}"
        self.uploads = directory / "uploads"
        self.uploads.mkdir(parents=True)
        self.output_path = directory / "output.txt"
        self.process = None

    def __enter__(self):
        return self

    def __exit__(self, kind, value, traceback):
        self.stop()

    def start(self, data, *options):
        """Starts or restarts it with the data set in the directory `data`."""
        self.stop()
        command = [os.environ["MAVO_SURVEY_SERVER"], "--port", self.port]
        command += ["--uploads", self.uploads, "--data", data, *options]
        with open(self.output_path, "wb") as output:
            self.process = subprocess.Popen(
                ["setpriv", "--pdeathsig", "TERM", *command],  # ends with these journeys
                stdout=output,
                stderr=subprocess.STDOUT,
            )
        wait_for("the server listens", self.listens)

    def listens(self):
        assert self.process.poll() is None, f"the server has ended: {self.output()}"
        return self.output().startswith(LISTENING)

    def stop(self):
        """Stops it, so that the address refuses connections."""
        if self.process is not None:
            self.process.terminate()
            self.process.wait(timeout=30)
            self.process = None

    def output(self):
        return self.output_path.read_text(errors="replace")

    def requests(self):
        """Returns the requests since its start as "METHOD PATH?QUERY STATUS"."""
        return self.output().splitlines()[1:]

    def surveys(self):
        """Returns the names of the surveys that it accepted."""
        return sorted(path.name for path in self.uploads.iterdir())
