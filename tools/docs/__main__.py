"""Makes the site of guide and reference: python3 tools/docs FOLDER, from the project's folder.

Doxygen reads the headers and the pages written in Markdown, made ready for it below build/docs, and
refuses what isn't documented and references that lead nowhere. Of its XML the pages are made here:
those of its own are laid out in tables that no stylesheet makes fit a phone, and with them there
would be no page that says what a header says in the header's order.
"""

import pathlib
import re
import shutil
import subprocess
import sys

import check
import guide
import headers
import pages
from header_page import add_header_page
from reference import Reference
from site_frame import Site

WORK = pathlib.Path("build/docs")
STATIC = pathlib.Path("docs/site")


def read(path):
    return path.read_text(encoding="utf-8")


def write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def stop_at(faults):
    if faults:
        sys.exit("\n".join(faults))


def public_headers():
    folder = pathlib.Path("src/zelvan")
    return [path for path in sorted([*folder.glob("*.h"), *folder.glob("*/*.h")])
            if path.parent.name not in ("detail", "platform")]


def prepare():
    """Writes what Doxygen reads, and gives the pages written in Markdown."""
    shutil.rmtree(WORK, ignore_errors=True)
    for path in public_headers():
        write(WORK / "input" / path, headers.for_doxygen(read(path), path))
    faults = []
    collected = guide.collect(pathlib.Path("README.md"), pathlib.Path("."), pathlib.Path("docs"))
    for page in collected.values():
        write(WORK / "input" / page.path.with_suffix(".md"),
              guide.for_doxygen(page, collected, public_headers(), faults))
    stop_at(faults)
    return collected


def main(output):
    collected = prepare()
    if subprocess.run(["doxygen", STATIC / "Doxyfile"], check=False).returncode:
        sys.exit(f"Doxygen has warned. It reads {WORK}/input, made of the files that it names.")

    version = re.search(r"^project\(zelvan VERSION ([\d.]+)", read(pathlib.Path("CMakeLists.txt")),
                        re.M)[1]
    site = Site(Reference(WORK / "xml"), collected, read(STATIC / "page.html"), version)
    for page in site.guide.values():
        pages.add_guide_page(site, page)
    for family in site.families:
        pages.add_family_page(site, family)
    for header in site.reference.headers:
        add_header_page(site, header)
    pages.add_names_page(site)

    shutil.rmtree(output, ignore_errors=True)
    for url, text in site.done.items():
        write(output / url, text)
    write(output / "search_index.js", site.search_index())
    for name in ("site.css", "search.js"):
        shutil.copy(STATIC / name, output)
    shutil.copytree("docs/images", output / "images")
    stop_at(check.all_of(site, output))
    print(f"{len(site.done)} pages: {output / 'index.html'}")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
