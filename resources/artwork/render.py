#!/usr/bin/env python3
"""Renders the vector sources beside this script to the bundle's PNG images.

usage: render.py [OUTPUT_FOLDER]      (default: ../images)

Every SOURCE.svg becomes SOURCE.png, SOURCE@2x.png and SOURCE@3x.png. A source's width and height
are its size in points, so its pixels at scale N are exactly N times as many. Needs rsvg-convert
(Debian's librsvg2-bin).
"""

import pathlib
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import pngfile

SOURCES = pathlib.Path(__file__).resolve().parent
IMAGES = SOURCES.parent / "images"
SCALES = (1, 2, 3)  # pixels per point


def sources():
    return sorted(SOURCES.glob("*.svg"))


def file_name(stem, scale):
    return f"{stem}.png" if scale == 1 else f"{stem}@{scale}x.png"


def rasterised(source, scale):
    """The source as an image at `scale` pixels per point."""
    command = ["rsvg-convert", "--zoom", str(scale), "--format", "png", str(source)]
    return pngfile.decode(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)


def render_all(folder):
    folder.mkdir(parents=True, exist_ok=True)
    for source in sources():
        for scale in SCALES:
            pngfile.write(folder / file_name(source.stem, scale), rasterised(source, scale))


if __name__ == "__main__":
    render_all(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else IMAGES)
