"""The public headers: prepares them for Doxygen and reads its output.

Doxygen knows neither our sections (`// ---- title`) nor that a comment applies to all declarations
up to the next blank line. Both are found here from the lines of the header.
"""

import collections
import pathlib
import re
import xml.etree.ElementTree as ElementTree

Header = collections.namedtuple("Header", "path node members")
SOURCE = pathlib.Path("src/zelvan")
C_HEADER = pathlib.Path("zelvan_c.h")
SECTION = re.compile(r"^ *// ---- (.*)\n((?: *//(?!/).*\n)*)", re.M)  # title and comment


def public_headers():
    """Returns the paths of the public headers, below zelvan/."""
    paths = sorted([*SOURCE.glob("*.h"), *SOURCE.glob("*/*.h")])
    return [path.relative_to(SOURCE) for path in paths
            if path.parent.name not in ("detail", "platform")]


def for_doxygen(text):
    """Returns the header in a form that Doxygen understands. Line numbers stay the same."""
    # Remove statements for the compiler, and using-declarations: the page of the base class has the
    # entries of these names.
    text = re.sub(r"^ *(static_assert|friend|using \w+::)[^;]*;.*",
                  lambda statement: "\n" * statement[0].count("\n"), text, flags=re.M)
    text = text.replace("#pragma once", r"/// \file", 1)
    text = re.sub(r"^( *///) (\d+)\. ", r"\1 \2\. ", text, flags=re.M)  # so that no list begins here
    return re.sub(r"^( *///.*?)\*?(Requires[^.:]*:)\*?", r"\1**\2**", text, flags=re.M)


def text_of(node):
    return "" if node is None else re.sub(r"\s+", " ", "".join(node.itertext())).strip()


def name_of(node):
    return text_of(node.find("name")) or text_of(node.find("compoundname"))


class Entry:
    """One or more declarations that share a comment."""

    def __init__(self, node, scope=None):
        self.nodes = [node]
        self.scope = scope  # the entry of the class
        self.kind = node.get("kind")
        self.members = []
        self.opens = []     # titles and comments of the sections that begin before it
        place = node.find("location")
        self.line = int(place.get("line"))
        self.end = max(self.line, int(place.get("bodyend") or 0))

    def names(self):
        """Returns the names without duplicates, in order; none for an enumeration without a name."""
        names = dict.fromkeys(map(name_of, self.nodes))
        return [name for name in names if not name.startswith("@")]

    def qualified(self, name):
        return f"{self.scope.names()[0]}::{name}" if self.scope else name

    def label(self):
        return "at-" + self.nodes[0].get("id").lower()  # Breathe uses the id itself as a label

    def values(self):
        return self.nodes[0].findall("enumvalue")

    def is_row(self):
        """True for fields and constants, which are listed without a heading."""
        return self.kind == "variable"


def walk(things):
    """Yields the entries of headers or classes, and recursively their members."""
    for thing in things:
        for entry in thing.members:
            yield entry
            yield from walk([entry])


def comment_of(node):
    return node.findall("briefdescription/*") + node.findall("detaileddescription/*")


def read(folder):
    """Reads Doxygen's output and returns the headers. If declarations share a comment, moves it in
    Doxygen's files to the last of them, since Breathe shows it below that one."""
    trees = {path: ElementTree.parse(path) for path in sorted(folder.glob("*.xml"))
             if path.name not in ("index.xml", "Doxyfile.xml")}
    compounds = {node.get("id"): node for tree in trees.values() for node in tree.getroot()}
    headers = []
    for node in compounds.values():
        if node.get("kind") == "file" and text_of(node.find("compoundname")).endswith(".h"):
            path = pathlib.PurePath(node.find("location").get("file"))
            lines = (SOURCE / path).read_text(encoding="utf-8").splitlines()
            headers.append(Header(path, node, entries_of(node, compounds, lines)))
            start = 0
            for entry in walk(headers[-1:]):
                entry.opens = SECTION.findall("\n".join(lines[start:entry.line]))
                start = entry.line
    for path, tree in trees.items():
        tree.write(path, encoding="utf-8", xml_declaration=True)
    return sorted(headers, key=lambda header: header.path)


def entries_of(compound, compounds, lines, scope=None):
    here = compound.find("location").get("file")
    entries = [Entry(node, scope) for node in compound.findall("sectiondef/memberdef")
               if node.get("prot") != "private"]
    for inner in compound.findall("innernamespace"):  # a namespace can have parts in several headers
        entries += [Entry(node) for node in compounds[inner.get("refid")].iter("memberdef")
                    if node.find("location").get("file") == here]
    for inner in compound.findall("innerclass"):
        entry = Entry(compounds[inner.get("refid")])
        entry.members = entries_of(entry.nodes[0], compounds, lines, entry)
        entries.append(entry)
    merged = []
    for entry in sorted(entries, key=lambda entry: entry.line):
        last = merged[-1] if merged else None
        if (last and last.kind == entry.kind and not comment_of(entry.nodes[0])
                and all(line.strip() for line in lines[last.end:entry.line])):
            for part in ("briefdescription", "detaileddescription"):
                entry.nodes[0].find(part)[:] = last.nodes[-1].find(part)[:]
                last.nodes[-1].find(part)[:] = []
            last.nodes += entry.nodes
            last.end = entry.end
        else:
            merged.append(entry)
    return merged
