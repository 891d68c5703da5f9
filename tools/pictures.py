"""Checks the pictures that ./dev demo draws: each is there, whole, and as large as it should be.

    pictures.py OUT

OUT is its folder. Pages of the gallery are as large as the pictures of the guide with their names.
"""
import pathlib
import struct
import sys
import xml.etree.ElementTree
import zlib

MAPS = ("world", "named", "closeup", "pens", "dashed", "foreign")
MAP_SIZE = (1600, 800)


def size_of_png(path):
    """Returns width and height. Fails if the file is no PNG, is damaged, or shows next to nothing."""
    data = path.read_bytes()
    at, kind, packed = 8, b"", b""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        sys.exit(f"{path}: no PNG")
    while kind != b"IEND":
        if at + 12 > len(data):
            sys.exit(f"{path}: cut short")
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if data[at + 8 + length:at + 12 + length] != struct.pack(">I", zlib.crc32(kind + body)):
            sys.exit(f"{path}: damaged")
        if kind == b"IHDR":
            size = struct.unpack(">2I", body[:8])
        packed += body if kind == b"IDAT" else b""
        at += length + 12
    if len(packed) < 10000:  # a map without a country has less than 6000 bytes
        sys.exit(f"{path}: nothing is drawn")
    return size


def main(out):
    expected = {f"{name}.png": MAP_SIZE for name in MAPS}
    guide = pathlib.Path("docs/images")
    pages = sorted((out / "gallery").glob("*.png"))
    if len(pages) < 10:
        sys.exit(f"{out}/gallery: {len(pages)} pictures, at least 10 are meant")
    expected.update({f"gallery/{page.name}": size_of_png(guide / page.name) for page in pages})
    for name, size in expected.items():
        if size_of_png(out / name) != size:
            sys.exit(f"{out / name}: {size_of_png(out / name)} pixels, {size} are meant")
    svg = xml.etree.ElementTree.parse(out / "world.svg").getroot()
    if not svg.tag.endswith("svg"):
        sys.exit(f"{out}/world.svg: no SVG")
    if sum(element.tag.endswith("path") for element in svg.iter()) < 177:  # countries
        sys.exit(f"{out}/world.svg: countries are missing")
    print(f"demo: {len(expected)} pictures of the right size, and world.svg")


if __name__ == "__main__":
    try:
        main(pathlib.Path(sys.argv[1]))
    except (OSError, xml.etree.ElementTree.ParseError) as error:
        sys.exit(f"the demo's pictures: {error}")
