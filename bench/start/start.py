#!/usr/bin/env python3
"""Starts the mixer and the bare window in turns on a private screen and compares them.

usage: start.py BIN_FOLDER [RUNS]. Fails when the mixer takes more than 1.5 times the bare window's
time or memory.
"""
import json
import os
import subprocess
import sys
import tempfile

from screen import private_screen

LIMIT = 1.5


def main():
    programs = sys.argv[1]
    runs = sys.argv[2] if len(sys.argv) > 2 else "15"
    server, display = private_screen()
    environment = {k: v for k, v in os.environ.items()
                   if k not in ("WAYLAND_DISPLAY", "GDK_SCALE", "DBUS_SESSION_BUS_ADDRESS")}
    environment.update(DISPLAY=display, GDK_BACKEND="x11")
    try:
        with tempfile.TemporaryDirectory() as preferences:
            output = subprocess.run(
                [f"{programs}/start_bench", runs, f"{programs}/bare_window", "--",
                 f"{programs}/tarnwick", "--simulate", "--model", "iPad4,1",
                 "--preferences", preferences],
                env=environment, check=True, stdout=subprocess.PIPE, text=True).stdout
    finally:
        server.terminate()
        server.wait()
    bare, mixer = (json.loads(line) for line in output.splitlines())
    failed = False
    for quantity in ("milliseconds", "kilobytes"):
        ratio = mixer[quantity] / bare[quantity]
        failed |= ratio > LIMIT
        print(f"start: {mixer[quantity]:.1f} {quantity}, bare window {bare[quantity]:.1f}: "
              f"{ratio:.2f} times (at most {LIMIT})")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
