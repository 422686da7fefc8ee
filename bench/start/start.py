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

LIMIT = 1.5


def private_screen():
    """An X server without a window manager; -noreset, since no real desktop resets."""
    reading, writing = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-noreset", "-displayfd", str(writing), "-screen", "0", "1280x800x24"],
        pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as answer:
        return server, ":" + answer.readline().strip()


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
