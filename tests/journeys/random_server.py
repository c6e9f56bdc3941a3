"""The server under random use: it starts, stops and misbehaves."""

import shutil

from .server import Server

# The behaviours for any request, see the server's --help.
ANSWERS = (
    "ok",
    "ok",
    "ok",
    "status=400",
    "status=500",
    "status=200",
    "garbage",
    "close=before",
    "close=middle",
    "trickle",
    "delay=300",
    "long-header=20000",
    "redirect=http://127.0.0.1:9/",
    "type=text/html",
)
UPLOADS = (
    *ANSWERS,
    "status=400,error=The%20zone%20is%20unknown",
    "status=400,error=%3Cb%3E%26%ff%3C",
    "without=X-Survey-Upload-Successful",
)
PROGRAM_QUERIES = (
    *ANSWERS,
    "without=X-Download-App-From",
    "without=X-Current-App-Version-Is,header=X-Current-App-Version-Is:%3Ci%3E9",
)
DATA_QUERIES = *ANSWERS, "without=X-Data-Last-Updated-Is"
ARCHIVES = (
    *ANSWERS,
    "damaged=truncated",
    "damaged=empty",
    "damaged=not-bzip2",
    "damaged=not-tar",
)


class RandomServer:
    """Stops a server and starts it with other options. `random` makes all choices."""

    def __init__(self, directory, data_files, random):
        self.random = random
        self.server = Server(directory)
        self.data_files = data_files
        self.newer_data = directory / "newer-data"
        self.newest = 20990101000000

    def __enter__(self):
        return self

    def __exit__(self, kind, value, traceback):
        self.server.stop()

    def act(self):
        """Makes one change and returns a sentence about it."""
        if self.random.random() < 0.2:
            self.server.stop()
            return "stopped the server"
        data, options = self.data_files, []
        if self.random.random() < 0.4:
            data = self.make_newer_data()
        for option, answers in (
            ("--upload", UPLOADS),
            ("--upload", UPLOADS),
            ("--app-query", PROGRAM_QUERIES),
            ("--data-query", DATA_QUERIES),
            ("--archive", ARCHIVES),
        ):
            if self.random.random() < 0.4:
                options += [option, self.random.choice(answers)]
        self.server.start(data, *options)
        return f"started the server with {data.name} {' '.join(options)}"

    def make_newer_data(self):
        """Offers the same data with a later timestamp than any before."""
        self.newest += 1
        shutil.rmtree(self.newer_data, ignore_errors=True)
        shutil.copytree(self.data_files, self.newer_data)
        information = f"version=1\ntimestamp={self.newest}\nupdated=January 1, 2099\n"
        (self.newer_data / "data-file-info.txt").write_text(information)
        return self.newer_data
