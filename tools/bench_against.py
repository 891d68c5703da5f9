#!/usr/bin/env python3
"""Compares the speed of this tree's library with that of another commit.

usage: bench_against.py REF PROGRAM... [--benchmark_filter=REGEX]

Builds the library of REF in build/against, and runs this tree's benchmarks with both libraries
alternately, seven times each. A row is slow if the median of the seven ratios is above 1.1. Slow
rows are measured again; a row that is slow twice fails the comparison. Rivals' rows are left out,
since they call neither library.
"""
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys

RUNS = 7
MOST = 1.10  # largest ratio of our time to that with the other library
LIBRARY = "build/bench/src/zelvan/libzelvan.so.1"


def build_library(ref):
    """Builds the library of a commit and returns its path."""
    name = subprocess.run(["git", "rev-parse", "--verify", "--quiet", ref + "^{commit}"],
                          stdout=subprocess.PIPE, text=True).stdout.strip()
    if not name:
        sys.exit(f"there is no commit {ref}")
    tree = pathlib.Path("build/against") / name
    tree.mkdir(parents=True, exist_ok=True)
    archive = subprocess.run(["git", "archive", name], stdout=subprocess.PIPE, check=True).stdout
    subprocess.run(["tar", "--extract", "--directory", tree], input=archive, check=True)
    for command in (["cmake", "--preset", "bench"],
                    ["cmake", "--build", "build/bench", "--target", "zelvan"]):
        run = subprocess.run(command, cwd=tree, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                             text=True)
        if run.returncode != 0:
            sys.exit(f"{run.stdout}\n{ref} does not build: see above")
    return tree / LIBRARY


def run_with(library, program, *options):
    """Returns what the benchmark program prints if it calls this library."""
    run = subprocess.run([program, *options], stdout=subprocess.PIPE, text=True,
                         env={**os.environ, "LD_PRELOAD": str(pathlib.Path(library).resolve())})
    if run.returncode != 0:
        sys.exit(f"{program} failed with {library}; use --benchmark_filter to leave out "
                 "rows whose operations this library lacks")
    return run.stdout


def our_rows(program, pattern):
    names = run_with(LIBRARY, program, "--benchmark_list_tests").splitlines()
    return [name for name in names if "/zelvan" in name and re.search(pattern, name)]


def times(library, program, rows):
    """Returns the time of one iteration of each row."""
    exact = "|".join(re.sub(r"[][.^$*+?(){}|\\]", r"\\\g<0>", row) for row in rows)
    output = run_with(library, program, f"--benchmark_filter=^({exact})$",
                      "--benchmark_format=json", "--benchmark_min_time=0.05")
    result = {}
    for row in json.loads(output)["benchmarks"]:
        if row.get("error_occurred"):
            sys.exit(f"{row['name']}: {row['error_message']}")
        is_real = row["name"].endswith(("/real_time", "/manual_time"))
        result[row["name"]] = row["real_time" if is_real else "cpu_time"]
    return result


def slow_rows(other, program, rows):
    """Measures rows, prints them and returns those that take too long."""
    ratios = {row: [] for row in rows}
    for turn in range(RUNS):
        pair = [LIBRARY, other] if turn % 2 == 0 else [other, LIBRARY]
        measured = {library: times(library, program, rows) for library in pair}
        for row in rows:
            ratios[row].append(measured[LIBRARY][row] / measured[other][row])
    medians = {row: statistics.median(ratios[row]) for row in rows}
    for row, ratio in medians.items():
        print(f"{ratio:5.2f}  {row}{'  SLOW' if ratio > MOST else ''}", flush=True)
    return [row for row, ratio in medians.items() if ratio > MOST]


def main():
    option = "--benchmark_filter="
    pattern = "|".join(a.removeprefix(option) for a in sys.argv[1:] if a.startswith(option))
    ref, *programs = [a for a in sys.argv[1:] if not a.startswith(option)]
    other = build_library(ref)
    print(f"ratio to the time of {ref}, median of {RUNS} runs", flush=True)
    measured, slow = 0, []
    for program in programs:
        rows = our_rows(program, pattern)
        measured += len(rows)
        again = slow_rows(other, program, rows) if rows else []
        if again:
            print("again:")
            slow += slow_rows(other, program, again)
    if measured == 0:
        sys.exit("no row of ours matches the filter")
    if slow:
        sys.exit("slower than before in both measurements:\n  " + "\n  ".join(slow))


if __name__ == "__main__":
    main()
