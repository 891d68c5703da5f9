"""Extracts or tests the worked example of a guide page. That is the only code block of a language that
is a whole program; the text block after it is its output. PAGE is a file; for a language other than C++,
append its name: page.md#c, page.md#python.

    guide_example.py extract PAGE FILE     writes the example to FILE
    guide_example.py run PAGE PROGRAM...   runs PROGRAM in an empty folder, compares its output
"""

import re
import subprocess
import sys
import tempfile

WHOLE_PROGRAM = {"cpp": "int main(", "c": "int main(", "python": "import "}


def example_of(page):
    path, _, language = page.partition("#")
    language = language or "cpp"
    text = open(path, encoding="utf-8").read()
    found = [match for match in
             re.finditer(rf"^```{language}\n(.*?)^```\n(.*?)^```text\n(.*?)^```$", text,
                         re.S | re.M)
             if WHOLE_PROGRAM[language] in match[1] and "```" not in match[2]]
    if len(found) != 1:
        sys.exit(f"{page}: {len(found)} whole programs with their output; there must be exactly 1")
    return found[0][1], found[0][3]


def extract(page, file):
    with open(file, "w", encoding="utf-8") as out:
        out.write(example_of(page)[0])


def run(page, *program):
    expected = example_of(page)[1]
    with tempfile.TemporaryDirectory() as folder:
        ended = subprocess.run(program, cwd=folder, stdin=subprocess.DEVNULL,
                               capture_output=True, text=True, timeout=50, check=False)
    if ended.returncode != 0 or ended.stdout != expected:
        sys.exit(f"{page}: status {ended.returncode}\n--- it printed\n{ended.stdout}{ended.stderr}"
                 f"--- the page says\n{expected}")


if __name__ == "__main__":
    {"extract": extract, "run": run}[sys.argv[1]](*sys.argv[2:])
