"""Reads and writes 8-bit RGBA PNG files with the standard library alone.

The artwork's renderer, its preview and its test share this, so that none of them needs an imaging
library. Pixels are straight (not premultiplied), four bytes each, rows from the top.
"""

import struct
import zlib

SIGNATURE = b"\x89PNG\r\n\x1a\n"
BYTES_PER_PIXEL = 4
# Each strategy is the set of line filters that may be used; the best of them is picked per line.
UNFILTERED = ((0,),)
EVERY_STRATEGY = ((0,), (2,), (4,), (0, 1, 2, 3, 4))


class Image:
    """Width and height in pixels; `pixels` is a bytearray of width * height * 4 bytes."""

    def __init__(self, width, height, pixels=None):
        self.width = width
        self.height = height
        self.pixels = bytearray(width * height * BYTES_PER_PIXEL) if pixels is None else pixels

    def pixel(self, x, y):
        start = (y * self.width + x) * BYTES_PER_PIXEL
        return tuple(self.pixels[start:start + BYTES_PER_PIXEL])

    def column(self, x):
        return [self.pixel(x, y) for y in range(self.height)]


def chunks(data):
    """The (type, payload) pairs of a PNG file's bytes; ValueError if they are damaged."""
    if data[:8] != SIGNATURE:
        raise ValueError("not a PNG file")
    found, at = [], 8
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        payload = data[at + 8:at + 8 + length]
        (checksum,) = struct.unpack(">I", data[at + 8 + length:at + 12 + length])
        if checksum != zlib.crc32(kind + payload):
            raise ValueError(f"damaged chunk {kind!r}")
        found.append((kind.decode("ascii"), payload))
        at += 12 + length
    return found


def _paeth(left, up, corner):
    guess = left + up - corner
    to_left, to_up, to_corner = abs(guess - left), abs(guess - up), abs(guess - corner)
    if to_left <= to_up and to_left <= to_corner:
        return left
    return up if to_up <= to_corner else corner


def _prediction(kind, left, up, corner):
    return (0, left, up, (left + up) // 2, _paeth(left, up, corner))[kind]


def _unfilter(kind, line, above):
    for i in range(len(line)):
        left = line[i - BYTES_PER_PIXEL] if i >= BYTES_PER_PIXEL else 0
        corner = above[i - BYTES_PER_PIXEL] if i >= BYTES_PER_PIXEL else 0
        line[i] = (line[i] + _prediction(kind, left, above[i], corner)) & 0xFF
    return line


def _filter(kind, line, above):
    out = bytearray(len(line))
    for i, value in enumerate(line):
        left = line[i - BYTES_PER_PIXEL] if i >= BYTES_PER_PIXEL else 0
        corner = above[i - BYTES_PER_PIXEL] if i >= BYTES_PER_PIXEL else 0
        out[i] = (value - _prediction(kind, left, above[i], corner)) & 0xFF
    return out


def decode(data):
    """The image in a PNG file's bytes; ValueError unless it is 8-bit RGBA without interlacing."""
    parts = chunks(data)
    header = struct.unpack(">IIBBBBB", parts[0][1])
    width, height = header[:2]
    if header[2:] != (8, 6, 0, 0, 0):
        raise ValueError("not an 8-bit RGBA image")
    raw = zlib.decompress(b"".join(payload for kind, payload in parts if kind == "IDAT"))
    stride = width * BYTES_PER_PIXEL
    above, pixels = bytes(stride), bytearray()
    for y in range(height):
        start = y * (stride + 1)
        above = _unfilter(raw[start], bytearray(raw[start + 1:start + 1 + stride]), above)
        pixels += above
    return Image(width, height, pixels)


def _cost(line):
    """The usual estimate of how a filtered line will deflate: the sum of signed magnitudes."""
    return sum(min(value, 256 - value) for value in line)


def _packed(image, kinds):
    stride = image.width * BYTES_PER_PIXEL
    above, raw = bytes(stride), bytearray()
    for y in range(image.height):
        line = image.pixels[y * stride:(y + 1) * stride]
        candidates = [(kind, _filter(kind, line, above)) for kind in kinds]
        kind, best = min(candidates, key=lambda candidate: _cost(candidate[1]))
        raw.append(kind)
        raw += best
        above = line
    return zlib.compress(bytes(raw), 9)


def encode(image, strategies=EVERY_STRATEGY):
    """The smallest of a few encodings. No text, time or colour-space chunks: the same pixels
    always give the same bytes."""
    body = min((_packed(image, kinds) for kinds in strategies), key=len)
    header = struct.pack(">IIBBBBB", image.width, image.height, 8, 6, 0, 0, 0)
    data = SIGNATURE
    for kind, payload in ((b"IHDR", header), (b"IDAT", body), (b"IEND", b"")):
        data += struct.pack(">I", len(payload)) + kind + payload
        data += struct.pack(">I", zlib.crc32(kind + payload))
    return data


def read(path):
    with open(path, "rb") as file:
        return decode(file.read())


def write(path, image, strategies=EVERY_STRATEGY):
    with open(path, "wb") as file:
        file.write(encode(image, strategies))
