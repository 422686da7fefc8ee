#!/usr/bin/env python3
"""Proves that the bundle's images are what their vector sources render to, and that the artwork
keeps what the slider relies on: sizes, stretchable tracks, centred thumbs, shadows within bounds.

usage: artwork_test.py          (needs rsvg-convert; reads the checkout that it lies in)
"""

import pathlib
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
IMAGES = ROOT / "resources" / "images"
ICON = ROOT / "resources" / "icons" / "org.tarnwick.mixer.svg"
sys.path.insert(0, str(ROOT / "resources" / "artwork"))
import pngfile
import render

# Another version of the renderer may round differently; a changed drawing shows far more.
CHANNEL_TOLERANCE = 4  # of 255, after premultiplying
# A curve's left and right halves are sampled a little differently; half a point off is 100 or so.
MIRROR_TOLERANCE = 20
VISIBLE, OPAQUE = 40, 235  # alpha of 255
MAXIMUM_BYTES = 12000
OVERHANG = 2  # points that the slider lets a thumb's image reach past the end of its track
CAP_INSET = 9  # points kept unstretched at each end of a track
WIDEST_TRACK, NARROWEST_TRACK = 2000, 40  # points
PANELS = ((28, 28, 30), (0, 0, 0), (242, 242, 247))  # the window, a lock screen, a light panel

SIZES = {  # points
    "thumb_default": (31, 31), "speaker_quiet": (15, 18), "speaker_loud": (20, 18),
    "thumb_cream": (31, 31), "thumb_cream_active": (31, 31),
    "thumb_cream_rect": (26, 31), "thumb_cream_rect_active": (26, 31),
    "speaker_quiet_cream": (15, 18), "speaker_loud_cream": (20, 18),
    "left_track_cream2": (20, 10), "right_track_cream": (20, 10),
    "right_track_cream_highlighted": (20, 10),
    "thumb_metal": (31, 31), "thumb_metal_active": (31, 31),
    "left_track_metal": (20, 10), "right_track_metal": (20, 10),
    "right_track_metal_highlighted": (20, 10),
}
TRACKS = [stem for stem in SIZES if "_track_" in stem]
THUMBS = [stem for stem in SIZES if stem.startswith("thumb_")]
PAIRS = [  # a picture and the one that takes its place while the slider is held
    ("thumb_cream", "thumb_cream_active"), ("thumb_cream_rect", "thumb_cream_rect_active"),
    ("thumb_metal", "thumb_metal_active"),
    ("right_track_cream", "right_track_cream_highlighted"),
    ("right_track_metal", "right_track_metal_highlighted"),
]


def image(stem, scale, folder=IMAGES):
    return pngfile.read(folder / render.file_name(stem, scale))


def variants(stems):
    return [(stem, scale) for stem in stems for scale in render.SCALES]


def over(pixel, panel):
    alpha = pixel[3]
    return tuple((value * alpha + below * (255 - alpha)) / 255 for value, below in zip(pixel, panel))


def premultiplied(pixel):
    return over(pixel, (0, 0, 0)) + (pixel[3],)


def all_pixels(picture):
    return [picture.pixel(x, y) for y in range(picture.height) for x in range(picture.width)]


def greatest_difference(one, other):
    return max(abs(a - b) for p, q in zip(all_pixels(one), all_pixels(other))
               for a, b in zip(premultiplied(p), premultiplied(q)))


def mean_difference(one, other, panel):
    pairs = list(zip(all_pixels(one), all_pixels(other)))
    total = sum(max(abs(a - b) for a, b in zip(over(p, panel), over(q, panel))) for p, q in pairs)
    return total / len(pairs)


def bounds(picture, least_alpha):
    """Left, top, right and bottom of the part at least that opaque, in pixels, the last two
    exclusive."""
    solid = [(x, y) for y in range(picture.height) for x in range(picture.width)
             if picture.pixel(x, y)[3] >= least_alpha]
    columns, rows = [x for x, _ in solid], [y for _, y in solid]
    return min(columns), min(rows), max(columns) + 1, max(rows) + 1


def stretched_columns(picture, scale, width):
    """The columns of a track drawn `width` points wide: the ends as they are, the middle scaled
    with interpolation between neighbours (the worst case for a seam)."""
    cap, total = CAP_INSET * scale, width * scale
    middle_from, middle_to = picture.width - 2 * cap, total - 2 * cap
    for x in range(middle_to):
        at = cap + (x + 0.5) * middle_from / middle_to - 0.5
        left = int(at // 1)
        yield left, left + 1


class TheImages(unittest.TestCase):
    def test_are_exactly_the_expected_files(self):
        expected = {render.file_name(*variant) for variant in variants(SIZES)}
        self.assertEqual({path.name for path in IMAGES.iterdir()}, expected)

    def test_have_one_source_each(self):
        self.assertEqual({source.stem for source in render.sources()}, set(SIZES))

    def test_match_their_sources(self):
        with tempfile.TemporaryDirectory() as folder:
            render.render_all(pathlib.Path(folder))
            for stem, scale in variants(SIZES):
                with self.subTest(stem=stem, scale=scale):
                    fresh, kept = image(stem, scale, pathlib.Path(folder)), image(stem, scale)
                    self.assertEqual((fresh.width, fresh.height), (kept.width, kept.height))
                    self.assertLessEqual(greatest_difference(fresh, kept), CHANNEL_TOLERANCE)

    def test_measure_their_points_at_every_scale(self):
        for stem, scale in variants(SIZES):
            with self.subTest(stem=stem, scale=scale):
                picture = image(stem, scale)
                points = SIZES[stem]
                self.assertEqual((picture.width, picture.height),
                                 (points[0] * scale, points[1] * scale))

    def test_are_small_and_carry_no_metadata(self):
        for path in sorted(IMAGES.iterdir()):
            with self.subTest(name=path.name):
                data = path.read_bytes()
                self.assertEqual([kind for kind, _ in pngfile.chunks(data)],
                                 ["IHDR", "IDAT", "IEND"])
                self.assertLess(len(data), MAXIMUM_BYTES)

    def test_show_clearly_that_the_slider_is_held(self):
        for (normal, held), panel in ((pair, panel) for pair in PAIRS for panel in PANELS[:2]):
            with self.subTest(held=held, panel=panel):
                self.assertGreater(mean_difference(image(normal, 1), image(held, 1), panel), 8)


class TheIcons(unittest.TestCase):
    def test_match_their_source_at_every_size(self):
        with tempfile.TemporaryDirectory() as folder:
            render.render_icons(pathlib.Path(folder))
            for size in render.ICON_SIZES:
                with self.subTest(size=size):
                    fresh, kept = (pngfile.read(render.icon_file(pathlib.Path(where), size))
                                   for where in (folder, render.ICONS))
                    self.assertEqual((kept.width, kept.height), (size, size))
                    self.assertLessEqual(greatest_difference(fresh, kept), CHANNEL_TOLERANCE)

    def test_are_exactly_the_expected_files(self):
        self.assertEqual(set(render.ICONS.rglob("*.png")),
                         {render.icon_file(render.ICONS, size) for size in render.ICON_SIZES})


class ATrack(unittest.TestCase):
    def test_is_uniform_across_its_stretched_middle(self):
        for stem, scale in variants(TRACKS):
            with self.subTest(stem=stem, scale=scale):
                picture = image(stem, scale)
                # One column more on each side: interpolation reaches that far.
                columns = range(CAP_INSET * scale - 1, picture.width - CAP_INSET * scale + 1)
                first = picture.column(columns[0])
                self.assertTrue(all(picture.column(x) == first for x in columns))

    def test_stretches_without_a_seam_from_the_narrowest_to_the_widest(self):
        for stem, scale in variants(TRACKS):
            picture = image(stem, scale)
            middle = picture.column(picture.width // 2)
            for width in (NARROWEST_TRACK, NARROWEST_TRACK + 1, 197, 280, 520, WIDEST_TRACK):
                with self.subTest(stem=stem, scale=scale, width=width):
                    sampled = {x for pair in stretched_columns(picture, scale, width) for x in pair}
                    self.assertTrue(all(picture.column(x) == middle for x in sampled))

    def test_has_mirrored_ends(self):
        for stem, scale in variants(TRACKS):
            with self.subTest(stem=stem, scale=scale):
                picture = image(stem, scale)
                for x in range(CAP_INSET * scale):
                    mirror = picture.column(picture.width - 1 - x)
                    for one, other in zip(picture.column(x), mirror):
                        for a, b in zip(premultiplied(one), premultiplied(other)):
                            self.assertLessEqual(abs(a - b), MIRROR_TOLERANCE)

    def test_covers_the_same_groove_filled_or_empty(self):
        for left, right in (("left_track_cream2", "right_track_cream"),
                            ("left_track_metal", "right_track_metal")):
            for scale in render.SCALES:
                with self.subTest(left=left, scale=scale):
                    self.assertEqual(bounds(image(left, scale), VISIBLE),
                                     bounds(image(right, scale), VISIBLE))


class AThumb(unittest.TestCase):
    def test_has_its_body_in_the_middle_of_the_image(self):
        for stem, scale in variants(THUMBS):
            with self.subTest(stem=stem, scale=scale):
                picture = image(stem, scale)
                left, top, right, bottom = bounds(picture, OPAQUE)
                self.assertAlmostEqual(left + right, picture.width, delta=1)
                self.assertAlmostEqual(top + bottom, picture.height, delta=1)

    def test_fades_out_before_the_edge_of_the_image(self):
        for stem, scale in variants(THUMBS):
            with self.subTest(stem=stem, scale=scale):
                picture = image(stem, scale)
                edge = picture.column(0) + picture.column(picture.width - 1)
                edge += [picture.pixel(x, y) for x in range(picture.width)
                         for y in (0, picture.height - 1)]
                self.assertLessEqual(max(pixel[3] for pixel in edge), 28)

    def test_hides_the_end_of_its_track_at_the_end_of_its_way(self):
        tracks = {"thumb_cream": "left_track_cream2", "thumb_metal": "left_track_metal"}
        for stem, scale in variants(THUMBS):
            with self.subTest(stem=stem, scale=scale):
                kind = next((kind for kind in tracks if stem.startswith(kind)), None)
                groove = bounds(image(tracks[kind], scale), VISIBLE)[0] if kind else 0
                body = bounds(image(stem, scale), OPAQUE)[0]
                self.assertLessEqual(body, OVERHANG * scale + groove)

    def test_of_the_default_skin_is_neutral_for_tinting(self):
        for scale in render.SCALES:
            picture = image("thumb_default", scale)
            for red, green, blue, _ in all_pixels(picture):
                self.assertEqual((red, red), (green, blue))
            self.assertGreaterEqual(min(picture.pixel(picture.width // 2, picture.height // 2)), 245)


class ASpeaker(unittest.TestCase):
    def test_has_the_same_body_quiet_and_loud(self):
        for suffix in ("", "_cream"):
            for scale in render.SCALES:
                quiet, loud = (image(f"speaker_{kind}{suffix}", scale) for kind in ("quiet", "loud"))
                for x in range(13 * scale):
                    self.assertEqual(quiet.column(x), loud.column(x))

    def test_is_as_far_from_its_track_quiet_or_loud(self):
        for suffix in ("", "_cream"):
            for scale in render.SCALES:
                quiet, loud = (image(f"speaker_{kind}{suffix}", scale) for kind in ("quiet", "loud"))
                self.assertEqual(quiet.width - bounds(quiet, VISIBLE)[2], bounds(loud, VISIBLE)[0])

    def test_stands_out_from_a_dark_panel(self):
        for stem in ("speaker_quiet", "speaker_loud", "speaker_quiet_cream", "speaker_loud_cream"):
            picture = image(stem, 1)
            for panel in PANELS[:2]:
                self.assertGreaterEqual(max(over(p, panel)[0] for p in all_pixels(picture)), 200)


class TheIcon(unittest.TestCase):
    def test_renders_at_its_size(self):
        picture = render.rasterised(ICON, 1)
        self.assertEqual((picture.width, picture.height), (64, 64))
        self.assertEqual(picture.pixel(32, 12)[3], 255)


if __name__ == "__main__":
    unittest.main()
