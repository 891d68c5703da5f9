"""The pages around the reference: guide, families, the list of all names."""

from markup import element, escape, name_in_code
from reference import text_of, walk


def add_guide_page(site, page):
    renderer = site.renderer(page.url)
    text = site.reference.pages[page.name].find("detaileddescription")
    site.found("guide", page.title, page.url, "",
               " ".join(text_of(child) for child in text if child.tag == "para"))
    contents = []
    for section in text.findall("sect1"):
        url = site.reference.urls[section.get("id")]
        title = text_of(section.find("title"))
        contents.append(("top", escape(title), url.partition("#")[2]))
        site.found("guide", title, url, page.title, text_of(section))
    site.add(renderer, page.title, element("h1", escape(page.title)) + renderer.blocks(text),
             site.family_of(page), contents if len(contents) > 1 else ())


def add_family_page(site, family):
    """What a family gives, and the ways to its guide and to its reference."""
    renderer = site.renderer(family.url)
    parts = [element("h1", name_in_code(family.name)),
             element("p", escape(family.gives), class_="lead"),
             element("h2", "Guide", id="guide")]
    for page in family.guides:
        text = site.reference.pages[page.name].find("detaileddescription")
        sections = "".join(
            element("li", element("a", renderer.inline(section.find("title")),
                                  href=renderer.link(site.reference.urls[section.get("id")])))
            for section in text.findall("sect1"))
        parts.append(card(renderer, page.url, escape(page.title),
                          element("ul", sections, class_="row")))

    parts.append(element("h2", "Reference", id="reference"))
    for header in family.headers:
        parts.append(card(renderer, header.url, name_in_code(header.name),
                          element("p", renderer.sentence(header.comment))
                          + name_table(renderer, header.entries)))

    parts.append(element("h2", "A worked example", id="example"))
    for page in family.guides:
        source = element("a", escape(page.title), href=renderer.link(page.url))
        example = element("p", "It prints").join(
            renderer.block_programlisting(block) for block in worked_example(site, page))
        parts.append(element("p", f"From {source}:") + example if page is family.guides[0] else
                     element("details", element("summary", f"Another, from {source}") + example))
    site.found("family", family.name, family.url, family.gives)
    site.add(renderer, family.name, "\n".join(parts), family,
             [("top", "Guide", "guide"), ("top", "Reference", "reference"),
              ("top", "A worked example", "example")])


def card(renderer, url, title, text):
    heading = element("h3", element("a", title, href=renderer.link(url)))
    return element("div", heading + text, class_="card")


def worked_example(site, page):
    """The program of a guide page, and what it prints."""
    listings = list(site.reference.pages[page.name].iter("programlisting"))
    for program, output in zip(listings, listings[1:]):
        if program.get("filename") == ".cpp" and "intmain(" in "".join(program.itertext()):
            return program, output
    raise SystemExit(f"{page.path}: no worked example with the text that it prints")


def name_table(renderer, entries, with_members=False):
    """The entries of a header, each with the first sentence of its comment."""
    return element("dl", "".join(name_rows(renderer, entries, with_members)), class_="names")


def name_rows(renderer, entries, with_members, kind="name"):
    section = None
    for entry in entries:
        if entry.section is not section:
            section = entry.section
            yield element("dt", text_of(section.find("header")), class_="title")
        names = ", ".join(map(name_in_code, entry.names())) or "constants"
        link = element("a", names, href=renderer.link(renderer.urls[entry.nodes[0].get("id")]))
        yield element("dt", link, class_=kind)
        yield element("dd", renderer.sentence(entry.comment)) + "\n"
        if with_members:
            members = [member for member in entry.entries if member.kind != "variable"]
            yield from name_rows(renderer, members, True, "member")


def add_names_page(site):
    renderer = site.renderer("names.html")
    entries = {}
    for header in site.reference.headers:
        for entry in walk(header.entries):
            if not (entry.scope and entry.kind == "variable"):
                entries |= {entry.qualified(name): entry for name in entry.names()}
            entries |= {text_of(value.find("name")): entry for value in entry.values()}
    letters = {}
    for name in sorted(entries, key=lambda name: (name.lower(), name)):
        link = element("a", name_in_code(name), href=site.reference.names[name])
        letters.setdefault(name[0].upper(), []).append(
            element("dt", link) + element("dd", renderer.sentence(entries[name].comment)))
    main = "\n".join(element("h2", letter, id=letter)
                     + element("dl", "\n".join(rows), class_="names")
                     for letter, rows in letters.items())
    site.add(renderer, "All names", element("h1", "All names") + main,
             contents=[("top", letter, letter) for letter in letters])
