"""Doxygen's XML as HTML."""

import html.entities
import pathlib
import posixpath
import re
import struct

from markup import code, element, escape, scrolling, unboxed
from reference import name_of, text_of

INLINE = {"bold": "strong", "emphasis": "em", "superscript": "sup", "subscript": "sub",
          "strike": "s", "underline": "u", "small": "small"}
SIGNS = {"sp": " ", "nonbreakablespace": "\u00a0", "linebreak": "<br>", "anchor": ""}
CALL = re.compile(r"\W*((?:\w+::)?~?\w+)(?:\(.*\))?", re.S)


def first_sentence(text):
    return re.match(r".*?\.(?=\s|$)|.*", text, re.S)[0]


class Renderer:
    """Renders for one page. `urls` are those of Doxygen's ids, `names` those of names in code."""

    def __init__(self, url, urls, names):
        self.url = url
        self.urls = urls
        self.names = names
        self.not_linked = set()  # names that mean something nearer: parameters

    def link(self, url):
        """From this page to that one."""
        file, hash_sign, anchor = url.partition("#")
        if file == self.url and anchor:
            return f"#{anchor}"
        return posixpath.relpath(file, posixpath.dirname(self.url) or ".") + hash_sign + anchor

    # ---- running text

    def inline(self, node):
        return escape(node.text) + "".join(
            self.inline_element(child) + escape(child.tail) for child in node)

    def inline_element(self, node):
        if node.tag in INLINE:
            return element(INLINE[node.tag], self.inline(node))
        if node.tag in SIGNS:
            return SIGNS[node.tag]
        if node.tag == "computeroutput":
            return self.code("".join(node.itertext()))
        if node.tag == "ref":
            return element("a", self.inline(node), href=self.link(self.urls[node.get("refid")]))
        if node.tag == "ulink":
            return element("a", self.inline(node), href=node.get("url"))
        if f"{node.tag};" in html.entities.html5:
            return html.entities.html5[f"{node.tag};"]
        raise SystemExit(f"{self.url}: tools/docs/render.py has to learn what a <{node.tag}> is")

    def code(self, text):
        name = CALL.fullmatch(text)
        if name and name[1] in self.names and name[1] not in self.not_linked:
            return element("a", code(text), href=self.link(self.names[name[1]]))
        return code(text)

    def sentence(self, comment):
        """The first one of a comment, as far as no list, table or block of code begins."""
        paragraph = comment.find("para")
        if paragraph is None:
            return ""
        shown = escape(paragraph.text)
        for child in paragraph:
            if hasattr(self, f"block_{child.tag}"):
                break
            shown += self.inline_element(child) + escape(child.tail)
        return first_sentence(shown.strip())

    # ---- blocks

    def blocks(self, node, level=2):
        """What stands in a comment, a section, a list item, a cell or a paragraph: blocks, and
        running text between them, which makes paragraphs."""
        if node is None:
            return ""
        done, running = [], escape(node.text)
        for child in node:
            block = getattr(self, f"block_{child.tag}", None)
            if block is None:
                running += self.inline_element(child)
            else:
                done += [element("p", running.strip())] if running.strip() else []
                done.append(block(child, level))
                running = ""
            running += escape(child.tail)
        done += [element("p", running.strip())] if running.strip() else []
        return "\n".join(filter(None, done))

    def block_para(self, node, level):
        return self.blocks(node, level)

    def block_title(self, _node, _level):
        return ""  # block_section has it

    def block_section(self, node, level):
        anchor = self.urls[node.get("id")].partition("#")[2]
        link = element("a", self.inline(node.find("title")), class_="self", href=f"#{anchor}")
        return element(f"h{level}", link, id=anchor) + "\n" + self.blocks(node, level + 1)

    block_sect1 = block_sect2 = block_sect3 = block_sect4 = block_section

    def block_list(self, node, level):
        items = (self.blocks(item, level) for item in node)
        # A single paragraph needs no box of its own.
        items = (re.sub(r"^<p>((?:(?!<p>).)*)</p>$", r"\1", item, flags=re.S) for item in items)
        return element("ul" if node.tag == "itemizedlist" else "ol",
                       "\n".join(element("li", item) for item in items))

    block_itemizedlist = block_orderedlist = block_list

    def block_table(self, node, _level):
        rows = [element("tr", "".join(
            element("th" if cell.get("thead") == "yes" else "td", unboxed(self.blocks(cell)),
                    class_="right" if cell.get("align") == "right" else None)
            for cell in row)) for row in node.findall("row")]
        if not re.sub(r"<[^>]*>", "", rows[0]):  # a table without headings
            del rows[0]
        return scrolling(element("table", "\n".join(rows)))

    def block_verbatim(self, node, _level):
        return element("pre", code(node.text.rstrip()), tabindex="0")

    def block_programlisting(self, node, _level=0):
        lines = []
        for line in node.findall("codeline"):
            parts = [(part.get("class"), self.inline(part)) for part in line]
            lines.append("".join(shown if kind == "normal" or not shown
                                 else element("span", shown, class_=kind)
                                 for kind, shown in parts))
        return element("pre", element("code", "\n".join(lines)), tabindex="0")

    def block_image(self, node, _level):
        if node.get("type") != "html":
            return ""
        file, caption = node.get("name"), text_of(node)
        picture = element("img", src=self.link(f"images/{file}"), alt=caption,
                          **size_of(pathlib.Path("docs/images", file))).removesuffix("</img>")
        return element("figure", picture + element("figcaption", escape(caption),
                                                   aria_hidden="true"))

    def block_hruler(self, _node, _level):
        return "<hr>"

    def block_blockquote(self, node, level):
        return element("blockquote", self.blocks(node, level))

    # ---- declarations

    def declaration(self, node):
        """As in the header, but wrapped here where it is long."""
        name = element("b", escape(name_of(node)))
        render = getattr(self, f"declare_{node.get('kind')}")
        return render(node, name)

    def declare_class(self, node, name):
        bases = []
        for base in node.findall("basecompoundref"):
            shown = escape(base.text)
            if base.get("refid"):
                shown = element("a", shown, href=self.link(self.urls[base.get("refid")]))
            bases.append(f"{base.get('prot')} {shown}")
        return f"{node.get('kind')} {name}" + (" : " + ", ".join(bases) if bases else "")

    declare_struct = declare_class

    def declare_enum(self, node, name):
        base = text_of(node.find("type"))
        return "enum" + (f" {name}" if name_of(node) else "") + (f" : {base}" if base else "")

    def declare_define(self, node, name):
        value = text_of(node.find("initializer"))
        return f"#define {name} {escape(value)}".rstrip()

    def declare_typedef(self, node, name):
        behind = self.type(node.find("argsstring"))
        return f"typedef {self.type(node.find('type'))} {name}{behind}"

    def declare_variable(self, node, name):
        return f"{self.type(node.find('type'))} {name}{text_of(node.find('argsstring'))}"

    def declare_function(self, node, name):
        words = [*(["static"] if node.get("static") == "yes" else []),
                 *(["virtual"] if node.get("virt") == "pure-virtual" else []),
                 *(["explicit"] if node.get("explicit") == "yes" else []),
                 self.type(node.find("type")), name]
        head = " ".join(filter(None, words))
        parameters = [
            f"{self.type(parameter.find('type'))} {text_of(parameter.find('declname'))}".strip()
            + text_of(parameter.find("array")) for parameter in node.findall("param")]
        behind = re.sub(r"^\(.*\)\s*", "", text_of(node.find("argsstring")))
        behind = " " + behind.replace("=", " = ").strip() if behind else ""
        line = f"{head}({', '.join(parameters)}){behind}"
        if len(re.sub(r"<[^>]*>", "", line)) < 78 or len(parameters) < 2:
            return line
        return f"{head}(\n    " + ",\n    ".join(parameters) + f"){behind}"

    def type(self, node):
        shown = self.inline(node) if node is not None else ""
        shown = re.sub(r"\s+(?=[*&])|(?<=&lt;) | (?=&gt;)", "", shown)
        return shown.removeprefix("constexpr ").removeprefix("inline ")


def size_of(picture):
    if picture.suffix != ".png":
        return {}
    width, height = struct.unpack(">II", picture.read_bytes()[16:24])
    return {"width": str(width), "height": str(height)}
