#!/usr/bin/env python3
"""Replays every recorded session through the window: what has a widget is done to the widget, offscreen, and the answers
must be those of the scripted host. Says how often each kind of widget was used; fails for a kind that never was."""

import collections
import json
import os
import pathlib
import sys
import tempfile

from run_session import Replay

RECORDED = pathlib.Path(__file__).resolve().parent / "recorded"
WIDGETS = {"pop-up list", "radio button", "list entry", "check box", "disclosure button", "push button", "slider",
           "number field", "tab", "alert button"}


def main():
    used, told, problems = collections.Counter(), collections.Counter(), 0
    for path in sorted(RECORDED.glob("*.jsonl")):
        with tempfile.TemporaryDirectory(prefix="session-") as folder:
            counts = pathlib.Path(folder, "counts.jsonl")
            os.environ["WINDOW_SESSION_COUNTS"] = str(counts)
            problems += Replay(path, folder).run()
            lines = [json.loads(line) for line in counts.read_text().splitlines()]
        own = sum((collections.Counter(line["widgets"]) for line in lines), collections.Counter())
        print("%-45s %3d through widgets" % (path.stem, own.total()))
        used += own
        told += sum((collections.Counter(line["models"]) for line in lines), collections.Counter())
    for title, counter in (("Through widgets", used), ("To the models", told)):
        print("%s: %d (%s)" % (title, counter.total(), ", ".join("%s %d" % each for each in sorted(counter.items()))))
    for widget in sorted(WIDGETS - set(used)):
        problems += 1
        print("No session used a %s." % widget)
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
