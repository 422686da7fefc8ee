#!/usr/bin/env python3
"""program_test.py PROGRAM: what every program of the project has in common. It answers questions,
fails when nobody can read the answer, and makes nothing in the folder that it is started from."""

import os
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv[1]
NAME = os.path.basename(PROGRAM)
QUESTIONS = ("--help", "-h", "--version")
# By name the command that has something to print, and what goes to its standard input.
WORK = {"tarnwick": (["--simulate"], ""), "tarnwick-headless": ([], "create\n"),
        "tarnwickctl": (["list"], "")}


def ask(command, redirection="", **options):
    """Through a shell, which can close or redirect an output."""
    return subprocess.run(["sh", "-c", f'"$0" "$@" {redirection}', PROGRAM, *command],
                          capture_output=True, text=True, timeout=60, check=False, **options)


def environment(**changes):
    kept = {name: value for name, value in os.environ.items()
            if name.endswith("SAN_OPTIONS") or name in ("PATH", "LC_ALL")}
    return dict(kept, PULSE_SERVER="unix:/nowhere", **changes)


class Program(unittest.TestCase):
    def test_answers_questions(self):
        for question in QUESTIONS:
            ended = ask([question])
            self.assertEqual((ended.returncode, ended.stderr), (0, ""), question)
            self.assertIn(NAME, ended.stdout)
        self.assertEqual(ask(["-h"]).stdout, ask(["--help"]).stdout)

    def test_fails_when_its_answer_cannot_be_written(self):
        for question in QUESTIONS:
            full = ask([question], ">/dev/full")
            self.assertEqual(full.returncode, 1, question)
            self.assertEqual(full.stderr,
                             f"{NAME}: standard output: No space left on device\n")
            closed = ask([question], ">&-")
            self.assertEqual(closed.returncode, 1, question)
            self.assertEqual(closed.stderr, f"{NAME}: standard output is closed\n")

    def test_fails_when_its_work_cannot_be_written(self):
        command, commands = WORK[NAME]
        with tempfile.TemporaryDirectory() as home:
            for redirection in (">/dev/full", ">&-"):
                ended = ask(command, redirection, input=commands, env=environment(HOME=home))
                self.assertEqual(ended.returncode, 1, redirection)
                self.assertIn(f"{NAME}: ", ended.stderr)

    def test_makes_nothing_in_the_current_folder(self):
        command, commands = WORK[NAME]
        folders = ("XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR",
                   "XDG_STATE_HOME")
        for home in ("", "relative", "/proc/nowhere"):
            for changes in ({}, {name: "relative" for name in folders},
                            {name: "" for name in folders}):
                with tempfile.TemporaryDirectory() as here:
                    ask(command, input=commands, cwd=here, env=environment(HOME=home, **changes))
                    self.assertEqual(os.listdir(here), [], (home, changes))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "--verbose"])
