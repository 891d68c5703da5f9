#!/usr/bin/env python3
"""Writes gperf's input for the library's colour names: colour_names.py NAMED_COLOR_TABLE."""
import re
import sys

print("%{\n#include <cstring>\n%}\nstruct GperfColor { const char* name; int rgb; };\n%%")
for row in re.finditer(r'\{0x(\w\w), 0x(\w\w), 0x(\w\w), "([^"]+)"\}', open(sys.argv[1]).read()):
    print(f"{row[4]}, 0x{row[1]}{row[2]}{row[3]}")
