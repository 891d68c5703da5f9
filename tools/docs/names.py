"""A Sphinx extension: links names of the library in code to their entries, and shows the alternative
text of a picture as its caption."""

import collections
import re

from docutils import nodes
from pygments.lexers.special import TextLexer
from sphinx import addnodes
from sphinx.transforms import SphinxTransform
from sphinx.transforms.post_transforms import SphinxPostTransform
from sphinx.util.nodes import make_refnode

CALL = re.compile(r"[*&]*((?:\w+::)*~?\w+)(?:\(.*\))?", re.S)
BLOCK = re.compile(r'<div class="highlight-c(?:pp)? .*?</pre>', re.S)
WORD = re.compile(r'<span class="(?:n|nf|nc)">(\w+)</span>')
INCLUDE = re.compile(r'<span class="cpf">&lt;zelvan/([\w/]+\.h)&gt;</span>')


def names_of(app):
    """Pages and anchors of what has a name. A bare name stands for an operation or a constant if
    only one is called so, and with a page for a field of a record there."""
    if not hasattr(app, "zelvan_names"):
        places, bare = {}, collections.defaultdict(dict)
        objects = [*app.env.get_domain("cpp").get_objects(),
                   *app.env.get_domain("c").get_objects()]  # macros
        for name, _, kind, page, anchor, _ in objects:
            scope, _, last = name.rpartition("::")
            if kind == "functionParam":
                continue
            places.setdefault(name, (page, anchor))
            if scope and kind == "member":
                places.setdefault((page, last), (page, anchor))
            elif scope:
                bare[last][name] = page, anchor
        for last, found in bare.items():
            if len(found) == 1:
                places.setdefault(last, *found.values())
        app.zelvan_names = places
    return app.zelvan_names


def parameters(node):
    """Returns the parameters of the functions whose comment contains the node; these are not linked."""
    while node.parent is not None and not isinstance(node, nodes.section):
        node = node.parent
    return {list(parameter.findall(addnodes.desc_sig_name))[-1].astext()
            for child in node.children if isinstance(child, addnodes.desc)
            for parameter in child.findall(addnodes.desc_parameter)
            if list(parameter.findall(addnodes.desc_sig_name))}


class Captions(SphinxTransform):
    default_priority = 10

    def apply(self):
        for image in list(self.document.findall(nodes.image)):
            paragraph = image.parent
            if isinstance(paragraph, nodes.paragraph) and len(paragraph) == 1 and image.get("alt"):
                paragraph.replace_self(
                    nodes.figure("", image.deepcopy(), nodes.caption("", image["alt"])))


class LinkCode(SphinxPostTransform):
    default_priority = 300  # after references are resolved

    def run(self):
        page, places = self.env.docname, names_of(self.app)
        taken = {literal for kind in (nodes.reference, nodes.title)
                 for node in self.document.findall(kind) for literal in node.findall(nodes.literal)}
        for literal in list(self.document.findall(nodes.literal)):
            text = literal.astext()
            name = CALL.fullmatch(text)
            place = name and (places.get(name[1]) or places.get((page, name[1])))
            if page == self.config.root_doc and f"families/{text}" in self.env.found_docs:
                place = f"families/{text}", ""
            if (not place or literal in taken or literal.next_node(nodes.reference)
                    or text in parameters(literal)):
                continue
            literal.replace_self(
                make_refnode(self.app.builder, page, *place, literal.deepcopy()))


def link_blocks(app, page, _template, context, doctree):
    if doctree is None:
        return
    places = names_of(app)

    def link(span, place):
        if place in (None, (page, "")):
            return span
        target = app.builder.get_relative_uri(page, place[0]) + (f"#{place[1]}" if place[1] else "")
        return f'<a class="name" href="{target}">{span}</a>'

    def block(match):
        text = WORD.sub(lambda word: link(word[0], places.get(word[1])), match[0])
        return INCLUDE.sub(lambda file: link(file[0], (f"reference/{file[1]}", "")), text)

    context["body"] = BLOCK.sub(block, context["body"])


def setup(app):
    app.add_lexer("mermaid", TextLexer)
    app.add_transform(Captions)
    app.add_post_transform(LinkCode)
    app.connect("html-page-context", link_blocks)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
