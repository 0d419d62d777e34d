#!/usr/bin/env python3
"""How soon the print dialog is painted, and the memory that it takes, as multiples of a window with one label. The two take
turns, offscreen, and medians are compared. --check ends with status 1 where a limit is missed."""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

SOURCES = pathlib.Path(__file__).resolve().parents[1]
PROGRAMS = SOURCES / "build" / "bin"
TURNS = 31
LIMITS = {"time": 2.6, "memory": 2.0}
ENVIRONMENT = {**os.environ, "QT_LOGGING_RULES": "qt.qpa.*=false",
               "QT_QPA_PLATFORM": "offscreen:configfile=%s" % (SOURCES / "tests" / "host" / "window" / "screen.json")}


def start(*command):
    """Milliseconds until it is painted, and MiB until then."""
    begin = time.monotonic()
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=ENVIRONMENT) as process:
        line = process.stdout.readline().split()
        elapsed = time.monotonic() - begin
    return elapsed * 1000, int(line[1]) / 1024


def main():
    with tempfile.TemporaryDirectory() as folder:
        ppd = str(pathlib.Path(folder, "large.ppd"))
        subprocess.run([PROGRAMS / "window_dialog", "--write-ppd", ppd], check=True)
        hello, dialog = [], []
        for _ in range(TURNS):
            hello.append(start(PROGRAMS / "window_hello"))
            dialog.append(start(PROGRAMS / "window_dialog", ppd))
    missed = False
    for index, (what, unit) in enumerate((("time", "ms"), ("memory", "MiB"))):
        small, large = (statistics.median(turn[index] for turn in turns) for turns in (hello, dialog))
        print("%s: window with a label %.1f %s, dialog %.1f %s, %.2f times" % (what, small, unit, large, unit,
                                                                               large / small))
        missed = missed or large / small > LIMITS[what]
    sys.exit(1 if missed and "--check" in sys.argv else 0)


if __name__ == "__main__":
    main()
