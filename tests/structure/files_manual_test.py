#!/usr/bin/env python3
"""tarnwick(5) is well formed and describes every key that the mixer reads in its two files, every
skin, every colour, and every category name and scheme that the sound server's service knows."""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs/man/tarnwick.5"
# Where a name stands in the code: of two groups the one that is there.
SOURCES = {
    "config/Settings.cpp": r'read\w+\(root, "(\w+)"|objectForKey\("(\w+)"\)',
    "config/CategoryList.cpp": r'"(categoryName|prettyCategoryName|visible)"',
    "mixer/Skin.cpp": r'"((?:Default iOS|Cream|Metal)[\w ]*)"',
    "platform/celestial/AVSystemController.hpp": r'constexpr const char\* [a-z]\w+ = "([\w/]+)"',
    "backends/pulse/categories/CategoryMapping.cpp": r'\{"(\w+:)", \w+\}',
}
LEAST = 8 + 3 + 6 + 4  # Settings, a category's keys, its names and its schemes.


def names() -> set:
    found = set()
    for source, pattern in SOURCES.items():
        text = (ROOT / source).read_text()
        found |= {one or other for one, other in
                  (match if isinstance(match, tuple) else (match, "")
                   for match in re.findall(pattern, text))}
    return found


def main() -> int:
    lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", PAGE],
                          capture_output=True, text=True)
    page = PAGE.read_text().replace(r"\-", "-")
    expected = names()
    problems = lint.stdout.splitlines()
    if len(expected) < LEAST:
        problems.append(f"the code names only {sorted(expected)}")
    problems += [f"{PAGE.name} misses {name}" for name in sorted(expected) if name not in page]
    for number, color in enumerate("red black gray white green blue yellow orange purple brown"
                                   .split()):
        if f"{number} {color}" not in " ".join(page.split()):
            problems.append(f"{PAGE.name} misses the colour {number} {color}")
    print("\n".join(problems) or "the manual page says what the files hold")
    return 1 if problems or lint.returncode else 0


if __name__ == "__main__":
    sys.exit(main())
