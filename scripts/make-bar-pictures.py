#!/usr/bin/env python3
"""Writes the button bar's drag cursors and the wizard's default picture
into resources/ (run once; the files are kept in the repository)."""
import math
import os
import struct
import sys

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources")

ARROW = [
    "X...........",
    "XX..........",
    "XwX.........",
    "XwwX........",
    "XwwwX.......",
    "XwwwwX......",
    "XwwwwwX.....",
    "XwwwwwwX....",
    "XwwwwwwwX...",
    "XwwwwwwwwX..",
    "XwwwwwXXXXX.",
    "XwwXwwX.....",
    "XwX.XwwX....",
    "XX..XwwX....",
    "X....XwwX...",
    ".....XwwX...",
    "......XX....",
]


def cursor(pixels, hotspot):
    """pixels: 32 rows of 32 chars: '.' transparent, 'X' black, 'w' white."""
    xor_rows, and_rows = [], []
    for row in reversed(pixels):  # bottom-up
        x_bits = a_bits = 0
        for i, ch in enumerate(row):
            bit = 1 << (31 - i)
            if ch == ".":
                a_bits |= bit
            elif ch == "w":
                x_bits |= bit
        xor_rows.append(struct.pack(">I", x_bits))
        and_rows.append(struct.pack(">I", a_bits))
    header = struct.pack("<IiiHHIIiiII", 40, 32, 64, 1, 1, 0, 256, 0, 0, 2, 0)
    colours = struct.pack("<II", 0x000000, 0xFFFFFF)
    image = header + colours + b"".join(xor_rows) + b"".join(and_rows)
    directory = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", 32, 32, 0, 0, hotspot[0], hotspot[1], len(image), 22)
    return directory + entry + image


def canvas():
    return [["."] * 32 for _ in range(32)]


def with_arrow(c):
    for y, row in enumerate(ARROW):
        for x, ch in enumerate(row):
            if ch != ".":
                c[y][x] = ch


def droppable():
    c = canvas()
    with_arrow(c)
    # A small button beside the arrow: the thing being placed.
    for y in range(14, 26):
        for x in range(12, 28):
            edge = y in (14, 25) or x in (12, 27)
            c[y][x] = "X" if edge else "w"
    for x in range(15, 25):
        c[19][x] = "X"
    return ["".join(r) for r in c]


def undroppable():
    c = canvas()
    with_arrow(c)
    cx, cy, r_out, r_in = 20, 20, 9, 6
    for y in range(32):
        for x in range(32):
            d = math.hypot(x - cx, y - cy)
            on_ring = r_in <= d <= r_out
            # The slash from upper left to lower right.
            on_bar = abs((x - cx) - (y - cy)) <= 1.5 and d <= r_out
            if on_ring or on_bar:
                c[y][x] = "X"
            elif d < r_in:
                c[y][x] = "w"
    return ["".join(r) for r in c]


def wizard_bmp(width=96, height=200):
    rows = []
    for y in range(height):  # top to bottom, reversed below
        t = y / (height - 1)
        base = (int(40 + 60 * t), int(70 + 90 * t), int(140 + 100 * t))  # r, g, b
        row = bytearray()
        for x in range(width):
            r, g, b = base
            # Three steps rising to the right near the bottom.
            for i in range(3):
                left, top = 12 + i * 24, 150 - i * 22
                if left <= x < left + 22 and top <= y < 188:
                    r, g, b = (245, 245, 250) if (x - left) > 1 and (y - top) > 1 else (30, 40, 90)
            # A star above the top step.
            sx, sy = 70, 60
            if abs(x - sx) + abs(y - sy) < 10 or (abs(x - sx) < 2 and abs(y - sy) < 16) or (
                    abs(y - sy) < 2 and abs(x - sx) < 16):
                r, g, b = (255, 230, 120)
            row += bytes((b, g, r))
        while len(row) % 4:
            row += b"\0"
        rows.append(bytes(row))
    bits = b"".join(reversed(rows))
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(bits), 2835, 2835, 0, 0)
    head = struct.pack("<2sIHHI", b"BM", 14 + len(info) + len(bits), 0, 0, 14 + len(info))
    return head + info + bits


def main():
    files = {
        "pickdrop.cur": cursor(droppable(), (0, 0)),
        "picknodrop.cur": cursor(undroppable(), (0, 0)),
        "wizard.bmp": wizard_bmp(),
    }
    for name, data in files.items():
        with open(os.path.join(OUT, name), "wb") as f:
            f.write(data)
    return 0


if __name__ == "__main__":
    sys.exit(main())
