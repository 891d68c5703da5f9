"""Compares what the public headers declare with the list of exported names, in both directions.

    declared_names.py SOURCE

These leave the library: a function without a body, unless it is private and carries no mark of its
own; an inline function with its mark; a marked variable; the tables of a class with virtual
operations. Each stands in exports.txt, under its header.
"""

import collections
import pathlib
import re
import sys

NO_CODE = {"zelvan.h", "zelvan_c.h", "export.h"}  # these declare nothing of their own in C++
BUILT_IN = {"void", "bool", "char", "short", "int", "long", "float", "double", "unsigned", "signed"}
KNOWN_AS = {
    "unsigned": "unsigned int",
    "std::string": "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >",
    "zelvan::wide_string": "std::__cxx11::basic_string<unsigned short, std::char_traits<unsigned "
                           "short>, std::allocator<unsigned short> >",
}


def without_comments(text):
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
    return re.sub(r"^\s*#(?:[^\n]*\\\n)*[^\n]*", "", text, flags=re.M)


def close_of(text, start):
    """The place of the bracket that closes the one at `start`."""
    depth = 0
    for i in range(start, len(text)):
        depth += (text[i] in "({[") - (text[i] in ")}]")
        if depth == 0:
            return i
    raise ValueError(f"nothing closes: {text[start:start + 60]}")


def statements(text):
    """Each declaration: what stands before its body or semicolon, and the body or None."""
    start = i = 0
    while i < len(text):
        if text[i] in "(":
            i = close_of(text, i)
        elif text[i] == "{":
            end = close_of(text, i)
            yield text[start:i].strip(), text[i + 1:end]
            i, start = end, end + 1
        elif text[i] == ";":
            yield text[start:i].strip(), None
            start = i + 1
        i += 1


def split_at_commas(text):
    parts, depth = [""], 0
    for c in text:
        depth += (c in "(<[") - (c in ")>]")
        if c == "," and depth == 0:
            parts.append("")
        else:
            parts[-1] += c
    return [part.strip() for part in parts if part.strip()]


def type_of(parameter):
    """As c++filt prints it: "const Mtx2D& other" is "Mtx2D const&"."""
    text = re.sub(r"\s*=.*", "", " ".join(parameter.split())).replace("struct ", "")
    array = re.search(r"\s*\w*\[\w*\]$", text)
    text = text[:array.start()] + "*" if array else text
    named = re.match(r"(.*[\w:]\s*[*&\s]+)(\w+)$", text)
    if named and named[2] not in BUILT_IN and named[1].split() != ["const"]:
        text = named[1].strip()
    name, pointers = re.match(r"(.*?)\s*([*&\s]*)$", text).groups()
    is_const = name.startswith("const ")
    name = name.removeprefix("const ")
    return KNOWN_AS.get(name, name) + (" const" if is_const else "") + pointers.replace(" ", "")


def names_of(text, scope=""):
    """What the declarations of `text`, in class `scope`, put into the library."""
    is_private = False
    for head, body in statements(text):
        access = re.match(r"(public|protected|private)\s*:\s*", head)
        if access:
            is_private = access[1] == "private"
            head = head[access.end():]
        kind = re.match(r"(?:typedef\s+)?(?:class|struct)\s+(?:ZELVAN_API\s+)?(\w+)(?:\s+final)?"
                        r"(?:\s*:[^{]*)?$", head)
        space = re.match(r"namespace (\w+)$", head)
        if body is not None and space:
            own = "|".join(re.findall(r"\b(?:struct|class) (\w+)", body)) or "(?!)"
            own = re.compile(rf"(?<![\w:])({own})\b")
            yield from (f"{space[1]}::" + own.sub(rf"{space[1]}::\1", name)
                        for name in names_of(body, scope))
        elif body is not None and kind:
            yield from names_of(body, f"{kind[1]}::")
            if re.search(r"\bvirtual\b|\boverride\b", body):
                yield from (f"{table} for {kind[1]}" for table in ("typeinfo", "typeinfo name",
                                                                   "vtable"))
        elif head.startswith("ZELVAN_C_API") and "(" not in head:
            yield head.split()[-1]
        elif not is_private or "ZELVAN_" in head:
            yield from function_of(head, body, scope)


def function_of(head, body, scope):
    function = re.match(r"([^(]*?)(~?\b\w+|operator\s*\S+?)\s*\((?!\s*\*)", head)
    is_inline = body is not None or re.search(r"=\s*(?:default|delete|0)$", head)
    if not function or re.match(r"typedef|using|static_assert|enum|friend", head):
        return
    if is_inline and "ZELVAN_INLINE_API" not in head:
        return
    end = close_of(head, function.end() - 1)
    is_flat = "ZELVAN_C_API" in head
    arguments = [type_of(part) for part in split_at_commas(head[function.end():end])]
    arguments = [] if arguments == ["void"] else arguments
    is_const = re.match(r"\s*const\b", head[end + 1:])
    yield function[2] if is_flat else \
        f"{scope}{function[2]}({', '.join(arguments)}){' const' if is_const else ''}"


def main(source):
    source = pathlib.Path(source)
    listed = collections.defaultdict(collections.Counter)
    header = "no header"
    for line in (source / "exports.txt").read_text(encoding="utf-8").splitlines():
        section = re.fullmatch(r"# (\w+/\w+\.h)", line)
        header = section[1] if section else header
        if line and not line.startswith("#"):
            listed[header][line] += 1
    declared = {}
    for path in sorted([*source.glob("*.h"), *source.glob("*/*.h")]):
        if path.parent.name != "platform" and path.parent.name != "detail" \
                and path.name not in NO_CODE:
            text = without_comments(path.read_text(encoding="utf-8"))
            declared[path.relative_to(source).as_posix()] = collections.Counter(names_of(text))
    faults = []
    for header in sorted(declared.keys() | listed.keys()):
        here = declared.get(header, collections.Counter())
        faults += [f"{header} declares it, exports.txt does not list it there: {name}"
                   for name in sorted((here - listed[header]).elements())]
        faults += [f"exports.txt lists it, {header} does not declare it: {name}"
                   for name in sorted((listed[header] - here).elements())]
    count = sum(sum(names.values()) for names in declared.values())
    print("\n".join(faults) or f"{count} names declared, as listed")
    return 1 if faults or not count else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
