#!/usr/bin/env python3
"""Applies the differences that a document shows to a copy of the sources they touch.

apply_example.py DOCUMENT SOURCE_FOLDER FOLDER   The folder gets print_settings/ and resources/, changed as the document
says, with the sample printers written anew.
"""

import pathlib
import re
import shutil
import subprocess
import sys


def main():
    document, source, folder = map(pathlib.Path, sys.argv[1:])
    shutil.rmtree(folder, ignore_errors=True)
    for part in ("print_settings", "resources/models", "resources/views"):
        shutil.copytree(source / part, folder / part)
    shutil.copy(source / "resources" / "Info.json", folder / "resources")
    differences = re.findall(r"^```diff\n(.*?)^```$", document.read_text(encoding="utf-8"), re.M | re.S)
    if not differences:
        sys.exit(f"{document} shows no difference")
    for difference in differences:
        run = subprocess.run(["patch", "--strip=1", "--directory", folder, "--no-backup-if-mismatch"],
                             input=difference, encoding="utf-8", capture_output=True)
        if run.returncode != 0:
            sys.exit(f"{document} does not fit the sources any more: change it, too.\n{difference}\n{run.stdout}")
    subprocess.run([folder / "resources" / "models" / "make-models"], check=True)


if __name__ == "__main__":
    main()
