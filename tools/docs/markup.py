"""Pieces of HTML."""

import html
import re


def escape(text):
    return html.escape(text or "", quote=False)


def element(name, inner="", **attributes):
    """Attributes with None for a value are left out; `class_` stands for `class`."""
    said = "".join(f' {key.rstrip("_").replace("_", "-")}="{html.escape(value)}"'
                   for key, value in attributes.items() if value is not None)
    return f"<{name}{said}>{inner}</{name}>"


def code(text):
    return element("code", escape(text))


def name_in_code(name):
    """A long name in a narrow column may go on below where a word of it begins."""
    return element("code", re.sub(r"(?<=[a-z0-9])(?=[A-Z])|(?<=_)(?=\w)|(?<=::)", "<wbr>",
                                  escape(name)))


def scrolling(table):
    """A table that is wider than its page moves inside itself."""
    return element("div", table, class_="wide")


def signature(declaration):
    return element("pre", element("code", declaration), class_="signature", tabindex="0")


def unboxed(paragraphs):
    return re.sub("</?p>", "", paragraphs)
