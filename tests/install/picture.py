#!/usr/bin/env python3
"""Writes the screen of a virtual display as a PNG, and judges it.

    picture.py SCREEN PICTURE.png COLOUR...      SCREEN is what Xvfb keeps under -fbdir

Status 1 when hardly anything is on it: a program that came up draws frames, texts and symbols in many
colours, while an empty screen is one black area. Each COLOUR, as rrggbb, must be among them: that of
something which is there only when all is well."""

import collections
import struct
import sys
import zlib


def read_screen(path):
    """Width, height and pixels (3 bytes each, red first) of an X window dump."""
    data = open(path, "rb").read()
    header = struct.unpack(">25I", data[:100])
    size, width, height, byte_order, depth = header[0], header[4], header[5], header[7], header[11]
    line, colors = header[12], header[19]
    if depth != 32 or byte_order != 0:
        sys.exit("%s: a screen of %d bits, which this does not read" % (path, depth))
    start = size + 12 * colors
    pixels = bytearray()
    for row in range(height):
        begin = start + row * line
        quads = data[begin:begin + 4 * width]
        part = bytearray(3 * width)
        part[0::3], part[1::3], part[2::3] = quads[2::4], quads[1::4], quads[0::4]
        pixels += part
    return width, height, bytes(pixels)


def write_png(path, width, height, pixels):
    def chunk(kind, content):
        body = kind + content
        return struct.pack(">I", len(content)) + body + struct.pack(">I", zlib.crc32(body))

    lines = b"".join(b"\0" + pixels[3 * width * row:3 * width * (row + 1)] for row in range(height))
    with open(path, "wb") as picture:
        picture.write(b"\x89PNG\r\n\x1a\n"
                      + chunk(b"IHDR", struct.pack(">2I5B", width, height, 8, 2, 0, 0, 0))
                      + chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b""))


def main():
    width, height, pixels = read_screen(sys.argv[1])
    write_png(sys.argv[2], width, height, pixels)
    counts = collections.Counter(pixels[at:at + 3] for at in range(0, len(pixels), 3))
    largest = counts.most_common(1)[0][1] / (width * height)
    told = {color: counts[bytes.fromhex(color)] for color in sys.argv[3:]}
    print("%s: %d colours, the most frequent one on %.0f %%; pixels of %s"
          % (sys.argv[2], len(counts), 100 * largest, told))
    sys.exit(0 if len(counts) > 100 and largest < 0.9 and min(told.values()) > 50 else 1)


main()
