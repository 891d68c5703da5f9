#!/usr/bin/env python3
"""Runs benchmarks and prints what they measured as a table: table.py PROGRAM... [--OPTION...]

--plot=FILE draws how times grow with size (needs gnuplot and all programs); other options go to
the benchmarks.

A benchmark named row/contestant or row/contestant/arguments is a contestant of that row. The
library's contestants are named zelvan, or zelvan and a form. All run interleaved. Each figure is the
least of several repetitions, which is the one that other load on the machine disturbed least. The
ratio is the rival's time divided by ours: above 1 the library is faster.
"""
import collections
import json
import re
import subprocess
import sys

OURS = "zelvan"
OPTIONS = ["--benchmark_format=json", "--benchmark_repetitions=5", "--benchmark_min_time=0.05",
           "--benchmark_enable_random_interleaving=true"]


def measure(program, options):
    run = subprocess.run([program, *OPTIONS, *options], stdout=subprocess.PIPE, text=True)
    if run.returncode != 0 or not run.stdout.strip():
        sys.exit(f"{program} failed")
    rows = collections.defaultdict(dict)  # row -> contestant -> nanoseconds per operation
    for result in json.loads(run.stdout)["benchmarks"]:
        if result.get("error_occurred"):
            sys.exit(f"{result['name']}: {result['error_message']}")
        if result["run_type"] != "iteration":
            continue
        words = [w for w in result["run_name"].split("/") if w not in ("real_time", "manual_time")]
        row = " ".join([words[0].replace("_", " "), *words[2:]])
        if "items_per_second" in result:
            time = 1e9 / result["items_per_second"]
        else:
            time = result["real_time"] * {"ns": 1, "us": 1e3, "ms": 1e6}[result["time_unit"]]
        rows[row][words[1]] = min(time, rows[row].get(words[1], time))
    return rows


def shown(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def main():
    options = [a for a in sys.argv[1:] if a.startswith("--") and not a.startswith("--plot=")]
    plot = next((a.removeprefix("--plot=") for a in sys.argv[1:] if a.startswith("--plot=")), None)
    all_rows = {}
    print("| work | rival | rival's time | ours | ratio |\n|---|---|---|---|---|", flush=True)
    for program in sys.argv[1:]:
        if program.startswith("--"):
            continue
        for row, contestants in measure(program, options).items():
            all_rows[row] = contestants
            ours = [name for name in contestants if name.startswith(OURS)]
            if not ours:
                sys.exit(f"{row}: no contestant has a name that begins with {OURS}")
            rivals = [name for name in contestants if name not in ours]
            for name in ours:
                work = row + name.removeprefix(OURS)
                mine = contestants[name]
                for rival in rivals:
                    time = contestants[rival]
                    print(f"| {work} | {rival} | {shown(time)} | {shown(mine)} "
                          f"| {time / mine:.2f} |", flush=True)
                if not rivals:
                    print(f"| {work} | | | {shown(mine)} | |", flush=True)
    if plot is not None:
        draw_growth(all_rows, plot)


# The curves of the plot: a title, and a pattern of the names of the rows on it. The group of the
# pattern is the size, in pens, names or vertices.
GROWTH = [("closest of so many colours", r"closest pen pens:(\d+)$"),
          ("name among so many, keyword table", r"keyword table: look up one of (\d+) names$"),
          ("point in a ring of so many vertices", r"pick vertices:(\d+)$"),
          ("ring of so many vertices, clipped", r"clip (?:\d+ rings|a ring) of ([\d ]+) vertices "
                                                r"crossing$")]


def draw_growth(rows, path):
    """Draws an SVG of the time per operation by size."""
    script = [f"set terminal svg size 760,460 font 'sans,12' background rgb 'white'",
              f"set output '{path}'", "set logscale xy", "set key top left", "set grid",
              "set xlabel 'size'", "set ylabel 'nanoseconds an operation'"]
    blocks, curves = [], []
    for title, pattern in GROWTH:
        points = []
        for row, contestants in rows.items():
            match = re.match(pattern, row.replace("a million", "1000000"))
            if match:
                size = int(match[1].replace(" ", ""))
                scale = size if title.startswith("ring") else 1  # measured per vertex
                points.append((size, contestants[OURS] * scale))
        data = "\n".join(f"{size} {time}" for size, time in sorted(points))
        blocks.append(f"$data{len(blocks)} << EOD\n{data}\nEOD")
        curves.append(f"$data{len(curves)} with linespoints linewidth 2 title '{title}'")
    script += [*blocks, "plot " + ", ".join(curves)]
    subprocess.run(["gnuplot"], input="\n".join(script), text=True, check=True)


if __name__ == "__main__":
    main()
