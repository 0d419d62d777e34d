#!/usr/bin/env python3
"""How soon corvane-print's dialog is painted with both panels shown, and the memory that it takes, as multiples of a window
with one label. The two take turns, offscreen, and medians are compared.

window_start.py [--check] [PPD]: without a PPD, the one of a printer with many options. --check ends with status 1 where a
limit is missed."""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

SOURCES = pathlib.Path(__file__).resolve().parents[1]
BUILD = SOURCES / "build"
PROGRAMS = BUILD / "bin"
TURNS = 31
LIMITS = {"time": 2.6, "memory": 2.0}


def environment(home):
    kept = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH") if name in os.environ}
    return {**kept, "HOME": home, "XDG_RUNTIME_DIR": home, "LANG": "C.UTF-8", "LANGUAGE": "en",
            "QT_LOGGING_RULES": "qt.qpa.*=false", "QT_PLUGIN_PATH": str(BUILD / "benchmarks"),
            "QT_QPA_GENERIC_PLUGINS": "first_paint",
            "QT_QPA_PLATFORM": "offscreen:configfile=%s" % (SOURCES / "tests" / "host" / "window" / "screen.json")}


def start(home, *command):
    """Milliseconds until it is painted, and MiB until then."""
    begin = time.monotonic()
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment(home)) as process:
        line = process.stdout.readline().split()
        elapsed = time.monotonic() - begin
    if line[:1] != [b"painted"]:
        sys.exit("%s was not painted" % command[0])
    return elapsed * 1000, int(line[1]) / 1024


def main(arguments):
    checks = "--check" in arguments
    given = [each for each in arguments if each != "--check"]
    with tempfile.TemporaryDirectory() as home:
        ppd, document = pathlib.Path(home, "large.ppd"), pathlib.Path(home, "document.txt")
        document.write_text("A line.\n")
        ppd.write_bytes(pathlib.Path(given[0]).read_bytes() if given else
                        subprocess.run([PROGRAMS / "large_ppd"], check=True, stdout=subprocess.PIPE).stdout)
        hello, dialog = [], []
        for _ in range(TURNS):
            hello.append(start(home, PROGRAMS / "window_hello"))
            dialog.append(start(home, PROGRAMS / "corvane-print", "--dialog", "--ppd", ppd, "--to", home, document))
    missed = False
    for index, (what, unit) in enumerate((("time", "ms"), ("memory", "MiB"))):
        small, large = (statistics.median(turn[index] for turn in turns) for turns in (hello, dialog))
        print("%s: window with a label %.1f %s, dialog %.1f %s, %.2f times" % (what, small, unit, large, unit,
                                                                               large / small))
        missed = missed or large / small > LIMITS[what]
    sys.exit(1 if missed and checks else 0)


if __name__ == "__main__":
    main(sys.argv[1:])
