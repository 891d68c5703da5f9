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
import platform
import random
import re
import shutil
import subprocess
import sys
import time

TIME_LIMIT = 60  # seconds for all test programs of a family; longer counts as a hang

# Further families whose tests detect faults of a family.
ALSO = {"platform": ["osh", "wipc", "text"], "osh": ["platform"], "wipc": ["platform"],
        "logger": ["platform"], "var": ["colour"]}
EVERYWHERE = ["bounds"]  # the ends of arrays

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
DECLARES = re.compile(r"^(return|const|auto|int|unsigned|char|double|float|bool|static|struct|using"
                      r"|long|std::\w+(<.*>)? \w)")
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
        if text.endswith(";") and is_statement and not DECLARES.match(text):
            yield number, indent + ";"
        if re.match(r"^(if|while) \(.*\) (return|continue|break).*;$", text):
            yield number, indent + ";"


def run(command, **kwargs):
    return subprocess.run(command, capture_output=True, text=True, stdin=subprocess.DEVNULL,
                          **kwargs)


def prepare(tree):
    """Clones the last commit, or updates the clone, and configures its build."""
    work = tree / "build/faults"
    clone, build = work / "tree", work / "build"
    head = run(["git", "-C", tree, "rev-parse", "HEAD"]).stdout.strip()
    if not clone.exists():
        subprocess.run(["git", "clone", "-q", "--shared", tree, clone], check=True)
    subprocess.run(["git", "-C", clone, "fetch", "-q", tree, head], check=True)
    subprocess.run(["git", "-C", clone, "reset", "-q", "--hard", head], check=True)
    if not (build / "build.ninja").exists():
        flags = ["-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O1",
                 "-DZELVAN_BUILD_TESTS=ON"]
        if shutil.which("mold"):
            flags += [f"-DCMAKE_{k}_LINKER_FLAGS=-fuse-ld=mold" for k in ("EXE", "SHARED")]
        subprocess.run(["cmake", "-S", clone, "-B", build, "-G", "Ninja", *flags],
                       check=True, stdout=subprocess.DEVNULL)
    return clone, build


def digests_of(clone):
    """Returns the commands that run the digests with vector forms and with plain forms."""
    asked = ["--expect", clone / "tests/digests/expected.txt"]
    return [["tests/digests/digests", *form, *asked] for form in ([], ["--plain"])]


def programs_of(build, families):
    names = []
    rules = (build / "build.ninja").read_text()
    for family in families:
        for name in [family, *ALSO.get(family, [])]:
            for kind in ("test", "private_test"):
                target = f"tests/{name}/{name}_{kind}"
                if f"build {target}:" in rules and target not in names:
                    names.append(target)
    return [[name] for name in names]


def is_built(build, programs):
    return run(["nice", "ninja", "-C", build, *[p[0] for p in programs]]).returncode == 0


def outcome_of(build, programs, reason=None):
    """Returns "green", "red" or "hangs". The first failure ends the run."""
    ends = time.time() + TIME_LIMIT
    environment = dict(os.environ, GTEST_FAIL_FAST="1", GTEST_BRIEF="1")
    for program, *arguments in programs:
        try:
            done = run([build / program, *arguments], cwd=build, env=environment,
                       timeout=max(1, ends - time.time()), errors="replace")
        except subprocess.TimeoutExpired:
            return "hangs"
        if done.returncode != 0:
            if reason is not None:
                reason.append(f"{program}: " + done.stdout[-2000:] + done.stderr[-500:])
            return "red"
    return "green"


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("family", nargs="+", help="folder below src/zelvan")
    parser.add_argument("-n", "--count", type=int, default=60, help="faults to plant (60)")
    parser.add_argument("-s", "--seed", type=int, default=1)
    parser.add_argument("-f", "--files", default="", help="only sources whose path contains this")
    parser.add_argument("-p", "--planted", metavar="FILE", help="plant the faults in FILE instead: "
                        "one per line, with the path below src/zelvan, the old text and the new "
                        "text, separated by tabs; \\n stands for a new line")
    parser.add_argument("-d", "--digests", action="store_true", help="run the digests as well")
    parser.add_argument("-v", "--verbose", action="store_true", help="print detected faults as well")
    arguments = parser.parse_args()

    top = run(["git", "rev-parse", "--show-toplevel"], check=True).stdout.strip()
    clone, build = prepare(pathlib.Path(top))
    programs = programs_of(build, arguments.family)
    if arguments.digests:
        programs += digests_of(clone)
    if not programs:
        sys.exit("there are no tests of " + " ".join(arguments.family))
    reason = []
    if not is_built(build, programs) or outcome_of(build, programs, reason) != "green":
        sys.exit("the tests fail without a fault\n" + "\n".join(reason))

    faults = []  # (path, line number, old line, new line, new text of the file)
    root = clone / "src/zelvan"
    rules = (build / "build.ninja").read_text()  # leave out sources of other processors and systems
    if arguments.planted:
        for row in pathlib.Path(arguments.planted).read_text().splitlines():
            if not row.strip() or row.startswith("#"):
                continue
            path, old, new = (part.replace("\\n", "\n") for part in row.split("\t"))
            text = (root / path).read_text()
            if old not in text:
                print(f"not found: {path}: {old}")
                continue
            number = text[:text.index(old)].count("\n")
            faults.append((root / path, number, old, new, text.replace(old, new, 1)))
    else:
        for family in arguments.family:
            for path in sorted((root / family).rglob("*")):
                is_private_header = path.suffix == ".h" and path.parent.name == "detail"
                is_source = path.suffix == ".cpp" or is_private_header
                if not is_source or "table" in path.name and "color" in path.name:
                    continue
                if path.suffix == ".cpp" and str(path) not in rules:
                    continue
                if "_neon" in path.name and platform.machine() != "aarch64":
                    continue
                if arguments.files not in str(path):
                    continue
                lines = path.read_text().split("\n")
                for number, new in faults_of(path):
                    changed = lines[:number] + [new] + lines[number + 1:]
                    faults.append((path, number, lines[number], new, "\n".join(changed)))
        random.Random(arguments.seed).shuffle(faults)

    outcomes, seen = {"green": 0, "red": 0, "hangs": 0}, set()
    for path, number, old, new, text in faults:
        if not arguments.planted:
            if sum(outcomes.values()) >= arguments.count:
                break
            if (path, number) in seen:
                continue
            seen.add((path, number))
        before = path.read_text()
        try:
            path.write_text(text)
            if not is_built(build, programs):
                if arguments.planted:
                    print(f"does not build: {old}  ==>  {new}")
                continue
            outcome = outcome_of(build, programs)
        finally:
            path.write_text(before)
        outcomes[outcome] += 1
        if outcome == "green" or arguments.verbose:
            said = {"green": "SURVIVED", "red": "detected", "hangs": "hangs   "}[outcome]
            print(f"{said} {path.relative_to(clone)}:{number + 1} | {old.strip()}  ==>  "
                  f"{new.strip()}", flush=True)
    print(f"{' '.join(arguments.family)}: {outcomes['red']} detected, {outcomes['hangs']} hang, "
          f"{outcomes['green']} survived", flush=True)


if __name__ == "__main__":
    main()
