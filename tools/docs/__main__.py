"""Builds the site of guide and reference: python3 tools/docs FOLDER, in the project's folder.

Doxygen reads the public headers; Breathe and Sphinx make pages from its output. This program writes
the input of Sphinx below build/docs/pages: the pages of the guide, and for each header and each
family a page that lists its entries in the order of the header.
"""

import pathlib
import re
import shutil
import subprocess
import sys

import check
import headers
import pages

WORK = pathlib.Path("build/docs")
SITE = pathlib.Path("docs/site")
PAGES = WORK / "pages"
GUIDE = [pathlib.Path("README.md"), *sorted(pathlib.Path("docs").glob("*.md")),
         pathlib.Path("CONTRIBUTING.md"), pathlib.Path("SECURITY.md"),
         pathlib.Path("CHANGELOG.md"),
         pathlib.Path("examples/mapview/data/README.md"), pathlib.Path("LICENSE")]


def read(path):
    return path.read_text(encoding="utf-8")


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def run(*command):
    if subprocess.run(command, check=False).returncode:
        sys.exit(f"{command[0]} failed or warned: see above. Its input is in {WORK}.")


def for_site(text, path):
    """Returns a page of the guide with links to headers replaced by links to their pages."""
    up = "../" * (len(path.parts) - 1)
    text = re.sub(r"\]\((?:\.\./)*src/zelvan/([\w/.]+\.h)\)", rf"]({up}reference/\1.rst)", text)
    return text.replace("](LICENSE)", "](LICENSE.md)")


def navigation(readme, families):
    """Returns the table of contents. Pages of no family are in the order of links on the front page."""
    of_families = [path for family in families for path in family.guides]
    others = [path for path in GUIDE[1:] if path not in of_families]
    others.sort(key=lambda path: readme.find(f"]({path})") % len(readme))  # not found: last
    groups = {"Families": [f"families/{family.name}" for family in families],
              "The whole library": ["reference/zelvan_c.h", "reference/zelvan.h",
                                    "reference/export.h", "names"],
              "More": [path.with_suffix("") for path in others]}
    return "".join(f"\n```{{toctree}}\n:hidden:\n:caption: {caption}\n\n"
                   + "".join(f"/{name}\n" for name in names) + "```\n"
                   for caption, names in groups.items())


def complete_furo(static):
    """Adds what Debian's Furo lacks: joins its scripts into one, copies the style sheet that it
    imports from the root of the host, and uses dark colours if the browser prefers them."""
    script, part = static / "scripts/furo.js", static / "scripts/gumshoe-patched.js"
    if read(script).startswith("import "):
        write(script, read(part) + read(script).partition("\n")[2])
    styles = static / "styles/furo.css"
    write(styles, re.sub(r"@import url\((/javascript/[^)]*)\);",
                         lambda sheet: read(pathlib.Path(f"/usr/share{sheet[1]}")), read(styles)))
    for path in (styles, static / "site.css"):
        for rule in re.findall(r'^ *body\[data-theme="dark"\] \{[^}]*\}', read(path), re.M):
            rule = rule.replace('[data-theme="dark"]', ':not([data-theme="light"])')
            write(path, f"{read(path)}\n@media (prefers-color-scheme: dark) {{\n{rule}\n}}\n")


def main(output):
    shutil.rmtree(WORK, ignore_errors=True)
    for path in headers.public_headers():
        write(PAGES / "source" / f"{path}.rst", pages.source_page(path))
        if path != headers.C_HEADER:
            write(WORK / "headers" / path, headers.for_doxygen(read(headers.SOURCE / path)))
    run("doxygen", SITE / "Doxyfile")
    found = headers.read(WORK / "xml")
    faults = check.all_of(found)
    if faults:
        sys.exit("\n".join(faults))

    readme = read(pathlib.Path("README.md"))
    families = pages.families(readme)
    for path in GUIDE:
        text = for_site(read(path), path)
        if path.stem == "LICENSE":
            text = f"# Licence\n\n{text}"
        if path == GUIDE[0]:
            text += navigation(readme, families)
        write(PAGES / path.with_suffix(".md"), text)
    shutil.copytree("docs/images", PAGES / "docs/images")

    for header in found:
        write(PAGES / "reference" / f"{header.path}.rst", pages.header_page(header))
    for family in families:
        write(PAGES / "families" / f"{family.name}.rst", pages.family_page(found, family))
    write(PAGES / "names.rst", pages.names_page(found))
    write(PAGES / "reference" / f"{headers.C_HEADER}.rst",
          pages.c_page(found, read(headers.SOURCE / headers.C_HEADER)))

    shutil.rmtree(output, ignore_errors=True)
    run("sphinx-build", "-q", "-W", "--keep-going", "-j", "auto", "-c", SITE, "-d",
        WORK / "doctrees", PAGES, output)
    complete_furo(output / "_static")
    shutil.copy(output / "README.html", output / "index.html")
    print(f"{len(list(output.rglob('*.html')))} pages: {output / 'index.html'}")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
