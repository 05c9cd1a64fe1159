#!/usr/bin/env python3
"""Writes resources/RGBGamut.png: the Rec. 709 gamut laid out on the CIE 1931 xy plane.

2400 x 2600 pixels show x 0.1 to 0.7 from left to right and y 0.65 to 0.0 from top to bottom, each
pixel by the chromaticity of its centre. Inside the gamut a pixel has the brightest sRGB colour of
its chromaticity. Outside it has the colour of the nearest point of the gamut's edge, which fades
into an even ground.
"""

import math
import pathlib
import struct
import zlib

WIDTH, HEIGHT = 2400, 2600
LEFT, RIGHT, TOP, BOTTOM = 0.1, 0.7, 0.65, 0.0
GROUND = (236, 236, 238)
FADE = 0.055  # in xy; the edge's colour keeps 1/e of its weight at this distance

# Rec. 709: red, green, blue
CORNERS = ((0.64, 0.33), (0.30, 0.60), (0.15, 0.06))
# IEC 61966-2-1: CIE XYZ to linear sRGB
MATRIX = ((3.2406, -1.5372, -0.4986), (-0.9689, 1.8758, 0.0415), (0.0557, -0.2040, 1.0570))
OUT = pathlib.Path(__file__).resolve().parent.parent / "RGBGamut.png"


def encode(linear):
    """The sRGB transfer curve, 0..1 to 0..255."""
    if linear <= 0.0031308:
        return 255.0 * 12.92 * linear
    return 255.0 * (1.055 * linear ** (1.0 / 2.4) - 0.055)


STEPS = 16384
ENCODED = [encode(i / STEPS) for i in range(STEPS + 1)]


def linear_rgb(x, y):
    z = 1.0 - x - y
    return [row[0] * x + row[1] * y + row[2] * z for row in MATRIX]


def brightest(x, y):
    """The brightest sRGB colour at (x, y), as three floats 0..255."""
    rgb = [max(0.0, value) for value in linear_rgb(x, y)]
    scale = STEPS / max(rgb)
    return [ENCODED[int(value * scale + 0.5)] for value in rgb]


def nearest_on_edge(x, y):
    best = None
    for k in range(3):
        ax, ay = CORNERS[k]
        dx, dy = CORNERS[(k + 1) % 3][0] - ax, CORNERS[(k + 1) % 3][1] - ay
        t = min(1.0, max(0.0, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
        px, py = ax + t * dx, ay + t * dy
        distance = math.hypot(x - px, y - py)
        if best is None or distance < best[0]:
            best = (distance, px, py)
    return best


def side(a, b, x, y):
    return (b[0] - a[0]) * (y - a[1]) - (b[1] - a[1]) * (x - a[0])


def inside(x, y):
    return (side(CORNERS[0], CORNERS[1], x, y) >= 0 and side(CORNERS[1], CORNERS[2], x, y) >= 0
            and side(CORNERS[2], CORNERS[0], x, y) >= 0)


def row_bytes(row):
    y = TOP + (BOTTOM - TOP) * (row + 0.5) / HEIGHT
    out = bytearray()
    for column in range(WIDTH):
        x = LEFT + (RIGHT - LEFT) * (column + 0.5) / WIDTH
        if inside(x, y):
            color = brightest(x, y)
        else:
            distance, px, py = nearest_on_edge(x, y)
            weight = math.exp(-((distance / FADE) ** 2))
            color = [weight * c + (1.0 - weight) * g
                     for c, g in zip(brightest(px, py), GROUND)] if weight > 1e-4 else GROUND
        out += bytes(int(c + 0.5) for c in color)
    return bytes(out)


def filtered(row, above):
    """The PNG filter of the smallest residue: of Sub, Up and Paeth."""
    left = bytes(3) + row[:-3]
    corner = bytes(3) + above[:-3]

    def paeth(a, b, c):
        pa, pb, pc = abs(b - c), abs(a - c), abs(a + b - 2 * c)
        return a if pa <= pb and pa <= pc else b if pb <= pc else c

    choices = (
        (1, bytes((v - a) & 255 for v, a in zip(row, left))),
        (2, bytes((v - b) & 255 for v, b in zip(row, above))),
        (4, bytes((v - paeth(a, b, c)) & 255 for v, a, b, c in zip(row, left, above, corner))),
    )
    cost = lambda choice: sum(v if v < 128 else 256 - v for v in choice[1])
    number, data = min(choices, key=cost)
    return bytes([number]) + data


def chunk(kind, data):
    return (struct.pack(">I", len(data)) + kind + data
            + struct.pack(">I", zlib.crc32(kind + data)))


def main():
    packer = zlib.compressobj(9)
    packed = bytearray()
    above = bytes(3 * WIDTH)
    for number in range(HEIGHT):
        row = row_bytes(number)
        packed += packer.compress(filtered(row, above))
        above = row
    packed += packer.flush()
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    OUT.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"sRGB", b"\0")
                    + chunk(b"IDAT", bytes(packed)) + chunk(b"IEND", b""))


if __name__ == "__main__":
    main()
