"""The screen that programs are measured on."""
import os
import subprocess


def private_screen():
    """Starts an X server without a window manager; returns the process and the display's name.

    A real desktop never resets its server, hence -noreset.
    """
    reading, writing = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-noreset", "-displayfd", str(writing), "-screen", "0", "1280x800x24"],
        pass_fds=[writing], stderr=subprocess.DEVNULL)
    os.close(writing)
    with os.fdopen(reading) as answer:
        return server, ":" + answer.readline().strip()
