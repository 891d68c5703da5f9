"""Checks that the reference is complete, that its comments name only what exists, and that no link
within the site is broken."""

import html.parser
import re
import urllib.parse

import headers

NAME = re.compile(r"[*&]*((?:\w+::)*[A-Za-z_]\w*)(?:\(.*\))?")
EXPORTS = headers.SOURCE / "exports.txt"

# Exported, but private: only a friend of the class calls it.
NOT_FOR_CALLERS = {"CAlignedRect::CAlignedRect"}

# Words in code that are no names of the library.
LANGUAGE = set("EOF bad_alloc cos errno exit fopen free getenv malloc memmove new qsort sin strftime".split())


def all_of(found, families, output):
    return [*not_documented(found), *not_exported(found), *unknown_names(found),
            *missing_families(found, families), *broken_links(output)]


def not_documented(found):
    for header in found:
        if not headers.comment_of(header.node):
            yield f"{header.path}: no opening comment"
        for entry in headers.walk([header]):
            if not headers.comment_of(entry.nodes[-1]):
                yield f"{header.path}:{entry.line}: no comment for {', '.join(entry.names())}"
            for value in entry.values():
                if not headers.comment_of(value):
                    name = headers.text_of(value.find("name"))
                    yield f"{header.path}:{entry.line}: no comment for {name}"


def not_exported(found):
    """Yields exported names that have no entry."""
    documented = {entry.qualified(name) for entry in headers.walk(found) for name in entry.names()}
    for line in EXPORTS.read_text(encoding="utf-8").splitlines():
        name = re.sub(r"^(typeinfo|typeinfo name|vtable) for |^zelvan::|\(.*", "", line)
        if name and not name.startswith("#") and name not in documented | NOT_FOR_CALLERS:
            yield f"{EXPORTS}: {line} has no entry in the reference"


def unknown_names(found):
    """Yields names in backquotes in comments that don't exist. A comment may use all names in its
    own header, and entries of other headers. Other text belongs between double quotes."""
    everywhere = set(LANGUAGE)
    for entry in headers.walk(found):
        values = [headers.text_of(value.find("name")) for value in entry.values()]
        for name in [*map(entry.qualified, entry.names()), *values]:
            everywhere |= {name, *name.split("::")}
    for path in headers.public_headers():
        text = (headers.SOURCE / path).read_text(encoding="utf-8")
        here = set(re.findall(r"\w+", re.sub(r"//.*", "", text)))
        for comment in re.findall(r"//.*", text):
            for code in re.findall(r"`([^`]+)`", comment):
                name = NAME.fullmatch(code)
                if name and not {name[1], name[1].split("::")[-1]} & (here | everywhere):
                    yield f"{path}: there is no name `{code}`"


def missing_families(found, families):
    """Yields families that are missing in the table of the front page."""
    named = {family.name for family in families} | {""}
    for header in found:
        if header.family not in named:
            yield f"README.md: the table lacks the family {header.family} of {header.path}"


class Links(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.anchors, self.targets = {""}, []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id":
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.targets.append((tag, value))


def broken_links(output):
    pages = {path.relative_to(output).as_posix(): Links(path.read_text(encoding="utf-8"))
             for path in sorted(output.rglob("*.html"))}
    files = {path.relative_to(output).as_posix() for path in output.rglob("*") if path.is_file()}
    for url, page in pages.items():
        for tag, target in dict.fromkeys(page.targets):
            if re.match(r"\w+:", target):
                if tag != "a" and not target.startswith("data:"):
                    yield f"{url}: loads from another host: {target}"
                continue
            file, anchor = urllib.parse.urldefrag(urllib.parse.unquote(target))
            file = urllib.parse.urljoin(url, file.partition("?")[0]) if file else url
            if file not in files:
                yield f"{url}: no file {target}"
            elif file in pages and anchor not in pages[file].anchors:
                yield f"{url}: no anchor {target}"
