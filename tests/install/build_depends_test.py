#!/usr/bin/env python3
"""The Debian packages are built with what scripts/packages/build.txt lists, and nothing else."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
# The compiler is in every Debian build, and the font is for running.
NOT_NAMED = {"g++", "fonts-dejavu-core"}
OF_PACKAGING = {"debhelper-compat"}


def listed():
    lines = (ROOT / "scripts/packages/build.txt").read_text().splitlines()
    return {line for line in lines if line and not line.startswith("#")}


def declared():
    control = (ROOT / "packaging/debian/control").read_text()
    field = re.search(r"^Build-Depends:((?:.*\n)(?: .*\n)*)", control, re.MULTILINE).group(1)
    return {entry.split()[0] for entry in field.replace("\n", " ").split(",") if entry.strip()}


def main():
    missing = listed() - NOT_NAMED - declared()
    besides = declared() - OF_PACKAGING - listed()
    for package in sorted(missing):
        print(f"packaging/debian/control does not build-depend on {package}")
    for package in sorted(besides):
        print(f"scripts/packages/build.txt does not list {package}")
    return 1 if missing or besides else 0


if __name__ == "__main__":
    sys.exit(main())
