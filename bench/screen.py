"""The screen that programs are measured on."""
import os
import subprocess


def private_screen():
    """An X server without a window manager, and its name; -noreset, since no real desktop resets."""
    reading, writing = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-noreset", "-displayfd", str(writing), "-screen", "0", "1280x800x24"],
        pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as answer:
        return server, ":" + answer.readline().strip()
