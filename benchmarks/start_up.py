#!/usr/bin/env python3
"""The print command's start-up beside a plain program's that opens the same PPD.

start_up.py [--check] BUILD [RUNS]: the programs take turns; medians of processor time (user and system) and of elapsed
time are compared. --check ends with status 1 where the processor time is more than three times the plain program's.
"""
import os
import pathlib
import resource
import statistics
import subprocess
import sys
import time

LIMIT = 3.0


def measured(command):
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.perf_counter()
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   env={"PATH": os.environ["PATH"], "HOME": "/nonexistent"})
    after, elapsed = resource.getrusage(resource.RUSAGE_CHILDREN), time.perf_counter() - start
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, elapsed


def main(arguments):
    checks = "--check" in arguments
    build, *runs = [each for each in arguments if each != "--check"] or ["build"]
    programs = pathlib.Path(build).resolve() / "bin"
    ppd = pathlib.Path(__file__).resolve().parents[1] / "resources" / "models" / "corvane-a3.ppd"
    commands = {
        "plain program": [programs / "plain_ppd_program", ppd],
        "corvane-print --version": [programs / "corvane-print", "--version"],
        "corvane-print --no-dialog --dry-run": [programs / "corvane-print", "--no-dialog", "--dry-run", "--ppd", ppd],
    }
    times = {name: [] for name in commands}
    for _ in range(int(runs[0]) if runs else 60):
        for name, command in commands.items():
            times[name].append(measured(command))
    plain = [statistics.median(column) for column in zip(*times["plain program"])]
    for name, rows in times.items():
        processor, elapsed = (statistics.median(column) for column in zip(*rows))
        print(f"{name}: processor {processor * 1e3:.1f} ms ({processor / plain[0]:.2f}), "
              f"elapsed {elapsed * 1e3:.1f} ms ({elapsed / plain[1]:.2f})")
    return 1 if checks and processor > LIMIT * plain[0] else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
