"""Writes the pages of the reference for Sphinx, in reStructuredText."""

import itertools
import pathlib
import re
import textwrap

import headers

UNDERLINES = "=-~^"
BLOCKS = ("itemizedlist", "orderedlist", "verbatim", "programlisting", "table")
# A row of the README's table of families, such as:
# | `pick` | regions that say whether a point hits them | [pick regions](docs/pick.md) |
FAMILY = re.compile(r"^\| `(\w+)` \| (.*?) \| (.*?) \|$", re.M)
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```\w+\n(.*?)^```$", re.S | re.M)


class Family:
    def __init__(self, name, purpose, cell):
        links = LINK.findall(cell)
        gloss = ", ".join(text for text, _ in links)
        self.name = name
        self.title = sentence(gloss if gloss == name else f"{gloss} ({name})")
        self.purpose = sentence(purpose) + "."
        self.guides = [pathlib.Path(path) for _, path in links]


def families(readme):
    return [Family(*row) for row in FAMILY.findall(readme)]


# ---- pieces

def sentence(text):
    return text[:1].upper() + text[1:]


def escape(text):
    return re.sub(r"([*`|_\\])", r"\\\1", text or "")


def heading(text, level):
    return f"\n{text}\n{UNDERLINES[level] * len(text)}\n"


def block(directive, body=""):
    return f"\n.. {directive}\n\n{textwrap.indent(body, '   ')}\n"


def toctree(option, lines):
    return f"\n.. toctree::\n   :{option}\n\n" + "".join(f"   {line}\n" for line in lines)


def markdown(text):
    """Converts the Markdown that comments outside of declarations use: only backquotes."""
    return "".join(f"``{part}``" if i % 2 else escape(part)
                   for i, part in enumerate(text.split("`")))


def first_sentence(comment):
    """Returns the first sentence of a comment, up to a list or a block of code."""
    shown = ""
    for paragraph in comment[:1]:
        shown = paragraph.text or ""
        for child in paragraph:
            if child.tag in BLOCKS:
                break
            text = "".join(child.itertext())
            shown += f"`{text}`" if child.tag == "computeroutput" else text
            shown += child.tail or ""
    return markdown(re.match(r".*?\.(?=\s|$)|.*", re.sub(r"\s+", " ", shown).strip())[0])


def link(entry, *names):
    """Returns links to an entry, by the given names or by all of its names."""
    return ", ".join(f":ref:`{escape(name)} <{entry.label()}>`"
                     for name in names or entry.names() or ["constants"])


def row(entry, *names):
    return f"{link(entry, *names)}\n   {first_sentence(headers.comment_of(entry.nodes[-1]))}\n\n"


def in_code(names):
    shown = [f"``{name}``" for name in names[:3]] + ["…"] * (len(names) > 3)
    return ", ".join(shown) or "Constants"


# ---- the reference

def name_list(entries, style="names", with_members=True):
    """Lists the entries, each with the first sentence of its comment."""
    parts, is_begun = [], False
    for entry in entries:
        for title, _ in entry.opens:
            parts.append(f"\n**{sentence(title.partition(': ')[0])}**\n")
            is_begun = False
        if not is_begun:
            parts.append(f"\n.. rst-class:: {style}\n\n")
        parts.append(row(entry))
        members = [member for member in entry.members if with_members and not member.is_row()]
        parts.append(name_list(members, "names members"))
        is_begun = not members
    return "".join(parts)


def header_page(header):
    page = [heading(f"``{header.path.name}``", 0),
            block("code-block:: cpp", f"#include <zelvan/{header.path}>"),
            f"\n:doc:`Source of this header </source/{header.path}>`\n",
            f"\n.. doxygenfile:: {header.path}\n"
            "   :sections: briefdescription detaileddescription\n"]
    if len(list(headers.walk([header]))) > 3:
        page += [heading("Names", 1), name_list(header.members)]
    return "".join(page) + entry_list(header.members, 1)


def entry_list(entries, level):
    """Returns the entries below the titles of their sections, as in the header."""
    parts, deeper = [], 0
    for entry in entries:
        for title, text in entry.opens:
            title, _, rest = title.partition(": ")
            text = re.sub(r"^ *// ?", "", text, flags=re.M).strip()
            parts.append(heading(markdown(sentence(title)), level))
            parts += [f"\n{markdown(sentence(rest))}.\n"] if rest else []
            parts.append(f"\n{markdown(text)}\n")
            deeper = 1
        parts.append(f"\n.. _{entry.label()}:\n")
        if not entry.is_row():
            parts.append(heading(in_code(entry.names()), level + deeper))
        parts += [directive(entry, node) for node in entry.nodes]
        parts.append(entry_list(entry.members, level + deeper + 1))
    return "".join(parts)


def names_page(found):
    entries = {}
    for entry in headers.walk(found):
        if not (entry.scope and entry.is_row()):
            entries |= {entry.qualified(name): entry for name in entry.names()}
        entries |= {headers.name_of(value): entry for value in entry.values()}
    parts = [heading("All names", 0)]
    names = sorted(sorted(entries), key=str.lower)
    for letter, group in itertools.groupby(names, lambda name: name[0].upper()):
        parts += [heading(letter, 1), "\n.. rst-class:: names\n\n"]
        parts += [row(entries[name], name) for name in group]
    return "".join(parts)


def c_page(found, text):
    """The header for C as it is, and below each group what its functions do."""
    known = {name: entry for header in found for entry in header.members for name in entry.names()}
    opening = "\n".join(re.findall(r"^/// ?(.*)", text[:text.index("#pragma once")], re.M))
    page = [heading("C interface (zelvan\\_c.h)", 0),
            block("code-block:: c", f"#include <zelvan/{headers.C_HEADER}>"),
            f"\n:doc:`Source of this header </source/{headers.C_HEADER}>`\n",
            f"\n{markdown(opening)}\n"]
    for title, body in re.findall(r"^// ---- ([^\n]*)\n(.*?)(?=^// ---- |\Z)", text, re.M | re.S):
        title = "".join(f":doc:`{escape(part)} </reference/{part}>`" if i % 2 else escape(part)
                        for i, part in enumerate(re.split(r"<zelvan/([\w/.]+)>", title)))
        body = re.sub(r"^(#.*|})$", "", body, flags=re.M)
        page += [heading(sentence(title), 1), block("code-block:: c", body.strip())]
        functions = {known[name].label(): known[name]
                     for name in re.findall(r"(\w+)\(", body) if name in known}
        page.append(name_list(functions.values()))
    return "".join(page)


def directive(entry, node):
    name = entry.qualified(headers.name_of(node))
    if entry.kind == "function":
        name += headers.text_of(node.find("argsstring"))
    return f"\n.. doxygen{entry.kind}:: {name}\n"


def family_page(found, family):
    own = [header for header in found if header.path.parent.name == family.name]
    page = [heading(family.title, 0), f"\n{markdown(family.purpose)}\n", heading("Guide", 1),
            toctree("maxdepth: 2", [f"/{path.with_suffix('')}" for path in family.guides]),
            heading("Reference", 1),
            toctree("hidden:", [f"/reference/{header.path}" for header in own])]
    for header in own:
        page += [heading(f":doc:`{header.path.name} </reference/{header.path}>`", 2),
                 f"\n{first_sentence(headers.comment_of(header.node))}\n",
                 name_list(header.members, with_members=False)]
    guide = family.guides[0]
    program, printed = FENCE.findall(guide.read_text(encoding="utf-8"))[:2]
    page += [heading("A worked example", 1),
             f"\nFrom :doc:`/{guide.with_suffix('')}`:\n",
             block("code-block:: cpp", program), "\nIt prints\n",
             block("code-block:: text", printed)]
    return "".join(page)


def source_page(path):
    return (":orphan:\n:nosearch:\n" + heading(f"Source of ``{path.name}``", 0)
            + f"\n:doc:`Its page </reference/{path}>`\n"
            + f"\n.. literalinclude:: /../../../{headers.SOURCE / path}\n   :language: cpp\n")
