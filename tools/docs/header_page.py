"""The page of a header, which says what the header says, in its order."""

from guide import slug
from markup import code, element, escape, name_in_code, scrolling, signature, unboxed
from pages import name_table
from reference import comment_of, text_of, walk
from render import first_sentence


def add_header_page(site, header):
    renderer = site.renderer(header.url, header.entries)
    page = HeaderPage(renderer)
    entries = page.entries(header.entries, 2, "top")
    names = ""
    if sum(1 for _ in walk(header.entries)) > 3:
        names = (element("h2", "Names", id="names")
                 + name_table(renderer, header.entries, with_members=True))
    site.add(renderer, header.name, "\n".join((
        element("h1", name_in_code(header.name)),
        element("pre", code(f"#include <zelvan/{header.path}>"), class_="include"),
        element("div", renderer.blocks(header.comment), class_="lead"),
        names, entries)), site.family_of(header), page.contents)

    site.found("header", header.name, header.url, *sentence_and_text(header.comment))
    for entry in walk(header.entries):
        for name in map(entry.qualified, entry.names()):
            site.found(entry.word(), name, site.reference.names[name],
                       *sentence_and_text(entry.comment))
        for value in entry.values():
            site.found("constant", text_of(value.find("name")),
                       site.reference.urls[value.get("id")], text_of(comment_of(value)))


def sentence_and_text(comment):
    return first_sentence(text_of(comment)), text_of(comment)


class HeaderPage:
    def __init__(self, renderer):
        self.renderer = renderer
        self.contents = []

    def entries(self, entries, level, kind):
        """Entries one after the other, under the titles of their sections; what is a row, as a
        field is, together with its neighbours in a table."""
        parts, rows, section = [], [], None

        def end_table():
            if rows:
                parts.append(scrolling(element("table", "".join(rows), class_="fields")))
                rows.clear()

        for entry in entries:
            if entry.section is not section:
                end_table()
                section = entry.section
                parts.append(self.section(section, level))
            if entry.is_row():
                rows.append(self.row(entry))
            else:
                end_table()
                parts.append(self.entry(entry, level + (section is not None), kind))
        end_table()
        return "\n".join(parts)

    def section(self, section, level):
        title = text_of(section.find("header"))
        self.contents.append(("title", escape(title), slug(title)))
        return (element(f"h{level}", escape(title), class_="section", id=slug(title))
                + self.renderer.blocks(section.find("description")))

    def row(self, entry):
        declarations = "<br>".join(
            element("code", self.renderer.declaration(node)
                    + escape(" " + text_of(node.find("initializer"))).rstrip(),
                    id=entry.anchors[node.get("id")]) for node in entry.nodes)
        return element("tr", element("td", declarations + note(entry))
                       + element("td", unboxed(self.renderer.blocks(entry.comment))))

    def entry(self, entry, level, kind):
        anchor, *others = (entry.anchors[node.get("id")] for node in entry.nodes)
        title = ", ".join(entry.names()) or "Constants"
        label = name_in_code(title)
        if not self.contents or self.contents[-1][:2] != (kind, label):  # of overloads the first
            self.contents.append((kind, label, anchor))
        self.renderer.not_linked = {text_of(name) for node in entry.nodes
                                    for name in node.iterfind("param/declname")}
        link = element("a", code(title), class_="self", href=f"#{anchor}")
        text = "".join((
            *(element("span", id=other) for other in others),
            element(f"h{level}", link + note(entry)),
            signature("\n".join(map(self.renderer.declaration, entry.nodes))),
            self.renderer.blocks(entry.comment),
            self.values(entry)))
        self.renderer.not_linked = set()
        return (element("section", text, class_="entry", id=anchor)
                + self.entries(entry.entries, level + 1, "member"))

    def values(self, entry):
        rows = "".join(
            element("tr", element("td", code(text_of(value.find("name"))))
                    + element("td", code(text_of(value.find("initializer")).removeprefix("= ")))
                    + element("td", unboxed(self.renderer.blocks(comment_of(value)))),
                    id=entry.anchors[value.get("id")]) for value in entry.values())
        return scrolling(element("table", rows, class_="fields")) if rows else ""


def note(entry):
    return element("span", "for derived classes", class_="note") if entry.is_protected() else ""
