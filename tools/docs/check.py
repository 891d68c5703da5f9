"""What no tool checks: that the reference is complete and true to its names. Doxygen and Sphinx
themselves refuse a link that leads nowhere, and a header of a family that the README leaves out."""

import re

import headers

# Words in code that are no names of the library.
LANGUAGE = set("EOF bad_alloc cos errno exit fopen free getenv malloc memmove new qsort sin strftime".split())


def all_of(found):
    return [*not_documented(found), *not_exported(found), *unknown_names()]


def not_documented(found):
    for header in found:
        if not headers.comment_of(header.node):
            yield f"{header.path}: no opening comment"
        for entry in headers.walk([header]):
            for node in [entry.nodes[-1], *entry.values()]:
                if not headers.comment_of(node):
                    yield f"{header.path}:{entry.line}: no comment speaks for {headers.name_of(node)}"


def not_exported(found):
    """Yields exported names that have no entry."""
    documented = {name for entry in headers.walk(found) for name in entry.names()}
    exports = (headers.SOURCE / "exports.txt").read_text(encoding="utf-8")
    for name in re.findall(r"^(?!#)(?:[\w ]+ for )?(?:\w+::)*([^\s(]+)", exports, re.M):
        if name not in documented:
            yield f"exports.txt: {name} has no entry in the reference"


def unknown_names():
    """Of the names in code in a comment, those that no public header has. Text goes between double
    quotes."""
    texts = {path: (headers.SOURCE / path).read_text(encoding="utf-8")
             for path in headers.public_headers()}
    known = LANGUAGE | set(re.findall(r"\w+", re.sub(r"//.*", "", "\n".join(texts.values()))))
    for path, text in texts.items():
        for code in re.findall(r"`([^`\n]+)`", "\n".join(re.findall(r"//.*", text))):
            name = re.fullmatch(r"[*&]*((?:\w+::)*[A-Za-z_]\w*)(?:\(.*\))?", code)
            if name and not known.issuperset(name[1].split("::")):
                yield f"{path}: there is no name `{code}`"
