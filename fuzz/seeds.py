#!/usr/bin/env python3
"""Writes the first inputs of a fuzz target: seeds.py TARGET FOLDER.

They are the places that chance finds late: whole keywords, lengths at a limit, the shapes that
once went wrong. A target without seeds here starts from nothing.
"""
import math
import pathlib
import struct
import sys

def doubles(*values):
    return b"".join(b"\0" + struct.pack("<d", v) for v in values)  # one of any bits, by its 0


def small(*values):
    return b"".join(b"\1" + struct.pack("b", v) for v in values)  # sixteenths


def corners(*points):
    return b"".join(struct.pack("bb", x, y) for x, y in points)


def ring(*points):
    """Visible edges; the last vertex closes."""
    return b"".join(bytes([1 if p != points[-1] else 128]) + struct.pack("bb", *p) for p in points)


def rings(seed):
    """Some star-shaped rings of whole numbers, the larger the number the more of them."""
    data = b""
    for ring_number in range(seed % 3 + 1):
        n, reach = 3 + (seed + ring_number) % 7, 30 + 17 * (seed % 6)
        angles = [2 * math.pi * i * (1 + seed % 2) / n + ring_number for i in range(n)]
        data += ring(*((int(reach * math.cos(a)) & -16, int(reach * math.sin(a)) & -16)
                       for a in angles))
    return data


VIEW = corners((0, 0), (0, 64), (64, 64), (64, 0))
LINES = [b"RGB 1 0.5 0", b"HSV 359.9 1 1", b"Name \"dark olive green\"", b"name gray51",
         b"$a\\\"b$ \"c", b"-.5e-300 +1e400 1.e5x", b"\t\v 12345678901234567890123", b"word" * 500]
SEEDS = {
    "clip_polygon_set": [
        b"\1" + VIEW + ring((-8, -8), (120, -8), (-8, 120)),
        b"\1" + VIEW + ring((0, 32), (70, 6), (6, 58)),
        b"\1" + VIEW + ring((-9, 9), (70, 9), (70, 20), (-9, 20)) + ring((9, 9), (20, 9), (9, 20)),
    ],
    "clip_to_view": [bytes([kind]) + corners((-32, -48), (64, -48), (64, 32), (-32, 32)) + rings(i)
                     for i in range(12) for kind in range(4)],
    "mem": [bytes(range(200)), bytes(200), bytes([5, 1] * 100)],
    "str_field": LINES,
    "matrix": [
        bytes([3, 4, 1, 0, 6, 11]) + bytes([1, 1]) + small(16, 16, -16, 8, 9, 10, 11, 12) * 4,
        bytes([2, 2]) + doubles(1e308, 1e-308) + bytes([11, 1]) + doubles(float("inf"), 2.0) * 6,
    ],
    "conic": [
        small(16, 0, 16, 0, 0, -16, 16, 0, 0, 16) + b"\1" + small(20, 20, 5, 0, 0, 16),
        small(4, 0, 16, 0, 0, -16, 32, 0, 32, 0) + b"\0" + small(1, 1, 0, 0, 0, 16),
        small(16, 0, -16, 0, 0, -16, 17, 5, 32, 27) + b"\1" + small(1, 2, 3),
        small(16, 0, 0, 0, -16, 0, -16, 16, 16, 16) + b"\1" + small(1, 2, 3),
        doubles(1e200, 1.0, 1e-200, 0.0, 5e-324, -1.0, 1.0, 0.0, 0.0, 1.0),
    ],
    "colour_text": [b"\1\2\3" + bytes(12) + bytes([i % 4]) + t for i, t in enumerate(LINES)]
                   + [b"abc" + bytes(12) + b"\0" + n for n in (b"SNOW", b"rosy brown", b"grey100")],
    "tokenize": [b"\0\3 .,3.14abc def,,x.1", b"\1\2, Hello, world!, \x80abc\x85",
                 b"\2\0nothing delimits", b"\0\4\x80 .;\x80 \x90a;;b"],
    "names": [b"\1" + bytes(range(0, 250, 3)), b"\0\3abcabcd:1,ab:2", b"\0\2ababc,de:,f:1:2,"],
    "foreign": [struct.pack(">f", v) for v in (1.0, -0.0, float("inf"), 1e-45, 3.4e38, 0.1)]
               + [struct.pack(">d", v) for v in (1.0, 2.0**252, 2.0**-260, 5e-324, float("nan"))]
               + [bytes(range(256)), b"\x42\x64\0\0", b"\xC1\x10\0\0\0\0\0\0"],
    "line_types": [bytes([0, 5, 1, 2, 3, 1, 2, 1, 7, 0, 5, 1, 2, 3, 1, 2, 1, 7, 13, 14]),
                   bytes([0, 23]) + bytes([1] * 24) + bytes([1, 255]), bytes([2, 15, 13]) * 30],
    "paths": [b"\1/a/b.tar.gz" + b" " * 30 + b"..\\c/./d", b"\0AAZ", b"\2" + b"/x" * 600,
              b"\0" + b"z" * 1023, b"\0\\\\host\\share\\.profile"],
    "session_peer": [bytes([0, 8 * 5, *b"hello", 8 * 3 + 1, *b"ok\0"]),
                     bytes([1, 6, 0, 8 * 3, *b"abc"]), bytes([0, 8 * 10 + 7, *b"x" * 10]),
                     bytes([0, 8 * 5 + 7, *b"abcd\0", 8 * 2, *b"ef"])],
}


def main():
    target, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for number, seed in enumerate(SEEDS.get(target, [])):
        (folder / f"seed{number}").write_bytes(seed)


if __name__ == "__main__":
    main()
