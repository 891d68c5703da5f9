"""Finds instructions that fuse a product and a sum into one rounding. There must be none."""

import re
import subprocess
import sys

X86 = r"vfn?m(add|sub)\w*"
FUSED = {  # by how the name of an architecture begins: GNU's objdump has its own for x86
    "i386": X86,
    "x86_64": X86,
    "aarch64": r"fn?m(add|sub|ad|sb|l[as]l?2?)|fcmla",
    "arm": r"vfn?m[as][\w.]*|vcmla[\w.]*",  # what is named "vmla" rounds the product first
    "riscv": r"fn?m(add|sub)\.\w+|vfw?n?m(acc|sac|add|sub)\.\w+",
    "powerpc": r"fn?m(add|sub)s?\.?|x[sv]n?m(add|sub)\w+|vn?m(add|sub)fp",
}


def main(objdump, library):
    code = subprocess.run([objdump, "--disassemble", "--no-show-raw-insn", "--file-headers",
                           library], check=True, capture_output=True, text=True).stdout
    architecture = re.search(r"^architecture: (\w+)", code, re.M).group(1)
    names = next(FUSED[name] for name in FUSED if architecture.startswith(name))
    lines = code.splitlines()
    fused = [line.strip() for line in lines if re.search(rf"\t({names})(\s|$)", line)]
    print("\n".join(fused[:10]) or f"{len(lines)} lines of code for {architecture}, none fused")
    return 1 if fused or len(lines) < 100 else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
