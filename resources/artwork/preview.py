#!/usr/bin/env python3
"""Composes rows of every skin from the rendered images, at rest on the left and held on the
right, for looking at.

usage: preview.py OUTPUT.png [SCALE [PANEL_COLOUR]]      (default: 2 pixels per point, #1c1c1e)
"""

import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
import pngfile
import render

SLIDER_WIDTH, ROW_HEIGHT, MARGIN, GAP, CAP = 280, 50, 20, 6, 9  # points
POSITIONS = (0.0, 0.3, 0.7, 1.0)
SKINS = (  # caption colour, thumb, active thumb, glyph suffix, left, right and active right track
    ("#fff", "thumb_default", "thumb_default", "", None, None, None),
    ("rgb(214,192,159)", "thumb_cream", "thumb_cream_active", "_cream",
     "left_track_cream2", "right_track_cream", "right_track_cream_highlighted"),
    ("rgb(214,192,159)", "thumb_cream_rect", "thumb_cream_rect_active", "_cream",
     "left_track_cream2", "right_track_cream", "right_track_cream_highlighted"),
    ("rgb(184,184,184)", "thumb_metal", "thumb_metal_active", "",
     "left_track_metal", "right_track_metal", "right_track_metal_highlighted"),
)


class Canvas:
    def __init__(self, image, scale):
        self.image, self.scale = image, scale

    def blend(self, x, y, source):
        red, green, blue, alpha = source
        if not alpha or not (0 <= x < self.image.width and 0 <= y < self.image.height):
            return
        at = (y * self.image.width + x) * 4
        for channel, value in enumerate((red, green, blue)):
            below = self.image.pixels[at + channel]
            self.image.pixels[at + channel] = (value * alpha + below * (255 - alpha) + 127) // 255

    def draw(self, image, left, middle):
        top = middle - image.height // 2
        for y in range(image.height):
            for x in range(image.width):
                self.blend(left + x, top + y, image.pixel(x, y))

    def draw_track(self, image, left, middle, width, visible):
        cap, top = CAP * self.scale, middle - image.height // 2
        for x in visible:
            source = x if x < cap else max(cap, image.width - (width - x))
            source = cap if cap <= x < width - cap else source
            for y in range(image.height):
                self.blend(left + x, top + y, image.pixel(source, y))


def load(stem, scale):
    return pngfile.read(render.IMAGES / render.file_name(stem, scale))


def background(panel, scale):
    width = 2 * (SLIDER_WIDTH + 2 * MARGIN)
    height = len(SKINS) * len(POSITIONS) * ROW_HEIGHT + MARGIN
    parts = [f'<rect width="{width}" height="{height}" rx="12" fill="{panel}"/>']
    for row in range(len(SKINS) * len(POSITIONS)):
        for column in (0, 1):
            x = MARGIN + column * (SLIDER_WIDTH + 2 * MARGIN)
            y = row * ROW_HEIGHT
            parts.append(f'<text x="{x}" y="{y + 17}" font-family="sans-serif" font-size="12" '
                         f'fill="{SKINS[row // len(POSITIONS)][0]}">Media (Speaker): '
                         f'{round(POSITIONS[row % len(POSITIONS)] * 100)}%</text>')
            if row < len(POSITIONS):
                start, end = x + 15 + GAP, x + SLIDER_WIDTH - 20 - GAP
                at = start + POSITIONS[row] * (end - start - 31) + 15.5
                parts.append(f'<rect x="{start}" y="{y + 33}" width="{end - start}" height="4" '
                             f'rx="2" fill="#fff" fill-opacity="0.3"/><rect x="{start}" y="{y + 33}" '
                             f'width="{at - start}" height="4" rx="2" fill="#ff3b30"/>')
    svg = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{width}" height="{height}">'
           + "".join(parts) + "</svg>")
    with tempfile.NamedTemporaryFile("w", suffix=".svg") as file:
        file.write(svg)
        file.flush()
        return render.rasterised(pathlib.Path(file.name), scale)


def draw_row(canvas, skin, active, x, y, position):
    scale = canvas.scale
    _, thumb, thumb_active, suffix, left, right, right_active = skin
    quiet, loud = load("speaker_quiet" + suffix, scale), load("speaker_loud" + suffix, scale)
    knob = load(thumb_active if active else thumb, scale)
    middle = (y + 35) * scale
    start, end = x * scale + quiet.width + GAP * scale, (x + SLIDER_WIDTH - GAP) * scale - loud.width
    offset = round(position * (end - start - knob.width))
    split = offset + knob.width // 2
    if left:
        empty = load(right_active if active else right, scale)
        canvas.draw_track(empty, start, middle, end - start, range(split, end - start))
        canvas.draw_track(load(left, scale), start, middle, end - start, range(split))
    canvas.draw(quiet, x * scale, middle)
    canvas.draw(loud, end + GAP * scale, middle)
    canvas.draw(knob, start + offset, middle)


def compose(scale, panel):
    canvas = Canvas(background(panel, scale), scale)
    for column in (0, 1):
        for row in range(len(SKINS) * len(POSITIONS)):
            draw_row(canvas, SKINS[row // len(POSITIONS)], column == 1,
                     MARGIN + column * (SLIDER_WIDTH + 2 * MARGIN), row * ROW_HEIGHT,
                     POSITIONS[row % len(POSITIONS)])
    return canvas.image


if __name__ == "__main__":
    scale = int(sys.argv[2]) if len(sys.argv) > 2 else 2
    panel = sys.argv[3] if len(sys.argv) > 3 else "#1c1c1e"
    pngfile.write(sys.argv[1], compose(scale, panel), pngfile.UNFILTERED)
