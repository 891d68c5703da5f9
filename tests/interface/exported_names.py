"""Compares what the built library exports with the list of names, in both directions."""

import subprocess
import sys


def main(library, names_file):
    lines = open(names_file, encoding="utf-8").read().splitlines()
    listed = [line for line in lines if line and not line.startswith("#")]
    table = subprocess.run(
        ["nm", "--dynamic", "--defined-only", "--demangle", "--format=posix", library],
        check=True, capture_output=True, text=True).stdout
    # "NAME TYPE VALUE SIZE", where a readable name may hold blanks.
    exported = {line.rsplit(" ", 3)[0] for line in table.splitlines()}

    faults = [f"exported, but not listed: {name}" for name in sorted(exported - set(listed))]
    faults += [f"listed, but not exported: {name}" for name in sorted(set(listed) - exported)]
    faults += [f"listed twice: {name}" for name in sorted(set(listed))
               if listed.count(name) > 1]
    print("\n".join(faults) or f"{len(exported)} names exported, as listed")
    return 1 if faults or not exported else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
