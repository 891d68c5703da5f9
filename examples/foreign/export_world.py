#!/usr/bin/env python3
"""Writes the outlines of a GeoJSON file as a mainframe would: see outlines.h.

    ./export_world.py ../mapview/data/world.geojson world.outlines

Accents are dropped: names are written in the letters from A to Z.
"""
import json
import math
import struct
import sys
import unicodedata


def text(string, size):
    plain = unicodedata.normalize("NFKD", string).encode("ascii", "ignore").decode()
    return plain[:size].ljust(size).encode("cp037")  # EBCDIC; right for letters, digits and the punctuation of names


def number(value):
    """IBM double precision: a sign, a characteristic of base 16, a fraction of 56 bits."""
    if value == 0.0:
        return bytes(8)
    fraction, exponent = math.frexp(abs(value))
    digits = -(-exponent // 4)
    whole = int(math.ldexp(fraction, 56 + exponent - 4 * digits))
    return bytes([(value < 0) << 7 | 64 + digits]) + whole.to_bytes(7, "big")


def main(source, target):
    with open(source, encoding="utf-8") as file:
        features = json.load(file)["features"]
    out = [text("OUTLINES", 8), struct.pack(">I", len(features))]
    for feature in features:
        rings = [ring[:-1] for polygon in feature["geometry"]["coordinates"] for ring in polygon]
        out += [text(feature["properties"]["name"], 40), struct.pack(">I", len(rings))]
        for ring in rings:
            out.append(struct.pack(">I", len(ring)))
            out += [number(coordinate) for position in ring for coordinate in position]
    with open(target, "wb") as file:
        file.write(b"".join(out))


if __name__ == "__main__":
    main(*sys.argv[1:])
