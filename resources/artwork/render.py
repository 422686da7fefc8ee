#!/usr/bin/env python3
"""Renders the vector sources beside this script to the bundle's PNG images, and the program's icon to
those of windows.

usage: render.py [OUTPUT_FOLDER]      (default: ../images and ../icons)

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
ICONS = SOURCES.parent / "icons"
ICON = ICONS / "org.tarnwick.mixer.svg"
ICON_POINTS = 64
ICON_SIZES = (16, 24, 32, 48, 64, 128)  # pixels


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


def icon_file(folder, size):
    """As themes of icons lay out their folders."""
    return folder / "hicolor" / f"{size}x{size}" / "apps" / f"{ICON.stem}.png"


def render_icons(folder):
    for size in ICON_SIZES:
        file = icon_file(folder, size)
        file.parent.mkdir(parents=True, exist_ok=True)
        pngfile.write(file, rasterised(ICON, size / ICON_POINTS))


if __name__ == "__main__":
    chosen = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else None
    render_all(chosen or IMAGES)
    render_icons(chosen or ICONS)
