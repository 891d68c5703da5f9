"""Compares what the built library exports with the list of names, in both directions. Of a DLL
also what it needs: nothing but what every Windows has."""

import re
import subprocess
import sys

OF_THE_SYSTEM = {"kernel32.dll", "msvcrt.dll", "ws2_32.dll"}


def output_of(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def of_dll(library):
    headers = output_of("objdump", "--private-headers", library)
    table = headers[headers.index("[Ordinal/Name Pointer] Table"):]
    names = re.findall(r"^\t\[ *\d+\] (\S+)$", table, re.M)
    needed = {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers)}
    return (set(output_of("c++filt", input="\n".join(names)).splitlines()),
            [f"needed beside the library: {name}" for name in sorted(needed - OF_THE_SYSTEM)])


def of_shared_object(library):
    table = output_of("nm", "--dynamic", "--defined-only", "--demangle", "--format=posix", library)
    # Each line is "NAME TYPE VALUE SIZE", where a demangled name may contain blanks.
    return {line.rsplit(" ", 3)[0] for line in table.splitlines()}, []


# How standard libraries name their strings: in which namespace, and with which traits.
STRING = re.compile(r"std::(?:\w+::)?basic_string<([a-z ]+), "
                    r"(?:std::(?:\w+::)?char_traits<\1>|zelvan::wide_traits), "
                    r"std::(?:\w+::)?allocator<\1> ?>")


def in_every_library(name):
    return STRING.sub(r"string of \1", name.replace("std::string", "string of char"))


def main(library, names_file):
    lines = open(names_file, encoding="utf-8").read().splitlines()
    listed = [in_every_library(line) for line in lines if line and not line.startswith("#")]
    names, faults = of_dll(library) if library.endswith(".dll") else of_shared_object(library)
    exported = {in_every_library(name) for name in names}

    faults += [f"exported, but not listed: {name}" for name in sorted(exported - set(listed))]
    faults += [f"listed, but not exported: {name}" for name in sorted(set(listed) - exported)]
    faults += [f"listed twice: {name}" for name in sorted(set(listed))
               if listed.count(name) > 1]
    print("\n".join(faults) or f"{len(exported)} names exported, as listed")
    return 1 if faults or not exported else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
