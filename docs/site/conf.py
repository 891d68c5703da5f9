"""How Sphinx makes the site; tools/docs starts it."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools/docs"))

project = "zelvan"
version = release = re.search(r"^project\(zelvan VERSION ([\d.]+)",
                              (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"), re.M)[1]
extensions = ["breathe", "myst_parser", "sphinx_copybutton", "names"]
root_doc = "README"
highlight_language = "none"
myst_heading_anchors = 3
smartquotes = False

breathe_projects = {"zelvan": str(ROOT / "build/docs/xml")}
breathe_default_project = "zelvan"
breathe_show_include = False
breathe_show_enumvalue_initializer = True

html_theme = "furo"
html_title = f"zelvan {version}"
html_favicon = str(ROOT / "docs/site/icon.svg")
html_static_path = [str(ROOT / "docs/site/static")]
html_css_files = ["site.css"]
html_js_files = ["site.js"]
html_copy_source = False
html_show_sphinx = html_show_copyright = False
html_use_index = False
pygments_style = "xcode"
pygments_dark_style = "native"
