#!/usr/bin/env python3
"""Prints the output of comparison_bench as the tables of docs/comparison.md."""

import json
import statistics
import sys


def row(*cells):
    print("| " + " | ".join(str(cell) for cell in cells) + " |")


def turnings(result):
    row("", "clicks", "the music becomes", "the ringtone becomes")
    print("|---|---:|---:|---:|")
    for each in result:
        levels = (f"{each[key]:+.1f} dB" for key in ("music_db", "ringtone_db"))
        row(each["name"], each["clicks"], *levels)


def openings(result):
    row("", *(each["name"] for each in result))
    print("|---|" + "---:|" * len(result))
    for title, key in (("first time in a session, painted", "first_painted_ms"),
                       ("first time, complete", "first_complete_ms"),
                       ("later, painted", "painted_ms"),
                       ("later, complete", "complete_ms")):
        medians = [statistics.median(each[key]) for each in result]
        row(title + ", ms", *(f"{value:.0f}" for value in medians))
        row("ratio", *(f"{value / medians[0]:.1f}" for value in medians))
    later = result[0]["painted_ms"]
    print(f"\nMedians of {len(result[0]['first_painted_ms'])} and {len(later)}, in turns.")
    for each in result:
        print(f"{each['name']}: {min(each['complete_ms']):.0f} to {max(each['complete_ms']):.0f} ms")


def readings(result):
    for each in result:
        print(f"\n{each['name']}: sliders {each['sliders'] or 'none'}")
        for action, words in each["words"]:
            print(f"    {action}: {' / '.join(words) or '(nothing)'}")


def main():
    result = json.load(sys.stdin)
    turnings(result["turning"])
    print()
    openings(result["openings"])
    readings(result["reading"])


if __name__ == "__main__":
    main()
