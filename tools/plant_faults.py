#!/usr/bin/env python3
"""Mutation testing: plants one small fault at a time in a scratch clone and runs the tests.

Changes one place of a family's sources and runs the family's test programs. Prints each fault that
no test detects, for a person to judge: either no caller can see it, or a test is missing. Digests
detect most faults but don't say what is right, so they run only with --digests.

The clone is in build/faults and has the last commit. A fault takes a second or two.
"""
import argparse
import os
import pathlib
import random
import re
import subprocess
import sys

TIME_LIMIT = 60  # seconds for a test program; one that takes longer has noticed the fault

# For each family: other families whose test programs test it as well. The programs of the family
# itself and of the interface always run.
ALSO = {"platform": ["osh", "wipc", "text"], "osh": ["platform"], "wipc": ["platform"],
        "logger": ["platform"], "var": ["colour"]}

OPERATORS = [
    (r"(?<=\s)<(?=\s)", "<="), (r"(?<=\s)<=(?=\s)", "<"), (r"(?<=\s)>(?=\s)", ">="),
    (r"(?<=\s)>=(?=\s)", ">"), (r"==", "!="), (r"!=", "=="), (r"&&", "||"), (r"\|\|", "&&"),
    (r"(?<=\s)\+(?=\s)", "-"), (r"(?<=\s)-(?=\s)", "+"), (r"(?<=\s)\*(?=\s)", "+"),
    (r"(?<=\s)/(?=\s)", "*"), (r"(?<=\s)\|(?=\s)", "&"), (r"(?<=\s)&(?=\s)", "|"),
    (r"\+\+", "--"), (r"--", "++"), (r"\+=", "-="), (r"-=", "+="), (r"!(?=[\w(])", ""),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\bstd::min\b", "std::max"),
    (r"\bstd::max\b", "std::min"), (r"\bstatic_cast<float>", ""), (r"\bx\b", "y"),
    (r"\by\b", "x"), (r"(?<![\w.])0(?![\w.])", "1"), (r"(?<![\w.])1(?![\w.])", "2"),
    (r"(?<![\w.])([2-9]|[1-9]\d+)(?![\w.])", lambda m: str(int(m.group()) + 1)),
    (r"(?<![\w.])\d+\.\d+(?![\w.])", lambda m: repr(float(m.group()) * (1 + 1e-12) + 1e-300)),
]
SKIPPED = ("#", "static_assert", "template", "*", "using", "namespace", "}", "case", "///")


def faults_of(path):
    """Yields each fault of a source as (line number, changed line)."""
    for number, line in enumerate(path.read_text().split("\n")):
        code = line.split("//")[0]
        bare = re.sub(r'"(\\.|[^"\\])*"', lambda m: '"' + "~" * (len(m.group()) - 2) + '"', code)
        bare = re.sub(r"'(\\.|[^'\\])'", lambda m: "~" * len(m.group()), bare)
        text = bare.strip()
        if not text or text.startswith(SKIPPED):
            continue
        for rule, to in OPERATORS:
            for m in re.finditer(rule, bare):
                new = to(m) if callable(to) else to
                yield number, code[:m.start()] + new + code[m.end():]
        indent = re.match(r"\s*", line).group()
        is_statement = re.match(r"^[\w:>.\-\[\]*&]+(\s*(=|\+=|-=|\|=|&=)\s|\(|\+\+|--)", text)
        if text.endswith(";") and is_statement:
            yield number, indent + ";"
        if re.match(r"^(if|while) \(.*\) (return|continue|break).*;$", text):
            yield number, indent + ";"


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, errors="replace",
                          stdin=subprocess.DEVNULL, **options)


def prepare(tree):
    """Makes a clone of what is committed, or brings it up to date, and configures it."""
    clone, build = tree / "build/faults/tree", tree / "build/faults/build"
    if not clone.exists():
        run("git", "clone", "--shared", tree, clone, check=True)
    run("git", "-C", clone, "fetch", tree, "HEAD", check=True)
    run("git", "-C", clone, "reset", "--hard", "FETCH_HEAD", check=True)
    run("cmake", "-S", clone, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
        "-DCMAKE_CXX_FLAGS_DEBUG=-O1", "-DZELVAN_BUILD_TESTS=ON", check=True)
    return clone, build


def programs_of(rules, families, clone, with_digests):
    """The test programs of families, each with its arguments."""
    folders = [folder for family in families
               for folder in (family, "interface", *ALSO.get(family, []))]
    programs = [f"tests/{folder}/{folder}_{kind}" for folder in dict.fromkeys(folders)
                for kind in ("test", "private_test")]
    commands = [[program] for program in programs if f"build {program}:" in rules]
    if with_digests:
        asked = ["tests/digests/digests", "--expect", clone / "tests/digests/expected.txt"]
        commands += [asked, [*asked, "--plain"]]
    return commands


def sources_of(folder, rules):
    """Private headers, and what is compiled for this processor and system."""
    for path in sorted([*folder.rglob("*.cpp"), *folder.glob("detail/*.h")]):
        if path.suffix == ".h" or str(path) in rules:
            yield path


def is_built(build, programs):
    return run("nice", "ninja", "-C", build, *[program[0] for program in programs]).returncode == 0


def first_failure(build, programs):
    """What a program says that fails or hangs, or nothing."""
    environment = dict(os.environ, GTEST_FAIL_FAST="1", GTEST_BRIEF="1")
    for program, *arguments in programs:
        try:
            done = run(build / program, *arguments, cwd=build, env=environment, timeout=TIME_LIMIT)
        except subprocess.TimeoutExpired:
            return f"{program} hangs"
        if done.returncode:
            return f"{program} fails: {done.stdout[-2000:]}{done.stderr[-500:]}"
    return ""


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("family", nargs="+", help="folder below src/zelvan")
    parser.add_argument("-n", "--count", type=int, default=60, help="faults to plant (60)")
    parser.add_argument("-s", "--seed", type=int, default=1)
    parser.add_argument("-f", "--files", default="", help="only sources whose path contains this")
    parser.add_argument("-d", "--digests", action="store_true", help="run the digests as well")
    arguments = parser.parse_args()

    clone, build = prepare(pathlib.Path(__file__).resolve().parents[1])
    rules = (build / "build.ninja").read_text()
    programs = programs_of(rules, arguments.family, clone, arguments.digests)
    if not programs:
        sys.exit("there are no tests of " + " ".join(arguments.family))
    if not is_built(build, programs):
        sys.exit("does not build before a fault is planted")
    failure = first_failure(build, programs)
    if failure:
        sys.exit(f"not green before a fault is planted: {failure}")

    faults = [(path, *fault) for family in arguments.family
              for path in sources_of(clone / "src/zelvan" / family, rules)
              if arguments.files in str(path) for fault in faults_of(path)]
    random.Random(arguments.seed).shuffle(faults)
    of_lines = {(path, number): line for path, number, line in faults}  # one for each line
    noticed = survived = 0
    for (path, number), line in of_lines.items():
        if noticed + survived == arguments.count:
            break
        text = path.read_text()
        lines = text.split("\n")
        before, lines[number] = lines[number], line
        try:
            path.write_text("\n".join(lines))
            if not is_built(build, programs):
                continue
            if first_failure(build, programs):
                noticed += 1
                continue
        finally:
            path.write_text(text)
        survived += 1
        print(f"SURVIVED {path.relative_to(clone)}:{number + 1} | {before.strip()}  ==>  "
              f"{line.strip()}", flush=True)
    print(f"{' '.join(arguments.family)}: {noticed} noticed, {survived} survived")


if __name__ == "__main__":
    main()
