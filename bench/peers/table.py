#!/usr/bin/env python3
"""Prints the output of peers_bench as a table. Compares the first line, the mixer, with the best of
the others, except those called bare: they are not mixers but the least that a mixer on the same
libraries can be. Fails if a limit is exceeded."""

import itertools
import json
import statistics
import sys


def percentile99(values):
    return sorted(values)[int(0.99 * (len(values) - 1) + 0.5)]


# Title, key, how the samples are summarised, decimals, and the highest ratio to the best peer's
# number: None where there is no limit, 0 where the number itself has to be 0.
ROWS = [
    ("start until the first picture, ms", "first_picture_ms", statistics.median, 0, 0.2),
    ("start until every volume is shown, ms", "settled_picture_ms", statistics.median, 0, 0.2),
    ("memory, proportional, MB", "proportional_mb", statistics.median, 1, 0.3),
    ("memory, private, MB", "own_mb", statistics.median, 1, 0.3),
    ("wake-ups a second while idle", "idle_wake_ups", statistics.median, 1, 0),
    ("processor time while idle, ms a second", "idle_processor_ms", statistics.median, 2, None),
    ("change until a pixel moves, median, ms", "change_to_pixel_ms", statistics.median, 2, 1.0),
    ("change until a pixel moves, 99th percentile, ms", "change_to_pixel_ms", percentile99, 2, 1.0),
    ("processor time a change, ms", "change_processor_ms", statistics.median, 2, 0.5),
]


def read(lines):
    mixers = [json.loads(line) for line in lines]
    for mixer in mixers:
        for quantity in ("proportional", "own"):
            mixer[quantity + "_mb"] = [kb / 1024 for kb in mixer[quantity + "_kb"]]
    return mixers


def compare(own, peers, limit):
    """Returns the text of the ratio's cell and whether the limit is kept."""
    best = min(peers)
    if limit is None:
        return "", True
    if limit == 0:
        return f"{own:.1f} (0)", own == 0
    return f"{own / best:.2f} ({limit})", own <= limit * best


def main():
    mixers = read(sys.stdin)
    is_peer = [not mixer["name"].startswith("bare") for mixer in mixers[1:]]
    if not any(is_peer):
        return "nothing to compare"
    print("| | " + " | ".join(mixer["name"] for mixer in mixers) + " | ratio to the best (at most) |")
    print("|---|" + "---:|" * (len(mixers) + 1))
    missed = [f"{mixer['name']}: {mixer['changes_unseen']} changes were never seen"
              for mixer in mixers if mixer["changes_unseen"]]
    for title, key, number, decimals, limit in ROWS:
        values = [number(mixer[key]) for mixer in mixers]
        peers = list(itertools.compress(values[1:], is_peer))
        ratio, kept = compare(values[0], peers, limit)
        cells = " | ".join(f"{value:.{decimals}f}" for value in values)
        print(f"| {title} | {cells} | {ratio} |")
        if not kept:
            missed.append(f"{title}: {ratio}")
    runs, changes = (len(mixers[0][key]) for key in ("first_picture_ms", "change_to_pixel_ms"))
    print(f"\n{runs} runs and {changes} changes each, in turns.")
    for line in missed:
        print("Missed:", line)
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
