#!/usr/bin/python3
"""Makes plain web pages of the guide, to stand beside the playground.

    guide_pages.py FOLDER

Links between the pages work. Links to other files of the sources become text, because those files
are in the archive of the sources and not beside the pages.
"""

import html
import pathlib
import posixpath
import re
import shutil
import sys

from markdown_it import MarkdownIt

ROOT = pathlib.Path(__file__).resolve().parent.parent
DATA = "examples/mapview/data/README.md"
PAGE = """<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{title}</title>
<link rel="icon" href="data:,">
<link rel="stylesheet" href="guide.css">
</head>
<body>
<nav aria-label="Pages"><a href="../index.html">The map</a> <a href="index.html">The guide</a></nav>
<main>
{text}</main>
</body>
</html>
"""


def page_names():
    """Returns the name of each page by its source, a path from the root."""
    names = {"README.md": "index.html", "LICENSE": "licence.html", DATA: "data.html"}
    for path in sorted(ROOT.glob("docs/*.md")):
        names[f"docs/{path.name}"] = path.stem + ".html"
    return names


def anchor(heading):
    """Returns the id of a heading, as links to it spell it."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


class Page:
    def __init__(self, source, names):
        self.folder = posixpath.dirname(source)
        self.names = names
        self.images = set()
        text = (ROOT / source).read_text(encoding="utf-8")
        if source == "LICENSE":
            text = f"# Licence\n\n{text}"
        parser = MarkdownIt("commonmark").enable("table")
        tokens = parser.parse(text)
        self.title = source
        self.mark_headings(tokens)
        for token in tokens:
            for child in token.children or []:
                self.resolve(child, token.children)
        self.text = parser.renderer.render(tokens, parser.options, {})

    def mark_headings(self, tokens):
        for opening, inline in zip(tokens, tokens[1:]):
            if opening.type != "heading_open":
                continue
            heading = "".join(child.content for child in inline.children)
            opening.attrSet("id", anchor(heading))
            if opening.tag == "h1":
                self.title = heading

    def resolve(self, token, siblings):
        if token.type == "image":
            name = posixpath.basename(token.attrs["src"])
            self.images.add(ROOT / "docs/images" / name)
            token.attrSet("src", f"images/{name}")
        if token.type != "link_open" or "://" in token.attrs["href"]:
            return
        path, mark, heading = token.attrs["href"].partition("#")
        source = posixpath.normpath(posixpath.join(self.folder, path)) if path else None
        if source is None or source in self.names:
            token.attrSet("href", self.names.get(source, "") + mark + heading)
        else:
            unlink(token, siblings)


def unlink(opening, siblings):
    """Turns a link into an emphasis."""
    after = siblings[siblings.index(opening):]
    closing = next(token for token in after if token.type == "link_close")
    opening.tag = closing.tag = "em"
    opening.attrs = {}


def main():
    folder = pathlib.Path(sys.argv[1])
    (folder / "images").mkdir(parents=True, exist_ok=True)
    names = page_names()
    for source, name in names.items():
        page = Page(source, names)
        text = PAGE.format(title=html.escape(f"{page.title} – zelvan"), text=page.text)
        (folder / name).write_text(text, encoding="utf-8")
        for image in page.images:
            shutil.copy(image, folder / "images")
    shutil.copy(ROOT / "examples/playground/guide.css", folder)


main()
