"""A print server of a test's own, started by the program PRIVATE_CUPSD, and what its filter was given.

As root, the argument `--plain-user` of a test runs the server as a plain user.
"""

import ctypes
import ctypes.util
import os
import pathlib
import subprocess
import sys
import threading

from session_program import SOURCES, as_user

A3 = "resources/models/corvane-a3.ppd"
DEADLINE = 30  # seconds for a job to reach the filter
USER = "nobody" if "--plain-user" in sys.argv and os.geteuid() == 0 else None  # None: who runs this

# What a server adds to a job's options on its own.
SERVERS_OWN = {
    "date-time-at-creation", "date-time-at-processing", "document-name-supplied", "finishings",
    "job-originating-host-name", "job-uuid", "number-up", "print-color-mode", "time-at-creation", "time-at-processing",
}


class CupsOption(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("value", ctypes.c_char_p)]


def parse_options(text):
    """A filter's option text as filters parse it."""
    cups = ctypes.CDLL(ctypes.util.find_library("cups") or "libcups.so.2")
    options = ctypes.POINTER(CupsOption)()
    count = cups.cupsParseOptions(text.encode(), 0, ctypes.byref(options))
    parsed = {options[index].name.decode(): options[index].value.decode() for index in range(count)}
    cups.cupsFreeOptions(count, options)
    return parsed


def booleans_without_case(options):
    return {name: value.lower() if value.lower() in ("true", "false") else value for name, value in options.items()}


def sent_by_us(options):
    return {name: value for name, value in options.items() if name not in SERVERS_OWN}


class PrintServer:
    """A print server with one queue of the sample printer. It ends with the input of the command beside it."""

    def __init__(self):
        command = [os.environ["PRIVATE_CUPSD"], "--ppd", str(SOURCES / A3), "--queue", "Corvane", "--", "cat"]
        pipes = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.PIPE)
        self.process = subprocess.Popen(command, text=True, cwd="/", **pipes, **as_user(USER))
        self.places, told = {}, ""
        while "PRIVATE_CUPSD_RECORDS" not in self.places:
            line = self.process.stderr.readline()
            told += line
            if not line:
                raise AssertionError("there is no print server: " + told)
            name, _, value = line.strip().partition("=")
            self.places[name] = value

    def end(self):
        self.process.communicate(timeout=DEADLINE)

    def record_of(self, job):
        """The filter's arguments and the data that reached it. The arguments are complete as soon as they are there."""
        records = pathlib.Path(self.places["PRIVATE_CUPSD_RECORDS"])
        arguments = records / ("job-%d.arguments" % job)
        turn, left = threading.Event(), DEADLINE * 20
        while not arguments.exists() and left > 0:
            turn.wait(1 / 20)
            left -= 1
        if not arguments.exists():
            raise AssertionError("the job %d reached no filter" % job)
        names = ("job", "user", "title", "copies", "options")
        words = arguments.read_bytes().decode().split("\0")[: len(names)]
        return dict(zip(names, words)), (records / ("job-%d.data" % job)).read_bytes()
