"""What all pages of the site share: the frame, the way from one to the other, the search."""

import json
import re

from guide import LINK, plain, resolve
from markup import code, element
from reference import walk
from render import Renderer

# | `pick` | regions that say whether a point hits them | [pick regions](docs/pick.md) |
FAMILY = re.compile(r"^\| `(\w+)` \| (.*?) \| (.*?) \|$", re.M)


class Family:
    def __init__(self, name, gives, guides, headers):
        self.name = name
        self.gives = gives[0].upper() + plain(gives[1:]) + "."
        self.guides = guides
        self.headers = headers
        self.url = f"family/{name}.html"


class Site:
    def __init__(self, reference, guide, template, version):
        self.reference = reference
        self.guide = guide  # pages by path; the first is the front page
        self.template = template
        self.version = version
        self.done = {}      # text of pages by URL
        self.search = []    # rows of kind, name, URL, sentence and whole text

        front = next(iter(guide.values()))
        for page in guide.values():
            page.url = "index.html" if page is front else f"guide/{page.name}.html"
        self.families = [
            Family(name, gives, [guide[resolve(front.path, link)[0]]
                                 for _, link in LINK.findall(cell)], reference.of_family(name))
            for name, gives, cell in FAMILY.findall(front.text)]
        self.family_urls = {family.name: family.url for family in self.families}
        # Pages of no family, in the order in which the front page leads to them.
        places = {resolve(front.path, link)[0]: place for place, link in enumerate(front.links)}
        of_families = {front, *(page for family in self.families for page in family.guides)}
        self.others = sorted((page for page in guide.values() if page not in of_families),
                             key=lambda page: (places.get(page.path, len(places)), page.title))
        self.give_urls()

    def give_urls(self):
        """To pages and their sections, whose ids are those of guide.py behind Doxygen's own."""
        urls = self.reference.urls
        for page in self.guide.values():
            node = self.reference.pages[page.name]
            urls[node.get("id")] = page.url
            for section in node.iter():
                if section.tag.startswith("sect"):
                    anchor = section.get("id").split("_1", 1)[1].removeprefix(page.name + "-")
                    urls[section.get("id")] = f"{page.url}#{anchor}"

    def family_of(self, guide_or_header):
        return next((family for family in self.families
                     if guide_or_header in [*family.guides, *family.headers]), None)

    def renderer(self, url, entries=()):
        """For a page about these entries: a name in code leads to the entry of that name, or else
        to what stands alone under it, or else to the only operation that is called so."""
        names = self.reference.names
        operations = {}
        for header in self.reference.headers:
            for entry in walk(header.entries):
                if entry.scope and entry.kind == "function":
                    for name in entry.names():
                        operations.setdefault(name, set()).add(names[entry.qualified(name)])
        known = {name: found.pop() for name, found in operations.items() if len(found) == 1}
        known |= self.family_urls if url == "index.html" else {}
        known |= names
        known |= {name: names[entry.qualified(name)]
                  for entry in walk(entries) for name in entry.names()}
        return Renderer(url, self.reference.urls, known)

    def add(self, renderer, title, main, family=None, contents=()):
        """A page with its links around it. `contents` are class, text and anchor."""
        is_front = renderer.url == "index.html"
        crumbs = ""
        if family and renderer.url != family.url:
            crumbs = "Family " + element("a", code(family.name), href=renderer.link(family.url))
        items = "".join(element("li", element("a", text, href=f"#{anchor}"), class_=kind)
                        for kind, text, anchor in contents)
        values = {
            "title": title if is_front else f"{title} – zelvan",
            "root": "../" * renderer.url.count("/"),
            "version": self.version,
            "navigation": self.navigation(renderer, family),
            "crumbs": element("p", crumbs, class_="crumbs") if crumbs else "",
            "main": main,
            "contents": element("nav", f"<p>On this page</p><ul>{items}</ul>", class_="contents",
                                aria_label="On this page") if items else "",
        }
        self.done[renderer.url] = re.sub(r"\{(\w+)\}", lambda name: values[name[1]], self.template)

    def navigation(self, renderer, current):
        def item(url, text, inner=""):
            here = "page" if url == renderer.url else None
            link = element("a", text, href=renderer.link(url), aria_current=here)
            return element("li", link + inner) + "\n"

        def items(things):
            return element("ul", "".join(item(thing.url, thing.label) for thing in things))

        families = "".join(
            item(family.url, code(family.name),
                 items([*family.guides, *family.headers]) if family is current else "")
            for family in self.families)
        return (element("ul", item("index.html", "Start") + item("names.html", "All names"))
                + element("h2", "Families") + element("ul", families)
                + element("h2", "The whole library") + items(self.reference.of_family(""))
                + element("h2", "More") + items(self.others))

    def found(self, kind, name, url, sentence, text=""):
        self.search.append([kind, name, url, sentence, text.lower()])

    def search_index(self):
        rows = ",\n".join(json.dumps(row, ensure_ascii=False, separators=(",", ":"))
                          for row in self.search)
        return f"const search_index = [\n{rows}\n];\n"
