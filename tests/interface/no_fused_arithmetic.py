"""Finds instructions that fuse a product and a sum into one rounding. There must be none."""

import re
import subprocess
import sys

FUSED = re.compile(r"\t(vfn?m(add|sub)\w*|fn?m(add|sub|la|ls)\w*)\s")


def main(library):
    code = subprocess.run(["objdump", "--disassemble", "--no-show-raw-insn", library], check=True,
                          capture_output=True, text=True).stdout.splitlines()
    fused = [line.strip() for line in code if FUSED.search(line)]
    print("\n".join(fused[:10]) or f"{len(code)} lines of code, none fused")
    return 1 if fused or len(code) < 100 else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
