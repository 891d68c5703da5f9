"""The public headers as Doxygen reads them: what a reader of the plain text takes for granted is
said in its commands, so that the headers themselves need none of them.

- The comment that opens a header speaks for the header.
- A comment above a declaration speaks for the declarations that follow it without a blank line.
- `// ---- title` opens a section; the plain comment behind it speaks for the section, which ends
  where the next one begins, or with the class.
- What the compiler alone reads, `static_assert` and `friend`, is left out.
- A header for callers from C repeats what others declare; only its opening comment is taken.
"""

import re

import markdown

FOR_C = re.compile(r"^extern \"C\" {", re.M)
SCOPE = re.compile(r"(template.*> )?(struct|class|enum|union|namespace)\b")
SECTION = re.compile(r"( *)// ---- (.*)")


def for_doxygen(text, path):
    titles = [title for _, title in SECTION.findall(text)]
    for title in {title.partition(":")[0] for title in titles}:
        if sum(other.partition(":")[0] == title for other in titles) > 1:
            raise SystemExit(f"{path}: two sections have the title '{title}'")
    if FOR_C.search(text):
        text = re.match(r"(///.*\n)*", text)[0] + "#pragma once\n"
    text = markdown.for_doxygen(text, r"\s*///?<? ?")
    lines = without_statements(text.splitlines(), "static_assert", "friend")
    lines = [re.sub(r"^#pragma once$", r"/// \\file", line) for line in lines]
    lines = [re.sub(r"^( *///.*?)\*?(Requires[^.:]*:)\*?", r"\1**\2**", line) for line in lines]
    return "\n".join(with_comments_shared(with_sections(lines))) + "\n"


def without_statements(lines, *keywords):
    opening = re.compile(r" *(%s)\b" % "|".join(keywords))
    inside = False
    for line in lines:
        inside = inside or opening.match(line)
        yield "" if inside else line
        inside = inside and not re.sub(r"//.*", "", line).rstrip().endswith(";")


def with_sections(lines):
    """Sections become member groups."""
    indent = None  # of the open section
    in_title = False
    for line in lines:
        opening = SECTION.match(line)
        ends = indent is not None and (opening or line.startswith("};") and indent)
        if ends:
            yield indent + "/// @}"
            indent = None
        if opening:
            indent = opening[1]
            title, _, rest = opening[2].replace("`", "").partition(": ")
            yield f"{indent}/// @name {title[0].upper()}{title[1:]}"
            if rest:
                yield f"{indent}/// {rest[0].upper()}{rest[1:]}."
            in_title = True
        elif in_title and line.startswith(indent + "//") and not line.startswith(indent + "///"):
            yield line.replace("//", "///", 1)
        else:
            if in_title:
                yield indent + "/// @{"
            in_title = False
            yield line
    if indent is not None:
        yield indent + "/// @}"


def with_comments_shared(lines):
    """Gives each declaration of a paragraph the comment above the first one."""
    comment = []       # the last one, while its paragraph lasts
    is_fresh = False   # it stands right above
    is_inside = False  # a declaration that goes on
    depth = 0          # of its brackets
    for line in lines:
        code = re.sub(r"//.*|#.*", "", line).strip()
        is_comment = not code and re.match(r" *///(?! @)", line)
        if is_inside:
            pass
        elif is_comment:
            comment = [*comment, line] if is_fresh else [line]
        elif not code or code.endswith(":") or code == "};" or SCOPE.match(code):
            comment = []
        elif comment and not is_fresh and "///<" not in line:
            yield from comment
        is_fresh = bool(is_comment)
        yield line
        if code and not code.endswith(":") and not (SCOPE.match(code) and code.endswith("{")):
            depth += sum(code.count(c) for c in "({") - sum(code.count(c) for c in ")}")
            is_inside = depth > 0 or depth == 0 and not code.endswith((";", "}", ","))
            depth = max(depth, 0)  # below 0 where the scope ends
