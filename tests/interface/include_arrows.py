"""Refuses includes that are not allowed here, and vector code outside the files for it."""

import pathlib
import re
import sys

# For each family: the other families that it may include, or single headers of them.
ARROWS = {
    "transforms": set(),
    "pick": {"transforms"},
    "geometry": {"transforms/records.h"},
    "colour": {"text/read_field.h", "text/str_field.h", "var/name_table.h"},
    "linetypes": set(),
    "mem": set(),
    "var": set(),
    "tra": set(),
    "logger": {"platform/directories.h"},
    "text": {"platform/locale.h", "platform/numbers.h"},
    "osh": {"platform"},
    "wipc": {"platform"},
    "platform": set(),
    "detail": {"transforms/records.h"},
}
FOR_ALL = {"export.h", "detail"}
PRIVATE = {"detail", "platform"}  # among the folders beside those of the families
# Only files whose names end so may include intrinsics, and each only its own.
INTRINSICS = {"_avx2.cpp": "immintrin.h", "_neon.cpp": "arm_neon.h"}
# Macros that name a processor or an instruction set. Only the files below may test them.
INSTRUCTION_SET = re.compile(r"__(?:MMX|SSE|AVX|FMA|F16C|BMI|ARM_|VSX|ALTIVEC|riscv_)\w*"
                             r"|__(?:x86_64|amd64|i386|aarch64|arm)(?:__)?\b|_M_(?:X64|IX86|ARM)\w*")
MAY_ASK_FOR_PROCESSOR = {
    "detail/vector_forms.h",
    "detail/vector_forms.cpp",  # asks the processor at load
    "arithmetic_guard.cpp",  # refuses x86 compilers that don't evaluate doubles as doubles
}
HEADERS_OF_C = {"stddef.h", "stdint.h", "stdio.h"}  # for callers in C


def allowed(family, target):
    target_family = target.split("/")[0]
    if target_family != family and "detail" in target.split("/")[1:]:
        return False  # what two families need stands in the common detail/
    return (target in FOR_ALL or target_family in FOR_ALL or target_family == family
            or target in ARROWS[family] or target_family in ARROWS[family])


def faults_of(path, source):
    inside = path.relative_to(source)
    family = inside.parts[0] if len(inside.parts) > 1 else None
    is_public = len(inside.parts) == 2 and family not in PRIVATE and path.suffix == ".h"
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), start=1):
        asked = INSTRUCTION_SET.search(line)
        if asked and inside.as_posix() not in MAY_ASK_FOR_PROCESSOR:
            yield f"{inside}:{number}: asks for {asked[0]}: detail/vector_forms.h picks the form"
        match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)', line)
        if not match:
            continue
        bracket, name = match.groups()
        place = f"{inside}:{number}: includes {name}"
        if bracket == '"':
            yield f"{place}: write it as <zelvan/...>"
        elif name.startswith("zelvan/"):
            target = name.removeprefix("zelvan/")
            if family is not None and not allowed(family, target):
                yield f"{place}: no arrow leads there from {family}"
            if is_public and PRIVATE & set(target.split("/")):
                yield f"{place}: a public header includes a private one"
        elif "intrin" in name or name in INTRINSICS.values():
            if name != INTRINSICS.get(path.name[path.name.rfind("_"):]):
                yield f"{place}: intrinsics stand in files named after their instruction set only"
        elif (name.endswith(".h") or "/" in name) and family != "platform":
            if inside.name != "zelvan_c.h" or name not in HEADERS_OF_C:
                yield f"{place}: the operating system is asked in platform/ only"


def main(source):
    source = pathlib.Path(source)
    files = sorted(p for p in source.rglob("*") if p.suffix in {".h", ".cpp"})
    faults = [fault for path in files for fault in faults_of(path, source)]
    public = {p.relative_to(source).as_posix() for p in files
              if p.suffix == ".h" and len(p.relative_to(source).parts) == 2
              and p.parent.name not in PRIVATE}
    whole = set(re.findall(r"#include <zelvan/([^>]+)>", (source / "zelvan.h").read_text()))
    faults += [f"zelvan.h: does not include {name}" for name in sorted(public - whole)]
    print("\n".join(faults) or f"{len(files)} files, every arrow as drawn")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
