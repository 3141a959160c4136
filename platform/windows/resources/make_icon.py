#!/usr/bin/env python3
"""Draws the artwork of packaging/icons/quorvane.svg once more, in the sizes that Windows asks for, and writes
quorvane.ico. Run it in this folder after a change of the drawing; the file is kept in the repository."""

import math
import struct
import zlib

SAMPLES = 4  # an edge of a pixel is looked at this often
SKY = ((0.0, (31, 95, 168)), (0.6, (95, 176, 216)), (1.0, (251, 211, 141)))
NEAR = ((42 / 64, (47, 158, 98)), (1.0, (20, 90, 58)))
SUN, MOUNTAIN, SNOW, RIM = (255, 243, 196), (61, 90, 128), (255, 255, 255), (15, 47, 87)
MOUNTAIN_SHAPE = ((0, 50), (22, 24), (46, 54), (46, 64), (0, 64))
SNOW_SHAPE = ((14, 33.5), (22, 24), (29.6, 33.5), (25.5, 32), (22, 35.5), (18, 32))
NEAR_CURVES = (((0, 52), (14, 40), (26, 46), (36, 50)), ((36, 50), (46, 54), (56, 48), (64, 42)))


def blend(stops, part):
    for (start, first), (end, second) in zip(stops, stops[1:]):
        if part <= end:
            share = max(part - start, 0) / (end - start)
            return tuple(a + (b - a) * share for a, b in zip(first, second))
    return stops[-1][1]


def curve_points(curve, steps=16):
    for i in range(steps + 1):
        t = i / steps
        weights = ((1 - t) ** 3, 3 * t * (1 - t) ** 2, 3 * t * t * (1 - t), t ** 3)
        yield tuple(sum(w * point[axis] for w, point in zip(weights, curve)) for axis in (0, 1))


NEAR_SHAPE = tuple(point for curve in NEAR_CURVES for point in curve_points(curve)) + ((64, 64), (0, 64))


def inside(shape, x, y):
    odd = False
    for (x1, y1), (x2, y2) in zip(shape, shape[1:] + shape[:1]):
        if (y1 > y) != (y2 > y) and x < x1 + (y - y1) / (y2 - y1) * (x2 - x1):
            odd = not odd
    return odd


def from_frame(x, y, radius=13):
    """How far a place lies outside the rounded frame; negative inside."""
    dx, dy = abs(x - 32) - 28 + radius, abs(y - 32) - 28 + radius
    return math.hypot(max(dx, 0), max(dy, 0)) + min(max(dx, dy), 0) - radius


def picture(x, y):
    if inside(NEAR_SHAPE, x, y):
        return blend(NEAR, y / 64)
    if inside(SNOW_SHAPE, x, y):
        return SNOW
    if inside(MOUNTAIN_SHAPE, x, y):
        return MOUNTAIN
    if math.hypot(x - 43, y - 23) < 10.5:
        return SUN
    return blend(SKY, y / 64)


def colour(x, y):
    """Red, green, blue at a place of the unit square; None outside the frame."""
    x, y = 64 * x, 64 * y
    distance = from_frame(x, y)
    if distance > 1.25:
        return None
    seen = picture(x, y)
    if distance > -1.25:
        return tuple(0.45 * a + 0.55 * b for a, b in zip(seen, RIM))
    return seen


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
