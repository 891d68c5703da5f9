"""Runs foreign as its users do: the picture is mapview's, and a bad file is told of in one line."""
import os
import subprocess
import sys
import tempfile
import unittest

FOREIGN, OUTLINES, MAPVIEW = sys.argv.pop(1), sys.argv.pop(1), sys.argv.pop(1)


def read(path):
    with open(path, "rb") as file:
        return file.read()


class Foreign(unittest.TestCase):
    def test_the_picture_is_that_of_the_geojson_file(self):
        with tempfile.TemporaryDirectory() as folder:
            here, there = os.path.join(folder, "foreign.png"), os.path.join(folder, "mapview.png")
            run = subprocess.run([FOREIGN, "-o", here], capture_output=True, text=True, timeout=60)
            self.assertEqual(run.stdout, "177 countries from Fiji to S. Sudan, 10305 vertices\n")
            subprocess.run([MAPVIEW, "-o", there], capture_output=True, check=True, timeout=60)
            self.assertEqual(read(here), read(there))

    def test_a_bad_file_is_one_line_with_the_byte_and_no_picture(self):
        whole = read(OUTLINES)  # Fiji's name is at 12, its first ring at 56: 8 vertices, from 60 on
        changed = [(0, b"\xD6\xD7", 0), (8, bytes(4), 8), (13, b"\x41", 13), (56, bytes(4), 56),
                   (56, b"\xFF", len(whole)), (60, b"\x41" + bytes(7), 60),
                   (68, b"\x4A\xFF", 68), (60 + 16 * 8, b"\0\0\0\2", 188)]
        files = [(whole[:at] + new + whole[at + len(new):], place) for at, new, place in changed]
        files += [(whole[:end], end) for end in (0, 7, 11, 30, 59, 60, 187, len(whole) - 1)]
        with tempfile.TemporaryDirectory() as folder:
            data = os.path.join(folder, "bad.outlines")
            for content, place in files + [(whole + b"\x40", len(whole))]:
                with open(data, "wb") as file:
                    file.write(content)
                run = subprocess.run([FOREIGN, "-d", data, "-o", folder + "/map.png"],
                                     capture_output=True, text=True, timeout=60)
                self.assertEqual(run.returncode, 2, place)
                self.assertRegex(run.stderr, r"\Aforeign: %s: at byte %d: .+\n\Z" % (data, place))
                self.assertEqual(os.listdir(folder), ["bad.outlines"])

    def test_a_picture_that_cannot_be_is_refused_before_the_file_is_read(self):
        for output, said in (("", "the name is empty"), ("map.gif", "ends in .png or .svg"),
                             ("/none/map.png", "folder /none: No such file")):
            run = subprocess.run([FOREIGN, "-d", "/none", "-o", output], capture_output=True,
                                 text=True, timeout=60)
            self.assertEqual(run.returncode, 2, output)
            self.assertRegex(run.stderr, r"\Aforeign: .*%s.*\n\Z" % said)

    def test_a_full_disk_is_told_of(self):
        # Fontconfig, with which Cairo finds the gallery's font, frees nothing at the end.
        environment = dict(os.environ)
        environment["ASAN_OPTIONS"] = environment.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        with tempfile.TemporaryDirectory() as folder, open("/dev/full", "w") as full:
            gallery = os.path.join(os.path.dirname(FOREIGN), "../gallery/gallery")
            for program, *arguments in ((FOREIGN, "--help"), (gallery, "--help"),
                                        (gallery, folder, "conics")):
                run = subprocess.run([program, *arguments], stdout=full, stderr=subprocess.PIPE,
                                     env=environment, text=True, timeout=60)
                self.assertEqual((run.returncode, run.stderr), (
                    2, os.path.basename(program) +
                    ": standard output: can't be written: No space left on device\n"))


if __name__ == "__main__":
    unittest.main()
