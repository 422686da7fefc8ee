#!/usr/bin/env python3
"""Counts what one change of the volume makes each program touch, library by library: instructions,
and lines of memory (64 bytes) of code and of data, each line once.

usage: touched.py NAME PROGRAM [ARGUMENT...] [-- NAME PROGRAM [ARGUMENT...]]...

Changes come one by one, and others have had the processor's caches in between: every line is waited
for, and so the lines say more about the time than the instructions do. A simulated processor counts
them, from empty caches at each change, so that they are the same on a busy machine.
"""
import collections
import os
import re
import socket
import subprocess
import sys
import tempfile
import time

from screen import private_screen

START_SECONDS = 10  # Under the simulation, on a slow machine.
SETTLING_SECONDS = 0.8
FIRST_PERCENTAGES = (45, 16, 36, 58)  # Each once before, so that its text is known.
COUNTED_PERCENTAGES = FIRST_PERCENTAGES * 2
COUNTS = ("Ir", "ILmr", "DLmr", "DLmw")  # Instructions, and lines read or written for the first time.
LARGE_CACHE = "--LL=8388608,16,64"  # Nothing is touched twice for lack of room.
LIBRARIES_SHOWN = 24


def started(command, environment):
    return subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL)


def takes_connections(path):
    with socket.socket(socket.AF_UNIX) as connection:
        return connection.connect_ex(path) == 0


def private_sound(folder, environment):
    path = folder + "/sound"
    server = started(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1",
                      "-L", "module-null-sink sink_name=speaker",
                      "-L", f"module-native-protocol-unix auth-anonymous=1 socket={path}"],
                     environment)
    while not takes_connections(path):
        if server.poll() is not None:
            sys.exit("touched: PulseAudio does not start")
        time.sleep(0.05)
    return server, "unix:" + path


def change(percent, environment):
    subprocess.run(["pactl", "set-sink-volume", "speaker", f"{percent}%"], env=environment,
                   check=True)
    time.sleep(SETTLING_SECONDS)


def count_changes(command, output, environment):
    program = started(["valgrind", "--tool=callgrind", "--instr-atstart=no", "--cache-sim=yes",
                       LARGE_CACHE, f"--callgrind-out-file={output}", *command], environment)

    def count(switch):
        subprocess.run(["callgrind_control", "-i", switch, str(program.pid)], env=environment,
                       check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    time.sleep(START_SECONDS)
    for percent in FIRST_PERCENTAGES:
        change(percent, environment)
    for percent in COUNTED_PERCENTAGES:
        count("on")  # With empty caches.
        change(percent, environment)
        count("off")
    program.terminate()
    program.wait()


def by_library(output):
    """Returns each library's counts for one change."""
    table = subprocess.run(["callgrind_annotate", "--threshold=100", "--show=" + ",".join(COUNTS),
                            output], check=True, stdout=subprocess.PIPE, text=True).stdout
    sums = collections.defaultdict(lambda: [0] * len(COUNTS))
    row = re.compile(r"\s*((?:(?:[\d,]+|\.)\s*(?:\([^)]*\))?\s+){4})\S.*\[(.*)\]$")
    for line in table.splitlines():
        found = row.match(line)
        if not found:
            continue
        numbers = re.sub(r"\([^)]*\)", "", found[1]).split()
        for place, number in enumerate(numbers):
            value = 0 if number == "." else int(number.replace(",", ""))
            sums[os.path.basename(found[2])][place] += value / len(COUNTED_PERCENTAGES)
    return sums


def programs_from(words):
    programs = [[]]
    for word in words:
        if word == "--":
            programs.append([])
        else:
            programs[-1].append(word)
    return [(words[0], words[1:]) for words in programs]


def print_table(names, counts):
    def cells(table, library):
        instructions, code, read, written = table[library]
        return f"{instructions:.0f} | {code:.0f} | {read + written:.0f}"

    def lines(table, library):
        return sum(table[library][1:])

    print("| | " + " | ".join(f"{name}: instructions | lines of code | of data" for name in names)
          + " |")
    print("|---|" + "---:|" * 3 * len(names))
    for table in counts:
        table["everything"] = [sum(column) for column in zip(*table.values())]
    libraries = sorted(set().union(*counts), key=lambda library: -lines(counts[0], library))
    for library in libraries[:LIBRARIES_SHOWN]:
        print(f"| {library} | " + " | ".join(cells(table, library) for table in counts) + " |")


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    programs = programs_from(sys.argv[1:])
    environment = {k: v for k, v in os.environ.items() if k != "WAYLAND_DISPLAY"}
    with tempfile.TemporaryDirectory() as folder:
        environment.update(HOME=folder, XDG_RUNTIME_DIR=folder, GDK_BACKEND="x11", NO_AT_BRIDGE="1",
                           DBUS_SESSION_BUS_ADDRESS="unix:path=" + folder + "/no-bus")
        screen, environment["DISPLAY"] = private_screen()
        sound, environment["PULSE_SERVER"] = private_sound(folder, environment)
        counts = []
        try:
            for name, command in programs:
                output = f"{folder}/{name}.counts"
                count_changes(command, output, environment)
                counts.append(by_library(output))
        finally:
            sound.terminate()
            screen.terminate()
            sound.wait()
    print_table([name for name, _ in programs], counts)


if __name__ == "__main__":
    main()
