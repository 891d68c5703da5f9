"""Runs mapview as its users do: picks, counts, what stands in the picture, bad input."""
import collections
import contextlib
import json
import math
import os
import re
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import unittest.mock
import zlib

MAPVIEW, WORLD = sys.argv.pop(1), sys.argv.pop(1)

PLACES = [  # longitude, latitude, country
    (2.35, 48.85, "France"), (37.6, 55.75, "Russia"), (-74.0, 40.8, "United States of America"),
    (-58.6, -34.7, "Argentina"), (31.2, 29.9, "Egypt"), (116.4, 39.9, "China"),
    (149.1, -35.3, "Australia"), (28.2, -29.6, "Lesotho"), (25.0, -30.0, "South Africa"),
    (139.5, 36.0, "Japan"), (-51.7, 64.2, "Greenland"), (-175.0, 66.5, "Russia"),
    (179.9, 67.0, "Russia"), (0.0, -80.0, "Antarctica"), (-30.0, 40.0, "no country"),
]


def mapview(*arguments):
    return subprocess.run([MAPVIEW, *arguments], capture_output=True, text=True, timeout=100)


def pixel_by_hand(place, centre, width, turn, size):
    scale = size[0] / width
    x = (place[0] - centre[0]) * scale
    y = (place[1] - centre[1]) * scale / max(math.cos(math.radians(centre[1])), 0.1)
    c, s = math.cos(math.radians(turn)), math.sin(math.radians(turn))
    return size[0] / 2 + x * c - y * s, size[1] / 2 - x * s - y * c


class Picks(unittest.TestCase):
    def check(self, place, country, centre, width, turn, size=(1600, 800)):
        view = ["--center", "%g,%g" % centre, "--width", str(width), "--rotation", str(turn)]
        pick = mapview(*view, "--pick", "%g,%g" % place)
        line = re.search(r"place .*: (.*), at pixel (\d+),(\d+)", pick.stdout)
        self.assertTrue(line, pick)
        self.assertEqual(line[1], country)
        for found, expected in zip((int(line[2]), int(line[3])),
                                   pixel_by_hand(place, centre, width, turn, size)):
            self.assertLess(abs(found + 0.5 - expected), 0.51, pick.stdout)
        self.assertIn(": %s, at place" % country,
                      mapview(*view, "--pixel", line[2] + "," + line[3]).stdout)

    def test_well_known_places_in_the_whole_world_and_in_turned_close_ups(self):
        for turn, (longitude, latitude, country) in enumerate(PLACES):
            with self.subTest(country=country, longitude=longitude):
                place = (longitude, latitude)
                self.check(place, country, (0, 0), 360, 0)
                self.check(place, country, (longitude + 3, latitude * 0.97), 30, 24 * turn - 170)

    def test_the_map_goes_on_behind_the_antimeridian(self):
        self.assertIn(": Russia, at pixel 880,", mapview("--center", "180,66", "--width", "100",
                                                         "--pick", "-175,66.5").stdout)
        for outside in ("--pick=100,80", "--pixel=1600,0", "--pixel=-1,5"):
            self.assertIn("outside the picture", mapview("--width", "30", outside).stdout)

    def test_the_fine_world_has_what_the_coarse_one_leaves_out_with_any_memory(self):
        for place, coarse, fine in (("12.46,43.94", "Italy", "San Marino"),
                                    ("-175.2,-21.2", "no country", "Tonga"),
                                    ("179.9,68.5", "Russia", "Russia"),
                                    ("0,-89.9", "Antarctica", "Antarctica")):
            for country, options in ((coarse, []), (fine, ["--fine"]),
                                     (fine, ["--fine", "--memory=20000"])):
                self.assertIn("place %s: %s," % (place, country),
                              mapview("--pick=" + place, *options).stdout)

    def test_a_frame_on_which_the_map_ends_keeps_land_land_and_sea_sea(self):
        for width in (640, 900, 1000, 1024, 1600):
            high = width // 2
            run = mapview("--size", "%dx%d" % (width, high), "--pixel=1,%d" % (high - 1),
                          "--pixel", "%d,%d" % (width * 0.4, high * 0.45))
            self.assertEqual(re.findall(": (.*), at", run.stdout), ["Antarctica", "no country"])


PENTAGRAM = "[[0,10],[5.9,-8.1],[-9.5,3.1],[9.5,3.1],[-5.9,-8.1],[0,10]]"


class RealMaps(unittest.TestCase):
    """Rings as many maps have them: uncut where longitudes jump, and crossing themselves."""

    RINGS = [  # rings of one polygon; places inside; places outside
        ("[[170,0],[-170,0],[-170,20],[170,20],[170,0]]",  # from the east side on, 20 degrees wide
         ("175,10", "-175,10", "180,10", "-180,10"), ("0,10", "165,10", "-165,10")),
        ("[[-170,0],[-170,20],[170,20],[170,0]]",  # from the west side on, and not closed
         ("175,10", "-175,10"), ("0,10", "165,10", "-165,10")),
        ("[[160,0],[-160,0],[-160,30],[160,30]],[[-175,10],[175,10],[175,20],[-175,20]]",
         ("165,15", "-165,15", "180,5"), ("178,15", "-178,15", "0,15")),  # with a hole
        ("[[350,0],[10,0],[10,20],[350,20]]",  # longitudes from 0 to 360
         ("355,10", "-5,10", "5,10"), ("180,10", "340,10", "20,10")),
        ("[[-150,-60],[-50,-60],[50,-60],[150,-60]]",  # once round, so it holds a pole
         ("0,-80", "179,-80", "-179,-61", "150,-89"), ("0,-59", "180,-59", "0,80")),
        ("[[150,60],[50,60],[-50,60],[-150,60]]",
         ("0,80", "179,80", "-179,61"), ("0,59", "180,59", "0,-80")),
        ("[[350,-60],[90,-60],[180,-60],[270,-60]]",  # once round, from the far end of 0 to 360
         ("0,-80", "179,-80", "-179,-61", "-5,-70"), ("0,-59", "180,-59", "0,80")),
        ("[[-180,-20],[180,-20],[180,20],[-180,20]]",  # the edge of the map, and no crossing
         ("0,0", "100,10", "-179,-10"), ("0,30", "180,30")),
        ("[[-600,0],[600,0],[600,60],[-600,60]]",  # in some other measure: nothing repeats
         ("0,30", "250,30"), ("0,-9",)),
        (PENTAGRAM, ("0,7", "7,2.7"), ("0,0", "8,-8")),  # its middle is wound about twice
    ]

    def test_places_and_pixels_in_the_picture_tell_the_same_and_what_is_meant(self):
        with tempfile.TemporaryDirectory() as folder:
            data = os.path.join(folder, "rings.json")
            for rings, inside, outside in self.RINGS:
                with open(data, "w", encoding="utf-8") as file:
                    file.write(polygon(rings))
                for expected, places in (("unnamed", inside), ("no country", outside)):
                    for place in places:
                        run = mapview("-d", data, "--center=" + place, "--width=4", "--size=99x99",
                                      "--pick=" + place, "--pixel=49,49")
                        self.assertEqual(re.findall(": (unnamed|no country),", run.stdout),
                                         [expected, expected], (rings, place, run))

    def test_a_name_neither_begins_a_line_nor_commands_the_terminal(self):
        rows = (("a\nplace 1,1: b", "a?place 1,1: b"), ("\x1b[31m\x7f\x00", "?[31m??"),
                ("\u009b31m", "?31m"), ("\u00a0\u00c2\u0080", "\u00a0\u00c2?"), ("", "unnamed"))
        with tempfile.TemporaryDirectory() as folder:
            data = os.path.join(folder, "names.json")
            for name, shown in rows:
                with open(data, "w", encoding="utf-8") as file:
                    json.dump({"type": "Feature", "properties": {"name": name},
                               "geometry": json.loads(SQUARE)}, file)
                self.assertIn("\nplace 0.5,0.4: %s, at pixel" % shown,
                              mapview("-d", data, "--pick=0.5,0.4").stdout, repr(name))

    def test_no_coast_is_drawn_where_a_ring_is_closed_over_a_pole(self):
        with tempfile.TemporaryDirectory() as folder:
            data, svg = os.path.join(folder, "pole.json"), os.path.join(folder, "map.svg")
            with open(data, "w", encoding="utf-8") as file:
                file.write(polygon(self.RINGS[4][0]))
            mapview("-d", data, "-o", svg)
            with open(svg, encoding="utf-8") as file:
                coasts = re.findall(r'<path style="fill:none[^"]*" d="([^"]*)"', file.read())
            heights = {y for coast in coasts for y in re.findall(r"[ML] [-\d.]+ ([-\d.]+)", coast)}
            self.assertEqual(len(heights), 1, heights)  # 60 degrees south all along

    def test_of_two_countries_the_later_is_on_top_also_a_turn_away(self):
        def feature(name, ring):
            return {"type": "Feature", "properties": {"name": name},
                    "geometry": {"type": "Polygon", "coordinates": [ring]}}
        sea = feature("sea", [[-180, -50], [180, -50], [180, 50], [-180, 50]])
        land = feature("land", [[170, 0], [-170, 0], [-170, 20], [170, 20]])
        with tempfile.TemporaryDirectory() as folder:
            data = os.path.join(folder, "sea.json")
            with open(data, "w", encoding="utf-8") as file:
                json.dump({"type": "FeatureCollection", "features": [sea, land]}, file)
            run = mapview("-d", data, "--pick=-175,10", "--pick=175,10", "--pick=0,10")
            self.assertEqual(re.findall(": (.*), at", run.stdout), ["land", "land", "sea"])


class Pictures(unittest.TestCase):
    VIEWS = [("0,0", "360", "0"), ("12.3,46.7", "29.1", "0"), ("12,46", "30", "20"),
             ("180,60", "100", "0"), ("180,-70", "150", "0"), ("21,33", "720", "37")]

    def test_counts_add_up_and_the_picture_holds_what_they_say(self):
        with open(WORLD, encoding="utf-8") as file:
            rings = [ring[:-1] for feature in json.load(file)["features"]
                     for polygon in feature["geometry"]["coordinates"] for ring in polygon]
        for centre, width, turn in self.VIEWS:
            with self.subTest(centre=centre, turn=turn), tempfile.TemporaryDirectory() as folder:
                svg = os.path.join(folder, "map.svg")
                run = mapview("--center", centre, "--width", width, "--rotation", turn, "-o", svg)
                count = {row[0]: [int(n) for n in row[1:]] for row in re.findall(
                    r"(polygons|vertices) +(\d+) +(\d+) +(\d+) +(\d+) +(\d+)", run.stdout)}
                for came_in, away, added, merged, drawn in count.values():
                    self.assertEqual(came_in - away + added - merged, drawn)
                self.assertEqual(count["polygons"][0], len(rings))
                self.assertEqual(count["vertices"][0], sum(map(len, rings)))
                if width == "29.1":  # upright, and no vertex on its frame
                    pixels = [pixel_by_hand(p, (12.3, 46.7), 29.1, 0, (1600, 800))
                              for ring in rings for p in ring]
                    self.assertEqual(count["vertices"][1], sum(
                        not (0 < x < 1600 and 0 < y < 800) for x, y in pixels))
                with open(svg, encoding="utf-8") as file:
                    self.check_paths(file.read(), count, middle=800 if centre[:3] == "180" else None)

    def test_a_polygon_around_the_view_is_drawn_where_it_is_picked(self):
        with tempfile.TemporaryDirectory() as folder:
            data = os.path.join(folder, "around.json")
            with open(data, "w", encoding="utf-8") as file:
                json.dump({"type": "Polygon",
                           "coordinates": [[[-1, -1], [30, -1], [-1, 30], [-1, -1]]]}, file)
            for clip, found in (("view", "unnamed"), ("rings", "no country")):
                run = mapview("-d", data, "--center", "5,5", "--width", "10", "--size", "99x99",
                              "--clip", clip, "--pick", "5,5", "--pixel", "50,50")
                self.assertIn("place 5,5: unnamed", run.stdout)
                self.assertIn("pixel 50,50: " + found, run.stdout)
        self.assertIn("--clip: view or rings", mapview("--clip", "never").stderr)

    def test_dashed_borders_of_neighbours_are_drawn_once_and_solid_ones_as_ever(self):
        with tempfile.TemporaryDirectory() as folder:
            def svg(*arguments):
                path = os.path.join(folder, "map.svg")
                mapview("--width", "30", "--center", "12,46", "-o", path, *arguments)
                with open(path, encoding="utf-8") as file:
                    return file.read()
            seen = set()
            dashed = svg("--line-type", "4")
            self.assertRegex(dashed, r"stroke-dasharray:\s*96,36,24,36;")  # 0.15 px, in eighths
            for steps in re.findall(r'<path style="fill:none[^"]*" d="([^"]*)"', dashed):
                points = re.findall(r"([ML]) ([-\d.]+ [-\d.]+)", steps)
                edges = [frozenset((a, b)) for (_, a), (step, b) in zip(points, points[1:])
                         if step == "L"]
                self.assertFalse(seen.intersection(edges))
                seen.update(edges)
            self.assertGreater(len(seen), 300)
            self.assertEqual(svg("--line-type", "1"), svg())

    def test_a_budget_of_memory_changes_nothing_but_how_often_countries_are_read(self):
        with open(WORLD, encoding="utf-8") as file:
            sizes = [20 * sum(len(ring) - 1 for polygon in feature["geometry"]["coordinates"]
                              for ring in polygon) for feature in json.load(file)["features"]]
        with tempfile.TemporaryDirectory() as folder:
            def run(*arguments):
                path = os.path.join(folder, "map.png")
                said = mapview("-o", path, "--pick", "12.5,41.9", *arguments).stdout
                memory = re.search(r"memory: (\d+) of \d+ bytes in use, (\d+) countr.* evicted", said)
                with open(path, "rb") as file:
                    return (re.sub(r".* ms\n|memory.*\n", "", said), file.read(),
                            memory and [int(n) for n in memory.groups()])
            said, picture, _ = run()
            for percent in (1, 10, 100):
                with self.subTest(percent=percent):
                    budget = sum(sizes) * percent // 100
                    self.assertEqual(max(sizes) > budget, percent == 1)
                    said_now, picture_now, (used, n_evicted) = run("--memory", str(budget))
                    self.assertEqual(said_now, said)
                    self.assertTrue(picture_now == picture)
                    self.assertLessEqual(used, budget)
                    self.assertEqual(n_evicted > len(sizes), percent < 100)
                    self.assertEqual(n_evicted == 0, percent == 100)

    def check_paths(self, svg, count, middle):
        polygons = vertices = 0
        for style, steps, scaled in re.findall(r'<path style="([^"]*)" d="([^"]*)"([^>]*)', svg):
            scale = 0.125 if "matrix(0.125,0,0,0.125,0,0)" in scaled else 1
            points = [(a, float(x) * scale, float(y) * scale)
                      for a, x, y in re.findall(r"([ML]) ([-\d.]+) ([-\d.]+)", steps)]
            for _, x, y in points:
                self.assertTrue(-0.01 <= x <= 1600.01 and -0.01 <= y <= 800.01, (x, y))
            if "fill:none" not in style:
                polygons += steps.count("Z")
                vertices += steps.count("L") + steps.count("Z")
                continue
            # No stroke may follow the frame or the antimeridian. One of up to 8 pixels is accepted:
            # rounding can move both ends of a short stroke onto them.
            for (_, x, y), (step, to_x, to_y) in zip(points, points[1:]):
                is_along = x == to_x in (0, middle, 1600) or y == to_y in (0, 800)
                self.assertFalse(step == "L" and is_along and abs(x - to_x + y - to_y) > 8, (x, y))
        self.assertEqual(polygons, count["polygons"][4])
        # Cairo writes two edges of the same direction as one, so the file has fewer vertices.
        self.assertLessEqual(vertices, count["vertices"][4])
        self.assertGreater(vertices, 0.99 * count["vertices"][4])

    def test_names_are_written_within_their_countries_in_a_font_of_the_system(self):
        with tempfile.TemporaryDirectory() as folder:
            data, svg = os.path.join(folder, "square.geojson"), os.path.join(folder, "map.svg")
            with open(data, "w", encoding="utf-8") as file:
                file.write(polygon("[[20,10],[60,10],[60,50],[20,50],[20,10]]"))
            pictures = []
            for font in ("DejaVuSans", "dejavusans", "DejaVuSans-Bold"):
                run = mapview("-d", data, "--label", font, "-o", svg)
                self.assertEqual(run.returncode, 0, run.stderr + "is fonts-dejavu-core installed?")
                with open(svg, encoding="utf-8") as file:
                    pictures.append(file.read())
            self.assertEqual(pictures[0], pictures[1])
            self.assertNotEqual(pictures[0], pictures[2])
            ink = re.search(r'15%,15%,20%[^"]*" d="([^"]*)"', pictures[0])[1]
            for x, y in re.findall(r"[ML] ([-\d.]+) ([-\d.]+)", ink):
                self.assertLess(max(abs(float(x) - 977.8), abs(float(y) - 266.7)), 89)

    def test_automatic_names_are_free_ones_also_for_several_at_once(self):
        with tempfile.TemporaryDirectory() as folder:
            open(os.path.join(folder, "mapview-AAB.png"), "w").close()
            runs = [subprocess.Popen([MAPVIEW, "--size", "64x32", "-o", "auto"], cwd=folder, text=True,
                                     stdout=subprocess.PIPE) for _ in range(4)]
            told = [re.search("picture (.*)", run.communicate()[0])[1] for run in runs]
            self.assertEqual(sorted(told), ["mapview-AA%s.png" % c for c in "ACDE"])
            self.assertEqual(sorted(os.listdir(folder)), sorted(told + ["mapview-AAB.png"]))
            self.assertTrue(all(os.path.getsize(os.path.join(folder, name)) for name in told))


def pixels_of(png):
    """Reads a PNG of 8 bits and three channels: rows of (red, green, blue)."""
    with open(png, "rb") as file:
        data = file.read()
    at, packed = 8, b""
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + size]
        wide, high = struct.unpack(">2I", body[:8]) if kind == b"IHDR" else (wide, high)
        packed += body if kind == b"IDAT" else b""
        at += size + 12
    raw, above, rows = zlib.decompress(packed), bytes(3 * wide), []
    for y in range(high):
        start = y * (3 * wide + 1)
        row = bytearray(raw[start + 1:start + 3 * wide + 1])
        for i in range(3 * wide):
            a, b, c = (row[i - 3], above[i], above[i - 3]) if i > 2 else (0, above[i], 0)
            p = a + b - c
            row[i] = (row[i] + (0, a, b, (a + b) // 2, min(
                (abs(p - a), 0, a), (abs(p - b), 1, b), (abs(p - c), 2, c))[2])[raw[start]]) % 256
        rows.append([tuple(row[i:i + 3]) for i in range(0, 3 * wide, 3)])
        above = row
    return rows


class Colours(unittest.TestCase):
    def test_sea_fill_and_border_are_as_asked_and_pens_as_many(self):
        with tempfile.TemporaryDirectory() as folder:
            png = os.path.join(folder, "map.png")
            for pens in (0, 1, 3, 100):
                reduce = ["--palette", str(pens)] if pens else []
                run = mapview("--size=120x60", "--sea", 'name "DARK BLUE"', "--fill=#Ff8000",
                              "--border", "HSV 120 1 1", "-o", png, *reduce)
                used = collections.Counter(sum(pixels_of(png), []))
                self.assertEqual(used.most_common(1)[0][0], (0, 0, 128))
                self.assertEqual((255, 128, 0) in used, pens != 1)
                self.assertEqual(max(c for (r, c, b) in used if r < 128) > 150, pens != 1)
                if pens:
                    self.assertEqual(len(used), pens)
                    counts = [int(n) for n in re.findall(
                        r"\d+(?= colours| at| farther)", run.stdout.split("came in")[0])]
                    self.assertEqual(sum(counts[1:]), counts[0])
                    self.assertGreaterEqual(counts[1], pens)

    def test_what_is_no_colour_gets_a_hint(self):
        for option, text, hint in (
                ("--sea", "Name skyblu", "mean 'Name SkyBlue'"), ("--fill", "Navy", "'Name navy'"),
                ("--border", "dark blu", "mean 'Name \"dark blue\"'"),
                ("--sea", 'name "Medium Gray"', "mean 'Name \"medium grey\"'"),
                ("--sea", "RGB 1 2 3", "each from 0 to 1"), ("--sea", "hsv 360 1 1", "below 360"),
                ("--sea", "#ff800", "six hexadecimal"), ("--sea", "#ff800x", "six hexadecimal"),
                ("--sea", "#ff80000", "six hexadecimal"), ("--sea", "#-f8000", "six hexadecimal"),
                ("--fill", "Name", "Name orange"), ("--fill", " ", "Name orange")):
            run = mapview(option, text)
            self.assertEqual((run.returncode, run.stderr.count("\n"), run.stdout), (2, 1, ""), run)
            self.assertIn("mapview: %s: '%s' is no colour; " % (option, text), run.stderr)
            self.assertIn(hint, run.stderr)


def polygon(ring):
    return '{"type":"Polygon",\n"coordinates":[%s]}' % ring


SQUARE = polygon("[[0,0],[1,0],[1,1],[0,1]]")
FEATURE = '{"type":"Feature","geometry":%s}' % SQUARE
COMPACT = "outlines in 1/500 degree\n"


class BadInput(unittest.TestCase):
    TABLE = [  # content of the file; what the error says after its name
        ("", ":1:1: no JSON"), ('{"type":\n  nonsense}', ":2:3: no JSON"),
        ('{"type":"Polygon"', ":1:18: no JSON"), ("[1e999]", ":1:2: 1e999 is no finite number"),
        ('{"features":[%s' % FEATURE, ":2:44: no JSON: the file ends too early"),  # cut after it
        ('{"type":"Pol', ":1:13: no JSON: the file ends too early"),
        ('{"type":"Polygon","coordinates":[[[0', ":1:37: no JSON: the file ends too early"),
        (SQUARE + " ]", ":2:44: no JSON: can't make sense of ']'"),
        ("[]", ": an object was expected"), ("{}", ': no "type"'), ('{"type":"Globe"}', ": no GeoJSON"),
        ('{"type":"Point","coordinates":[1,2]}', ": no polygons"),
        ('{"type":"Topology","objects":[%s]}' % FEATURE, ': no GeoJSON type: "Topology"'),
        ('{"features":[%s]}' % FEATURE, ': no "type"'), ("[%s]" % FEATURE, ": an object was exp"),
        ('{"type":"Feature","geometry":%s}' % FEATURE,
         ': at /geometry: no GeoJSON type: "Feature"'),
        ('{"features":[%s,[%s]],"type":"FeatureCollection"}' % (FEATURE, FEATURE),
         ": at /features/1: a Feature was expected"),
        ('{"type":"FeatureCollection","features":[%s,%s]}' % (SQUARE, FEATURE),
         ": at /features/0: a Feature was expected"),
        ('{"type":"FeatureCollection","features":%s}' % FEATURE,
         ": at /features: an array was expected"),
        ('{"type":"FeatureCollection","features":[],"old":{"features":[%s]}}' % FEATURE,
         ": no polygons"),
        ('{"type":"FeatureCollection","features":[]}', ": no polygons"),
        ('{"type":"FeatureCollection","features":[{"type":"Feature","geometry":%s}]}'
         % polygon("[[0,0],[1,0],[0,0]]"), ": at /features/0/geometry/coordinates/0: a ring of 3"),
        (polygon("[[0,0],[1,0],[1,1e999],[0,0]]"), ":2:32: 1e999 is no finite number"),
        (polygon("[[0,0],[1,0],[1,1e10],[0,0]]"), ": at /coordinates/0/2: no position"),
        (polygon('[[0,0],[1,0],["1",1],[0,0]]'), ": at /coordinates/0/2: no position"),
        (polygon("[[0,0],[1],[1,1],[0,0]]"), ": at /coordinates/0/1: no position"),
        ('{"type":"GeometryCollection","geometries":[' * 100 + "]}" * 100, "nested too deeply"),
        ('{"type":"a\\nb\\u001b[31m"}', ': no GeoJSON type: "a?b?[31m"'),  # one line, no colours
        (COMPACT, ": no polygons"), (COMPACT + "Atlantis", ": at byte 25: a name without an end"),
        (COMPACT + "Atlantis\n\1\2", ": at byte 36: a polygon of fewer than three"),
        (COMPACT + "Atlantis\n\1\3\1\1\4\1\1", ": at byte 41: the file ends too early"),
        (COMPACT + "Atlantis\n" + "\x80" * 3, ": at byte 39: a number of more than 32 bits"),
    ]

    def check(self, folder, said, *arguments):
        before = sorted(os.listdir(folder))
        run = mapview(*arguments)
        self.assertEqual(run.returncode, 2, run)
        self.assertEqual(run.stderr.count("\n"), 1, run.stderr)
        self.assertIn(said, run.stderr)
        self.assertEqual(sorted(os.listdir(folder)), before)

    def test_each_fault_is_one_line_with_its_place_and_leaves_no_file(self):
        with tempfile.TemporaryDirectory() as folder:
            data, output = os.path.join(folder, "bad.geojson"), os.path.join(folder, "map.png")
            for content, said in self.TABLE:
                with self.subTest(content=content[:60]):
                    with open(data, "w", encoding="utf-8") as file:
                        file.write(content)
                    said = data + said if said[0] == ":" else said
                    self.check(folder, said, "-d", data, "-o", output)
            self.check(folder, folder + "/none: can't be opened", "-d", folder + "/none")
            self.check(folder, folder + ": can't be opened", "-d", folder)
            for said, *arguments in (("ends in .png or .svg", "-o", folder + "/map.gif"),
                                     ("folder %s/no: No such" % folder, "-o", folder + "/no/a.png"),
                                     ("only for a .png", "--palette=9", "-o", folder + "/map.svg"),
                                     ("--output: the name is empty", "-o", ""),
                                     ("--label: the name is empty", "--label", "")):
                self.check(folder, said, "-d", folder + "/none", *arguments)  # before it is read
            self.check(folder, "--data: the name is empty", "-d", "")
            os.mkdir(output)  # a folder stands where the picture should go
            self.check(folder, output + ": can't be written: a folder", "-o", output)
            self.check(folder, "no font 'Bogus'; there are ", "--label=Bogus")
            os.makedirs(folder + "/fonts")
            open(folder + "/fonts/bogus.ttf", "w").close()
            with unittest.mock.patch.dict(os.environ, XDG_DATA_HOME=folder):
                self.check(folder, "/bogus.ttf: is no font", "--label=Bogus")
            for wrong in ("--width=0", "--center=1", "--center=0,91", "--size=0x9", "--pick=a,b",
                          "--rotation=nan", "--palette=0", "--palette=257", "--line-type=0",
                          "--line-type=14", "--memory=0", "--memory=2147483648", "--bogus"):
                self.check(folder, wrong.split("=")[0], wrong)


def inside(rings, x, y):
    return sum((ay <= y) != (by <= y) and ax + (y - ay) / (by - ay) * (bx - ax) > x
               for ring in rings for (ax, ay), (bx, by) in zip(ring, ring[1:] + ring[:1])) % 2 == 1


class Names(unittest.TestCase):
    def test_the_box_of_every_name_lies_in_one_country(self):
        for view in ([], ["--fine", "--width=34", "--center=12,47", "--rotation=20"]):
            with tempfile.TemporaryDirectory() as folder:
                svg = os.path.join(folder, "map.svg")
                mapview("--label=DejaVuSans", "-o", svg, *view)
                with open(svg, encoding="utf-8") as file:
                    paths = re.findall(r'<path style="([^"]*)" d="([^"]*)"([^>]*)', file.read())
            names, lands = [], []
            for style, steps, scaled in paths:
                scale = 0.125 if "matrix(0.125,0,0,0.125,0,0)" in scaled else 1
                rings = [[(float(x) * scale, float(y) * scale) for x, y in
                          re.findall(r"([-\d.]+) ([-\d.]+)", ring)] for ring in steps.split("Z")]
                if "15%,15%,20%" in style:
                    names.append(sum(rings, []))
                elif "fill:none" not in style:
                    lands.append([ring for ring in rings if ring])
            self.assertGreater(len(names), 20)
            for name in names:
                xs, ys = zip(*name)
                box = [(x, y) for x in (min(xs), max(xs)) for y in (min(ys), max(ys))]
                land = next(land for land in reversed(lands) if inside(land, *name[0]))
                self.assertEqual([p for p in name + box if not inside(land, *p)], [], view)


class Terminal(unittest.TestCase):
    def test_work_of_more_than_two_seconds_is_shown_on_a_terminal_alone(self):
        ours, terminal = os.openpty()
        runs = [subprocess.Popen([MAPVIEW, "-d", "/dev/stdin", "--pick=0.5,0.4"], text=True,
                                 stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=stderr)
                for stderr in (terminal, subprocess.PIPE)]
        os.close(terminal)
        time.sleep(3.5)
        said = [run.communicate(SQUARE) for run in runs]
        shown = b""
        with os.fdopen(ours, "rb", buffering=0) as file, contextlib.suppress(OSError):
            while more := file.read(1000):  # a part at a time, up to the error that ends a terminal
                shown += more
        self.assertRegex(shown.decode(), r"\A\rmapview: read, \d+ s so far.*\r\x1b\[K\Z")
        self.assertEqual((said[1][1], [run.returncode for run in runs]), ("", [0, 0]))
        self.assertIn("place 0.5,0.4: unnamed", said[0][0])

    def test_a_full_disk_is_told_of(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            for arguments in (["--pick=1,2"], ["--help"]):
                run = subprocess.run([MAPVIEW, *arguments], stdout=full, stderr=subprocess.PIPE,
                                     text=True, timeout=100)
                self.assertEqual((run.returncode, run.stderr), (
                    2, "mapview: standard output: can't be written: No space left on device\n"))

    def test_ctrl_c_while_a_picture_is_saved_leaves_that_picture_alone_and_whole(self):
        for _ in range(5):  # saving takes milliseconds, so one signal may come too late
            with tempfile.TemporaryDirectory() as folder:
                run = subprocess.Popen([MAPVIEW, "-o", "auto"], cwd=folder,
                                       stdout=subprocess.DEVNULL)
                while not os.listdir(folder) and run.poll() is None:
                    pass
                run.send_signal(signal.SIGINT)
                self.assertIn(run.wait(timeout=60), (-signal.SIGINT, 0))
                self.assertEqual(os.listdir(folder), ["mapview-AAA.png"])
                with open(folder + "/mapview-AAA.png", "rb") as file:
                    self.assertEqual(file.read()[-8:-4], b"IEND")

    def test_without_a_picture_and_picks_says_how_to_get_one(self):
        self.assertIn("-o map.png", mapview().stderr)
        self.assertEqual(mapview("--pick=1,2").stderr, "")


class LargeInput(unittest.TestCase):
    def test_a_million_vertices(self):
        n = 1000000
        with tempfile.TemporaryDirectory() as folder:
            data = os.path.join(folder, "star.geojson")
            with open(data, "w", encoding="utf-8") as file:  # a star that leaves the view n times
                file.write(polygon("[%s]" % ",".join("[%.6f,%.6f]" % (
                    (30 + 20 * (i % 2)) * math.cos(2e-6 * math.pi * i),
                    (30 + 20 * (i % 2)) * math.sin(2e-6 * math.pi * i)) for i in range(n))))
            run = mapview("-d", data, "--width", "80", "--pick", "1,1")
            self.assertRegex(run.stdout, r"unnamed, at pixel[^$]*vertices +1000000 ")


if __name__ == "__main__":
    unittest.main()
