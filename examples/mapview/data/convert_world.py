#!/usr/bin/env python3
"""Converts the country outlines of the npm package world-atlas 2.0.2 to the worlds in this folder.

    npm pack world-atlas@2.0.2 && tar xf world-atlas-2.0.2.tgz
    ./convert_world.py package/countries-110m.json > world.geojson
    ./convert_world.py package/countries-50m.json --compact > world-50m.outlines

The input is TopoJSON, whose rings cross the antimeridian and run around the pole. For a flat map, and
for RFC 7946, they must be cut: outlines end at longitude 180 and continue at -180, and a ring around
the pole returns along the edge of the map.

examples/common/compact_outlines.h describes the compact form.
"""
import json
import sys

UNITS_PER_DEGREE = 500  # of the compact form


def decode_arcs(topology):
    """Yields each arc in degrees. The file has steps in whole numbers, with a scale and an offset."""
    (scale_x, scale_y), (move_x, move_y) = (
        topology["transform"]["scale"], topology["transform"]["translate"])
    for arc in topology["arcs"]:
        x = y = 0
        points = []
        for step_x, step_y in arc:
            x += step_x
            y += step_y
            points.append((round(x * scale_x + move_x, 4), round(y * scale_y + move_y, 4)))
        yield points


def ring_of(arcs, indices):
    """Joins arcs to an open ring. Index ~i means arc i backwards; both arcs have their common vertex."""
    ring = []
    for i in indices:
        ring += (arcs[i] if i >= 0 else arcs[~i][::-1])[:-1]
    return ring


def without_repeats(ring):
    return [b for a, b in zip(ring[-1:] + ring, ring) if a != b]


def unroll(ring):
    """Unwraps longitudes beyond 180. Returns the ring, and by how many degrees it ends off its start."""
    out = [ring[0]]
    for lon, lat in ring[1:] + ring[:1]:
        turns = round((lon - out[-1][0]) / 360.0)
        out.append((lon - 360.0 * turns, lat))
    return without_repeats(out[:-1]), out[-1][0] - out[0][0]


def at_longitude(a, b, lon):
    return lon, round(a[1] + (b[1] - a[1]) * (lon - a[0]) / (b[0] - a[0]), 4)


def half(ring, lon, side):
    """Returns the part of the ring east (side 1) or west (side -1) of a meridian."""
    out = []
    for a, b in zip(ring, ring[1:] + ring[:1]):
        if side * (a[0] - lon) >= 0:
            out.append(a)
        if (a[0] - lon) * (b[0] - lon) < 0:
            out.append(at_longitude(a, b, lon))
    crossings = sum((a[0] < lon) != (b[0] < lon) for a, b in zip(ring, ring[1:] + ring[:1]))
    if crossings > 2:
        sys.exit("a ring crosses the antimeridian more than twice: cut it into more pieces")
    return out


def close_over_pole(ring, winding):
    """Closes a ring around a pole along the antimeridian and the pole."""
    step = 360.0 if winding > 0 else -360.0
    edge = 180.0 if step > 0 else -180.0
    pole = 90.0 if sum(lat for _, lat in ring) > 0 else -90.0
    for i, (a, b) in enumerate(zip(ring, ring[1:] + [(ring[0][0] + step, ring[0][1])])):
        if (a[0] - edge) * (b[0] - edge) <= 0 and a[0] != b[0]:
            cut = at_longitude(a, b, edge)
            # One full turn, from the first vertex after the antimeridian to the last before it.
            turned = [(x - step, y) for x, y in ring[i + 1:]] + ring[:i + 1]
            return [(-edge, cut[1])] + turned + [cut, (edge, pole), (-edge, pole)]
    sys.exit("a ring around the pole does not meet the antimeridian")


def pieces(ring):
    """Cuts the ring into rings between the longitudes -180 and 180."""
    ring, winding = unroll(ring)
    if len(ring) < 3:
        return []  # the source holds a polygon that is a single point
    if abs(winding) > 180.0:
        return [close_over_pole(ring, winding)]
    if min(lon for lon, _ in ring) < -180.0:
        ring = [(lon + 360.0, lat) for lon, lat in ring]
    if max(lon for lon, _ in ring) <= 180.0:
        return [ring]
    east = [(lon - 360.0, lat) for lon, lat in half(ring, 180.0, 1)]
    return [half(ring, 180.0, -1), east]


def wound(ring, counter_clockwise):
    ring = without_repeats([(round(lon, 4), lat) for lon, lat in ring])
    area = sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(ring, ring[1:] + ring[:1]))
    ring = ring if (area > 0) == counter_clockwise else ring[::-1]
    return ring + ring[:1]


def is_pinprick(ring):
    """True for the hole of 200 metres around the pole that Antarctica has at 1:50 million."""
    return max(abs(lat + 90.0) for _, lat in ring) < 0.01


def polygons(arcs, geometry):
    """Yields each polygon: its outer ring, then its holes. Fails if one with a hole has to be cut."""
    for rings in geometry["arcs"] if geometry["type"] == "MultiPolygon" else [geometry["arcs"]]:
        rings = [ring_of(arcs, ring) for ring in rings]
        rings = [ring for ring in rings if not is_pinprick(ring)]
        outer = [wound(piece, True) for piece in pieces(rings[0])]
        holes = [wound(hole, False) for hole in rings[1:]]
        if holes and len(outer) > 1:
            sys.exit("a polygon with holes crosses the antimeridian: sort its holes into the pieces")
        for ring in outer:
            yield [ring] + holes


def geojson(countries):
    lines = []
    for name, outline in countries:
        feature = {
            "type": "Feature",
            "properties": {"name": name},
            "geometry": {"type": "MultiPolygon", "coordinates": outline},
        }
        lines.append(json.dumps(feature, ensure_ascii=False, separators=(",", ":")))
    text = '{"type":"FeatureCollection","features":[\n' + ",\n".join(lines) + "\n]}\n"
    return text.encode()


def number(n):
    """Encodes seven bits in a byte, the lowest first; 128 is added to each byte but the last."""
    out = bytearray()
    while n > 127:
        out.append(n & 127 | 128)
        n >>= 7
    return bytes(out) + bytes([n])


def step(n):
    """Encodes a signed step: 0, -1, 1, -2 and so on are the numbers 0, 1, 2, 3."""
    return number(2 * n if n >= 0 else -2 * n - 1)


def compact(countries):
    out = bytearray(b"outlines in 1/%d degree\n" % UNITS_PER_DEGREE)
    for name, outline in countries:
        rings = []
        for ring in sum(outline, []):
            ring = [(round(lon * UNITS_PER_DEGREE), round(lat * UNITS_PER_DEGREE))
                    for lon, lat in ring[:-1]]
            ring = without_repeats(ring)
            if len(ring) >= 3:
                rings.append(ring)
        out += name.encode() + b"\n" + number(len(rings))
        x = y = 0
        for ring in rings:
            out += number(len(ring))
            for next_x, next_y in ring:
                out += step(next_x - x) + step(next_y - y)
                x, y = next_x, next_y
    return bytes(out)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        topology = json.load(file)
    arcs = list(decode_arcs(topology))
    countries = [(country["properties"]["name"], list(polygons(arcs, country)))
                 for country in topology["objects"]["countries"]["geometries"]]
    write = compact if "--compact" in sys.argv else geojson
    sys.stdout.buffer.write(write(countries))


if __name__ == "__main__":
    main()
