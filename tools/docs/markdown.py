"""Where Doxygen reads Markdown unlike everybody else."""

import re


def for_doxygen(text, prefix=""):
    """Lines of text as Doxygen has to be given them; each begins with the pattern `prefix`, and
    those that don't count as empty."""
    line_of_text = re.compile(rf"({prefix})(.*)")
    lines, inside = [], ""
    for line in text.splitlines():
        match = line_of_text.fullmatch(line)
        if not match or not match[2].strip():
            inside = ""
        elif not inside:
            inside = "list" if re.match(r"\s|([-*+]|\d+\.) ", match[2]) else "paragraph"
        elif inside == "paragraph":  # a number that ends a sentence opens no list
            line = match[1] + re.sub(r"^(\s*\d+)\. ", r"\1\\. ", match[2])
        if line.count("`") % 2 == 0:  # a quote would end the code
            line = re.sub("`[^`]+`", lambda code: f"`{code[0]}`" if "'" in code[0] else code[0],
                          line)
        lines.append(line)
    return "\n".join(lines) + "\n"
