"""The built library gives an attacker little: hardened.py LIBRARY.

Its tables of addresses are filled in when it is loaded and can't be written afterwards (relro and
now), its stack can't be run, no section is writable and executable, and nothing in its text was
left for the loader to write.
"""
import re
import subprocess
import sys


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def main(library):
    if library.endswith(".dll"):
        headers = output_of("objdump", "--private-headers", library).split()
        missing = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"} - set(headers)
        sys.exit(f"{library}: not marked as {missing}" if missing else None)
    text = output_of("readelf", "--wide", "--segments", "--dynamic", library)
    # Each segment has a type, five numbers and flags, such as "R E".
    segments = re.findall(r"^  (\w+) +(?:0x\w+ ){5}([RWE ]{3})", text, re.M)
    loaded = [flags for kind, flags in segments if kind == "LOAD"]
    faults = []
    if "GNU_RELRO" not in dict(segments):
        faults.append("its relocated tables stay writable: link with -z relro")
    if not re.search(r"\bNOW\b", text):
        faults.append("its addresses are looked up late, in a writable table: link with -z now")
    if ("GNU_STACK", "RW ") not in segments:
        faults.append("its stack can be run: link with -z noexecstack")
    if not loaded or any("WE" in flags for flags in loaded):
        faults.append("a segment can be both written and run")
    if "TEXTREL" in text:
        faults.append("its text has to be written when it is loaded")
    sys.exit("\n".join(f"{library}: {fault}" for fault in faults) or None)


if __name__ == "__main__":
    main(sys.argv[1])
