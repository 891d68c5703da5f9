"""The header for C beside the rest of the interface.

    c_header.py names HEADER NAMES       it declares all bare names of the list, and no others
    c_header.py facts HEADER FILE        writes a call of a macro for each type, field and constant
    c_header.py same C CPP [EMULATOR]    what layouts.c is in C prints what it prints in C++

The last two need no number: sizes may differ from system to system, but not between languages. That
the arguments and results of functions agree is seen by every C++ compiler that reads the header.
"""

import re
import subprocess
import sys


def parts_of(header):
    text = re.sub(r"//.*", "", open(header, encoding="utf-8").read())
    return re.search(r"#else\n(.*?)#endif\n(.*)#ifdef", text, re.S).groups()


def names(header, names_file):
    declared = set(re.findall(r"(\w+)(?:\(.*?\))?;", parts_of(header)[1], re.S))
    listed = {line for line in open(names_file, encoding="utf-8").read().splitlines()
              if re.fullmatch(r"\w+", line)}
    faults = ([f"not for C, or not in the list: {name}" for name in sorted(declared - listed)]
              + [f"in the list, but not for C: {name}" for name in sorted(listed - declared)])
    print("\n".join(faults) or f"{len(declared)} names, as listed")
    sys.exit(1 if faults or not declared else 0)


def facts(header, file):
    types = parts_of(header)[0]
    lines = [f"SAME_TYPE({name}, {result} (*)({arguments}))" for result, name, arguments in
             re.findall(r"typedef ([\w ]+) \(\*(\w+)\)\((.*)\);", types)]
    for kind, name, body in re.findall(r"(struct|enum)\s*(\w*) {(.*?)\n?}", types, re.S):
        lines += [f"SIZE({name})"] if name else []
        if kind == "enum":
            lines += [f"CONSTANT({constant})" for constant in re.findall(r"(\w+) =", body)]
        else:
            lines += [f"FIELD({name}, {field}, {type_before}{type_behind})" for
                      type_before, field, type_behind in
                      re.findall(r"(\w[\w *]*[ *])(\w+)(\[\d+\])?;", body)]
    with open(file, "w", encoding="utf-8") as out:
        out.write("\n".join(lines) + "\n")


def same(c_program, cpp_program, *emulator):
    in_c, in_cpp = (subprocess.run([*emulator, program], check=True, capture_output=True,
                                   text=True).stdout.splitlines()
                    for program in (c_program, cpp_program))
    faults = [f"in C {c}, in C++ {cpp}" for c, cpp in zip(in_c, in_cpp) if c != cpp]
    print("\n".join(faults) or f"{len(in_c)} facts, the same in C and C++")
    sys.exit(1 if faults or not in_c or len(in_c) != len(in_cpp) else 0)


if __name__ == "__main__":
    {"names": names, "facts": facts, "same": same}[sys.argv[1]](*sys.argv[2:])
