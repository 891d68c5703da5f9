"""Compares what the public headers declare with the list of exported names, in both directions.

    declared_names.py SOURCE

Doxygen reads the headers. These leave the library: a function without a body, unless it is private;
an inline function with its mark; a marked variable; the tables of a class with virtual operations.
Each stands in exports.txt, under its header.
"""

import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

import exported_names

SETTINGS = """
INPUT = {headers}
OUTPUT_DIRECTORY = {folder}
EXTRACT_ALL = YES
EXTRACT_PRIVATE = YES
MACRO_EXPANSION = YES
EXPAND_ONLY_PREDEF = YES
PREDEFINED = ZELVAN_API:= __cplusplus:=202002L __GLIBCXX__:=1
GENERATE_XML = YES
GENERATE_HTML = NO
GENERATE_LATEX = NO
"""
KNOWN_AS = {"unsigned": "unsigned int", "std::string": "string of char",
            "zelvan::wide_string": "string of unsigned short"}


def compounds_of(source):
    """Yields what Doxygen knows of each public header, class and namespace."""
    headers = [str(path.relative_to(source))
               for path in sorted([*source.glob("*.h"), *source.glob("*/*.h")])
               if path.parent.name not in ("platform", "detail") and path.name != "zelvan_c.h"]
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["doxygen", "-"], cwd=source, check=True, capture_output=True, text=True,
                       input=SETTINGS.format(headers=" ".join(headers), folder=folder))
        for path in sorted(pathlib.Path(folder, "xml").glob("*.xml")):
            yield from ElementTree.parse(path).getroot().iter("compounddef")


def text_of(node):
    return "" if node is None else "".join(node.itertext())


def type_of(parameter, own):
    """As c++filt prints it: "const Mtx2D &" is "Mtx2D const&". `own` are types in a namespace."""
    text = text_of(parameter.find("type")) + "*" * (parameter.find("array") is not None)
    is_const, name, pointers = re.fullmatch(r"(const )?(?:struct )?(.*?)([ *&]*)", text).groups()
    name = own.get(name, name)
    return KNOWN_AS.get(name, name) + (" const" if is_const else "") + pointers.replace(" ", "")


def names_of(compound, own):
    """Yields the header and the exported name of each declaration."""
    scope = text_of(compound.find("compoundname")) + "::"
    scope = "" if compound.get("kind") == "file" else scope
    if compound.find(".//memberdef[@virt='virtual']") is not None:
        for table in ("typeinfo", "typeinfo name", "vtable"):
            yield compound.find("location").get("file"), f"{table} for {scope[:-2]}"
    for node in compound.iter("memberdef"):
        header = node.find("location").get("file")
        name, mark, rest = (text_of(node.find(part)) for part in ("name", "type", "argsstring"))
        is_bodiless = node.get("inline") == "no" and not re.search(r"= ?(default|delete|0)$", rest)
        if "ZELVAN_C_API" in mark:
            yield header, name
        elif node.get("kind") == "function" and (
                "ZELVAN_INLINE_API" in mark or is_bodiless and node.get("prot") != "private"):
            arguments = ", ".join(type_of(parameter, own) for parameter in node.findall("param"))
            arguments = "" if arguments == "void" else arguments
            yield header, f"{scope}{name}({arguments}){' const' * (node.get('const') == 'yes')}"


def main(source):
    source = pathlib.Path(source)
    compounds = list(compounds_of(source))
    types = [text_of(node) for compound in compounds if compound.get("kind") == "namespace"
             for node in (*compound.findall("innerclass"),
                          *compound.findall("sectiondef/memberdef[@kind='enum']/qualifiedname"))]
    own = {name.rpartition("::")[2]: name for name in types}
    declared = collections.Counter(name for compound in compounds
                                   for name in names_of(compound, own))
    listed = collections.Counter()
    header = "no header"
    for line in (source / "exports.txt").read_text(encoding="utf-8").splitlines():
        section = re.fullmatch(r"# (\w+/\w+\.h)", line)
        header = section[1] if section else header
        if line and not line.startswith("#"):
            listed[header, exported_names.in_every_library(line)] += 1
    faults = [f"{header} declares it, exports.txt does not list it there: {name}"
              for header, name in sorted((declared - listed).elements())]
    faults += [f"exports.txt lists it, {header} does not declare it: {name}"
               for header, name in sorted((listed - declared).elements())]
    print("\n".join(faults) or f"{declared.total()} names declared, as listed")
    return 1 if faults or not declared else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
