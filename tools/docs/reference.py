"""The names of the library, read from Doxygen's XML: headers, and in each its entries in the order
in which they are declared, classes with entries of their own."""

import pathlib
import re
import xml.etree.ElementTree as ElementTree

from markup import code

KINDS = {"define": "macro", "typedef": "type", "struct": "record"}


def text_of(node):
    return "" if node is None else re.sub(r"\s+", " ", "".join(node.itertext())).strip()


def name_of(node):
    """Empty where there is none, as of some enumerations."""
    name = text_of(node.find("name")) or text_of(node.find("compoundname"))
    return "" if name.startswith("@") else name


def comment_of(node):
    """All of it: Doxygen keeps a comment of a single line apart from longer ones."""
    comment = ElementTree.Element("comment")
    for part in ("briefdescription", "detaileddescription"):
        comment.extend(node.find(part))
    return comment


class Entry:
    """One comment, and what it speaks for: one declaration, or several in a row."""

    def __init__(self, node, section=None, scope=None):
        self.nodes = [node]
        self.section = section  # the `sectiondef` of a titled section
        self.scope = scope      # the class or record that it is in
        self.kind = node.get("kind")
        self.comment = comment_of(node)
        self.entries = []       # of a class or record
        self.anchors = {}       # by the ids of declarations and values

    def names(self):
        """Each once, in order."""
        return list(dict.fromkeys(filter(None, map(name_of, self.nodes))))

    def qualified(self, name):
        return f"{name_of(self.scope.nodes[0])}::{name}" if self.scope else name

    def values(self):
        """Those of an enumeration."""
        return self.nodes[0].findall("enumvalue")

    def word(self):
        """What kind of thing it is, in a word."""
        if self.kind == "variable" and not self.scope:
            return "constant" if self.is_row() else "variable"
        in_scope = {"variable": "field", "function": "operation"} if self.scope else {}
        return in_scope.get(self.kind) or KINDS.get(self.kind, self.kind)

    def is_row(self):
        """Fields and constants say all in a row."""
        return self.kind == "variable" and (
            self.scope is not None or self.nodes[0].find("initializer") is not None)

    def is_protected(self):
        return self.nodes[0].get("prot") == "protected"

    def line(self):
        return int(self.nodes[0].find("location").get("line"))

    def goes_with(self, other):
        """Its declaration follows the other's under the same comment."""
        return (self.kind == other.kind in ("function", "variable")
                and self.section is other.section
                and text_of(self.comment) == text_of(other.comment) != "")


class Header:
    def __init__(self, path, node):
        self.path = path  # as one includes it, without zelvan/
        self.family = path.parent.name
        self.name = path.name
        self.url = f"reference/{path}.html"
        self.label = code(path.name)
        self.comment = comment_of(node)
        self.entries = []


class Reference:
    def __init__(self, folder):
        self.headers = []
        self.urls = {}   # by Doxygen's ids
        self.names = {}  # URLs of what stands alone, and of `Class::member`
        self.pages = {}  # nodes of the pages written in Markdown, by name
        roots = [ElementTree.parse(file).getroot() for file in sorted(folder.glob("*.xml"))
                 if file.name not in ("index.xml", "Doxyfile.xml")]
        compounds = {node.get("id"): node for root in roots for node in root}
        for node in compounds.values():
            if node.get("kind") == "page":
                self.pages[name_of(node)] = node
            elif node.get("kind") == "file" and name_of(node).endswith(".h"):
                path = pathlib.PurePath(node.find("location").get("file"))
                header = Header(path.relative_to("src/zelvan"), node)
                header.entries = entries_of(node, compounds)
                self.headers.append(header)
                self.urls[node.get("id")] = header.url
        for header in self.headers:
            self.give_anchors(header.url, header.entries)

    def give_anchors(self, url, entries, prefix=""):
        """Names make anchors; the second thing of a name gets a number."""
        taken = {}
        for entry in entries:
            for node in [*entry.nodes, *entry.values()]:
                name = name_of(node)
                anchor = prefix + (name or "constants").replace(" ", "")
                taken[anchor] = taken.get(anchor, 0) + 1
                if taken[anchor] > 1:
                    anchor += f"-{taken[anchor]}"
                entry.anchors[node.get("id")] = anchor
                self.urls[node.get("id")] = f"{url}#{anchor}"
                self.names.setdefault(entry.qualified(name), f"{url}#{anchor}")
            self.give_anchors(url, entry.entries, f"{name_of(entry.nodes[0])}.")

    def of_family(self, family):
        return [header for header in self.headers if header.family == family]


def entries_of(compound, compounds, scope=None):
    """Of a header, a class or a record, with those that share a comment made one."""
    entries = []
    for section in compound.findall("sectiondef"):
        titled = section if section.find("header") is not None else None
        entries += [Entry(node, titled, scope) for node in section.findall("memberdef")
                    if node.get("prot") != "private"]
    for inner in compound.findall("innernamespace"):  # which may have parts in several headers
        entries += [Entry(node) for node in compounds[inner.get("refid")].iter("memberdef")
                    if node.find("location").get("file") == compound.find("location").get("file")]
    for inner in compound.findall("innerclass"):
        entry = Entry(compounds[inner.get("refid")])
        entry.entries = entries_of(entry.nodes[0], compounds, entry)
        entries.append(entry)
    merged = []
    for entry in sorted(entries, key=Entry.line):
        if merged and entry.goes_with(merged[-1]):
            merged[-1].nodes += entry.nodes
        else:
            merged.append(entry)
    return merged


def walk(entries):
    for entry in entries:
        yield entry
        yield from walk(entry.entries)
