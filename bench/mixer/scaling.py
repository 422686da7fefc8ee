#!/usr/bin/env python3
"""Reads the mixer benchmark's JSON on standard input, prints the medians as a table, and checks what
has to hold of them: ratios within the run, so that a slow machine changes nothing."""

import json
import re
import sys

LINEAR = ("assembly", "refresh", "paint")
# One row is 50 points high, a row's own slider and caption are less.
ROW_AREA = 320 * 50


def read(stream):
    times, areas = {}, {}
    for run in json.load(stream)["benchmarks"]:
        if run["aggregate_name"] != "median":
            continue
        name, size = re.fullmatch(r"(\w+)/(\d+)", run["run_name"]).groups()
        times[name, int(size)] = run["real_time"]
        areas[name, int(size)] = run.get("painted_points", 0.0)
    return times, areas


def failures(times, areas):
    for name in LINEAR:
        ratio = times[name, 10000] / 10000 / (times[name, 100] / 100)
        if ratio > 2:
            yield f"{name}: a row costs {ratio:.2f} times as much at 10,000 as at 100 (at most 2)"
    # A change may walk the list once; the walk is a small part of a refresh, which does it too.
    for name in ("notification", "dragStep"):
        extra = times[name, 10000] - times[name, 5]
        if extra > times["refresh", 10000] / 10:
            yield f"{name}: {extra:.0f} us more at 10,000 rows than at 5, no mere walk of the list"
        for size in (5, 10000):
            if not 0 < areas[name, size] <= ROW_AREA:
                yield f"{name}: paints {areas[name, size]:.0f} square points at {size} rows"
    if areas["repeatedPaint", 10000] != 0:
        yield "repeatedPaint: paints although nothing has changed"


def main():
    times, areas = read(sys.stdin)
    sizes = sorted({size for _, size in times})
    print("| microseconds |" + "".join(f" {size} rows |" for size in sizes))
    print("|---|" + "---|" * len(sizes))
    for name in dict.fromkeys(name for name, _ in times):
        print(f"| {name} |" + "".join(f" {times[name, size]:.1f} |" for size in sizes))
    wrong = list(failures(times, areas))
    print("\n".join(wrong) or "Every ratio holds.")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
