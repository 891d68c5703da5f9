#!/usr/bin/env python3
"""Turns kept inputs of a fuzz target into files, and files into kept inputs.

    corpus.py unpack CORPUS FOLDER     writes each input of the corpus to a file of its own
    corpus.py pack FOLDER CORPUS       writes the files of the folder as a corpus

A corpus is a text file with one input per line, sorted. Printable ASCII stands for itself; a
backslash and two hexadecimal digits in lower case stand for any byte. Empty lines and comments,
which begin with #, are no inputs; pack moves comments to the top. On any other line this program
and replay.cpp, which reads the same format, fail.
"""
import hashlib
import pathlib
import re
import sys


def encode(data):
    """Returns bytes as a line. A leading # and a trailing blank would be lost, so they are escaped."""
    line = "".join(chr(b) if 32 <= b < 127 and b != 92 else f"\\{b:02x}" for b in data)
    line = re.sub(r"^#", r"\\23", line)
    return re.sub(r" $", r"\\20", line)


def decode(line):
    if not re.fullmatch(rb"([ -\[\]-~]|\\[0-9a-f]{2})+", line):
        sys.exit(f"corpus.py: damaged line: {line!r}")
    return re.sub(rb"\\(..)", lambda found: bytes.fromhex(found[1].decode()), line)


def unpack(corpus, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for line in corpus.read_bytes().split(b"\n"):
        if line and not line.startswith(b"#"):
            data = decode(line)
            (folder / hashlib.sha1(data).hexdigest()).write_bytes(data)  # as libFuzzer names them


def pack(folder, corpus):
    lines = sorted(filter(None, (encode(path.read_bytes()) for path in folder.iterdir())))
    kept = corpus.read_text().splitlines() if corpus.exists() else []
    head = [line for line in kept if line.startswith("#")]
    if not head:
        head = [f"# Inputs of {corpus.stem}_fuzz.cpp, one a line: corpus.py says what a line means."]
    corpus.write_text("".join(line + "\n" for line in [*head, *lines]))


if __name__ == "__main__":
    {"unpack": unpack, "pack": pack}[sys.argv[1]](*map(pathlib.Path, sys.argv[2:4]))
