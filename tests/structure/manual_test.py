#!/usr/bin/env python3
"""manual_test.py PROGRAM PAGE [COMPLETION ...]: the manual page is well formed, and it and the
shells' completions name every option that the program's help names, and no other."""

import pathlib
import re
import subprocess
import sys

OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*")


def options_of_page(path: str) -> set:
    text = pathlib.Path(path).read_text()
    return set(OPTION.findall(text.replace(r"\-", "-")))


def main(program: str, page: str, *completions: str) -> int:
    lint = subprocess.run(["mandoc", "-T", "lint", "-W", "warning", page],
                          capture_output=True, text=True)
    help_text = subprocess.run([program, "--help"], capture_output=True, text=True, check=True)
    expected = set(OPTION.findall(help_text.stdout))
    problems = lint.stdout.splitlines()
    if not expected:
        problems.append("the help names no option")
    for path in (page, *completions):
        for option in sorted(expected ^ options_of_page(path)):
            where = "misses" if option in expected else "has besides the program's options"
            problems.append(f"{path} {where} {option}")
    print("\n".join(problems) or "the manual page says what the program does")
    return 1 if problems or lint.returncode else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
