#!/usr/bin/env python3
"""Draws the program's icon and writes quorvane.ico: an evening sky with the Sun behind two hills, on a rounded
sheet. Run it in this folder after a change of the drawing; the file is kept in the repository."""

import math
import struct
import zlib

SAMPLES = 4  # an edge of a pixel is looked at this often
SKY_TOP, SKY_BOTTOM = (28, 42, 110), (250, 150, 90)
SUN = (255, 232, 160)
FAR_HILL, NEAR_HILL = (92, 62, 120), (38, 34, 74)


def inside_sheet(x, y):
    radius, margin = 0.2, 0.02
    dx = max(margin + radius - x, x - (1 - margin - radius), 0)
    dy = max(margin + radius - y, y - (1 - margin - radius), 0)
    return math.hypot(dx, dy) <= radius


def colour(x, y):
    """Red, green, blue at a place of the unit square; None outside the sheet."""
    if not inside_sheet(x, y):
        return None
    if y > 0.80 - 0.16 * math.sin(math.pi * (x * 1.1 + 0.75)):
        return NEAR_HILL
    if y > 0.70 - 0.12 * math.sin(math.pi * (x * 1.3 - 0.15)):
        return FAR_HILL
    if math.hypot(x - 0.46, y - 0.46) < 0.2:
        return SUN
    part = min(y / 0.75, 1)
    return tuple(a + (b - a) * part for a, b in zip(SKY_TOP, SKY_BOTTOM))


def pixel(px, py, size):
    total, hits = [0.0, 0.0, 0.0], 0
    for i in range(SAMPLES * SAMPLES):
        seen = colour((px + (i % SAMPLES + 0.5) / SAMPLES) / size, (py + (i // SAMPLES + 0.5) / SAMPLES) / size)
        if seen:
            hits += 1
            total = [a + b for a, b in zip(total, seen)]
    if not hits:
        return (0, 0, 0, 0)
    return tuple(round(channel / hits) for channel in total) + (round(255 * hits / SAMPLES**2),)


def bitmap(size):
    """A picture of an icon file: header, rows from below with blue first, and an empty mask."""
    rows = b"".join(
        bytes((b, g, r, a))
        for y in reversed(range(size))
        for r, g, b, a in (pixel(x, y, size) for x in range(size)))
    mask = bytes((size + 31) // 32 * 4 * size)
    return struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, 32, 0, len(rows), 0, 0, 0, 0) + rows + mask


def png(size):
    rows = b"".join(b"\0" + b"".join(bytes(pixel(x, y, size)) for x in range(size)) for y in range(size))

    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def main():
    pictures = [(size, bitmap(size)) for size in (16, 24, 32, 48)] + [(256, png(256))]
    offset = 6 + 16 * len(pictures)
    entries = b""
    for size, data in pictures:
        entries += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    with open("quorvane.ico", "wb") as file:
        file.write(struct.pack("<HHH", 0, 1, len(pictures)) + entries + b"".join(data for _, data in pictures))


if __name__ == "__main__":
    main()
