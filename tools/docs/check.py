"""What the site has to be: complete, true to its names, and without a dead link."""

import html.parser
import pathlib
import re
import urllib.parse

from reference import comment_of, name_of, text_of, walk

NAME = re.compile(r"[*&]*((?:\w+::)*[A-Za-z_]\w*)(?:\(.*\))?")
EXPORTS = pathlib.Path("src/zelvan/exports.txt")

# Exported for a friend of the class, and private.
NOT_FOR_CALLERS = {"CAlignedRect::CAlignedRect()"}

# Words that stand in code without being names of the library.
LANGUAGE = set("EOF cos errno exit fopen free getenv malloc memmove new qsort sin strftime".split())


def all_of(site, output):
    reference = site.reference
    entries = [(header, entry) for header in reference.headers for entry in walk(header.entries)]
    return [*not_documented(reference.headers, entries), *not_exported(entries),
            *unknown_names(reference), *missing_families(site), *broken_links(output)]


def not_documented(headers, entries):
    for header in headers:
        if not text_of(header.comment):
            yield f"{header.path}: no opening comment"
    for header, entry in entries:
        if not text_of(entry.comment):
            yield f"{header.path}: no comment speaks for {name_of(entry.nodes[0]) or 'constants'}"
        for value in entry.values():
            if not text_of(comment_of(value)):
                yield f"{header.path}: no comment speaks for {name_of(value)}"


def canonical(type_name):
    """Of the many ways to write a type, one."""
    type_name = re.sub(r"std::__cxx11::basic_string<([\w ]+), std::char_traits<\1>, "
                       r"std::allocator<\1> >", r"std::basic_string<\1>", type_name)
    type_name = re.sub(r"\bconst ((?:unsigned )?[\w:]+(?: ?<.*>)?)", r"\1 const", type_name)
    for alias, text in (("std::string", "std::basic_string<char>"),
                        ("zelvan::wide_string", "std::basic_string<unsignedshort>")):
        type_name = re.sub(r"\s", "", type_name).replace(alias, text)
    return type_name


def not_exported(entries):
    """Of the names that leave the library, those that have no entry."""
    documented = set()
    for _, entry in entries:
        for node in entry.nodes:
            name = entry.qualified(name_of(node))
            types = [canonical(text_of(parameter.find("type")))
                     for parameter in node.findall("param")]
            types = [] if types == ["void"] else types
            if text_of(node.find("argsstring")).endswith("...)"):
                types[-1] = "..."
            constant = "const" if node.get("const") == "yes" else ""
            documented |= {name, f"{name}({','.join(types)}){constant}"}
    for line in EXPORTS.read_text(encoding="utf-8").splitlines():
        name = re.sub(r"^(typeinfo|typeinfo name|vtable) for ", "", line)
        if (name and not name.startswith("#") and name not in NOT_FOR_CALLERS
                and canonical(name).replace("zelvan::", "") not in documented):
            yield f"{EXPORTS}: {line} has no entry in the reference"


def unknown_names(reference):
    """Of the names in code in a comment, those that nothing has. A comment may use what stands in
    its own header, and what stands alone in another; text goes between double quotes."""
    everywhere = LANGUAGE | {part for name in reference.names for part in name.split("::")}
    for header in reference.headers:
        text = pathlib.Path("src/zelvan", header.path).read_text(encoding="utf-8")
        here = set(re.findall(r"\w+", re.sub(r"//.*", "", text)))
        for comment in re.findall(r"//.*", text):
            for code in re.findall(r"`([^`]+)`", comment):
                name = NAME.fullmatch(code)
                if name and not {name[1], name[1].split("::")[-1]} & (here | everywhere):
                    yield f"{header.path}: nothing is called `{code}`"


def missing_families(site):
    """Families that the table of the front page leaves out."""
    named = {family.name for family in site.families} | {""}
    for header in site.reference.headers:
        if header.family not in named:
            yield f"README.md: its table has no family {header.family}, of {header.path}"


class Links(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.anchors, self.targets, self.twice = set(), [], []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id":
                self.twice += [value] if value in self.anchors else []
                self.anchors.add(value)
            elif name in ("href", "src"):
                self.targets.append((tag, value))


def broken_links(output):
    pages = {path.relative_to(output).as_posix(): Links(path.read_text(encoding="utf-8"))
             for path in sorted(output.rglob("*.html"))}
    files = {path.relative_to(output).as_posix() for path in output.rglob("*") if path.is_file()}
    for url, page in pages.items():
        yield from (f"{url}: the anchor {anchor} stands there twice" for anchor in page.twice)
        for tag, target in page.targets:
            if re.match(r"\w+:", target):
                if tag != "a" and not target.startswith("data:"):
                    yield f"{url}: asks another host: {target}"
                continue
            file, anchor = urllib.parse.urldefrag(urllib.parse.unquote(target))
            file = urllib.parse.urljoin(url, file) if file else url
            if file not in files:
                yield f"{url}: no file {target}"
            elif anchor and anchor not in pages[file].anchors:
                yield f"{url}: no anchor {target}"
