"""The built library gives an attacker little: hardened.py LIBRARY.

Its tables of addresses are filled in when it is loaded and can't be written afterwards (relro and
now), its stack can't be run, no section is writable and executable, and nothing in its text was
left for the loader to write.
"""
import subprocess
import sys


def read(option, library):
    run = subprocess.run(["readelf", "-W", option, library], capture_output=True, text=True,
                         check=True)
    return [line.split() for line in run.stdout.splitlines() if line.strip()]


def main():
    library = sys.argv[1]
    if library.endswith(".dll"):
        headers = subprocess.run(["objdump", "--private-headers", library], capture_output=True,
                                 text=True, check=True).stdout.split()
        missing = {"HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"} - set(headers)
        sys.exit(f"{library}: not marked as {missing}" if missing else None)
    segments = {}
    for row in read("--segments", library):
        if len(row) >= 8 and row[1].startswith("0x"):
            segments.setdefault(row[0], []).append("".join(row[6:-1]))
    dynamic = " ".join(" ".join(row) for row in read("--dynamic", library))
    faults = []
    if "GNU_RELRO" not in segments:
        faults.append("its relocated tables stay writable: link with -z relro")
    if "NOW" not in dynamic:
        faults.append("its addresses are looked up late, in a writable table: link with -z now")
    if segments.get("GNU_STACK") != ["RW"]:
        faults.append("its stack can be run: link with -z noexecstack")
    if not segments.get("LOAD") or any("W" in f and "E" in f for f in segments["LOAD"]):
        faults.append("a segment can be both written and run")
    if "TEXTREL" in dynamic:
        faults.append("its text has to be written when it is loaded")
    sys.exit("\n".join(f"{library}: {fault}" for fault in faults) or None)


if __name__ == "__main__":
    main()
