"""The pages written in Markdown as Doxygen reads them: every heading gets the anchor that it has
in the plain repository view, and every link that leads to a file of the site becomes a reference.
"""

import collections
import pathlib
import re

import markdown
from markup import escape

FENCE = re.compile(r"^(```.*?^```$)", re.S | re.M)
HEADING = re.compile(r"^(#+) (.*)$", re.M)
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)")
IMAGE = re.compile(r"!\[([^\]]*)\]\(([^)\s]+)\)")


class Page:
    def __init__(self, path, name):
        self.path = path
        self.name = name  # of its file in the site, and what references call it
        self.text = path.read_text(encoding="utf-8")
        if not self.text.startswith("# "):  # the licence
            self.text = f"# {path.stem.capitalize()}\n\n{self.text}"
        self.parts = FENCE.split(self.text)  # every second one is a block of code
        headings = HEADING.findall("".join(self.parts[::2]))
        self.title = plain(headings[0][1])
        self.label = escape(self.title)
        self.slugs = {slug(text) for _, text in headings}
        self.links = [target for part in self.parts[::2] for _, target in LINK.findall(part)]


def plain(markdown):
    return re.sub(r"[`*]|\]\([^)]*\)|\[", "", markdown)


def slug(heading):
    return re.sub(r"[^\w\- ]", "", plain(heading).lower()).replace(" ", "-")


def collect(start, *folders):
    """All pages by their paths: `start`, those of the folders, and what they lead to."""
    pages = {}
    waiting = [start, *(path for folder in folders for path in sorted(folder.glob("*.md")))]
    while waiting:
        path = waiting.pop(0)
        if path in pages:
            continue
        inner = path.stem == "README" and path.parent.parts
        name = "_".join(path.parent.parts) if inner else path.stem.lower()
        pages[path] = Page(path, "index" if path == start else name)
        waiting += [target for target in map(lambda link: resolve(path, link)[0],
                                             pages[path].links)
                    if target and target.is_file() and target.suffix in (".md", "")]
    return pages


def resolve(path, link):
    """File and anchor that a link on a page leads to; no file where it leads out of the project."""
    if re.match(r"\w+:", link):
        return None, ""
    file, _, anchor = link.partition("#")
    target = path.parent / file if file else path
    return pathlib.Path(*pathlib.PurePath(
        str(target.resolve().relative_to(pathlib.Path.cwd()))).parts), anchor


def for_doxygen(page, pages, headers, faults):
    repeats = collections.Counter()

    def heading(match):
        level, text = match.groups()
        if level == "#":
            return match[0] if page.name == "index" else f"{level} {text} {{#{page.name}}}"
        anchor = slug(text)
        repeats[anchor] += 1
        if repeats[anchor] > 1:  # as in the repository view
            anchor += f"-{repeats[anchor] - 1}"
        return f"{level} {text} {{#{page.name}-{anchor}}}"

    def reference(match):
        text, link = match.groups()
        target, anchor = resolve(page.path, link)
        if target is None:
            return match[0]
        if target in pages:
            if anchor and anchor not in pages[target].slugs:
                faults.append(f"{page.path}: {link}: no such heading")
            return f"[{text}](@ref {pages[target].name}{'-' + anchor if anchor else ''})"
        if not target.exists():
            faults.append(f"{page.path}: {link}: no such file")
        if target in headers:
            return f"[{text}](@ref {target.relative_to('src/zelvan')})"
        return text  # a file that is no part of the site

    def image(match):
        text, link = match.groups()
        target, _ = resolve(page.path, link)
        if target is not None and not target.exists():
            faults.append(f"{page.path}: {link}: no such file")
        return f"![{text}]({pathlib.PurePath(link).name})"

    for i in range(0, len(page.parts), 2):
        part = HEADING.sub(heading, page.parts[i])
        page.parts[i] = markdown.for_doxygen(IMAGE.sub(image, LINK.sub(reference, part)))
    return "".join(page.parts)
