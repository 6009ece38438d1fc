"""What the zips hold, name by name, and that nothing of the moment is in them.

usage: listing_test.py VERSION FOLDER     with KVUTILS_UPDATE_FILES=1 the list is written anew, for review
"""
import os
import struct
import sys
import time
import unittest
import zipfile
import zlib
from pathlib import Path

VERSION, FOLDER = sys.argv.pop(1), Path(sys.argv.pop(1))
LIST = Path(__file__).with_name("files.txt")
ZIPS = [f"kvutils-{VERSION}-win64.zip", f"kvutils-{VERSION}-win64-symbols.zip"]


def entries(name: str) -> list:
    with zipfile.ZipFile(FOLDER / name) as archive:
        return archive.infolist()


def listing() -> str:
    lines = []
    for name in ZIPS:
        lines += [name, *("  " + entry.filename for entry in entries(name))]
    return "\n".join(lines).replace(VERSION, "VERSION") + "\n"


class Zips(unittest.TestCase):
    maxDiff = None

    def test_hold_the_reviewed_files(self):
        if os.environ.get("KVUTILS_UPDATE_FILES") == "1":
            LIST.write_text(listing())
        self.assertEqual(LIST.read_text(), listing())

    def test_are_alone_in_their_folder(self):
        self.assertEqual(sorted(ZIPS), sorted(file.name for file in FOLDER.iterdir() if file.is_file()))

    def test_are_sorted_and_carry_one_date_and_no_owner(self):
        date = time.gmtime(int((FOLDER / "parts/date").read_text()))[:6]
        date = (*date[:5], date[5] // 2 * 2)  # a zip counts two seconds
        for name in ZIPS:
            names = [entry.filename for entry in entries(name)]
            self.assertEqual(names, sorted(names))
            for entry in entries(name):
                with self.subTest(zip=name, entry=entry.filename):
                    self.assertEqual(entry.date_time, date)
                    self.assertEqual(entry.extra, b"")
                    self.assertEqual(entry.external_attr, 0o100644 << 16)

    def test_belong_together(self):
        name = f"kvutils-{VERSION}-win64/bin/kvutils.dll"
        with zipfile.ZipFile(FOLDER / ZIPS[0]) as release, zipfile.ZipFile(FOLDER / ZIPS[1]) as symbols:
            dll, debug = release.read(name), symbols.read(name + ".debug")
        link = dll[dll.rindex(b"kvutils.dll.debug\0"):]
        self.assertEqual(struct.unpack("<I", link[20:24])[0], zlib.crc32(debug))

    def test_hold_no_path_of_the_machine_that_made_them(self):
        source = str(Path(__file__).resolve().parents[2]).encode()
        for name in ZIPS:
            with zipfile.ZipFile(FOLDER / name) as archive:
                for entry in archive.infolist():
                    with self.subTest(zip=name, entry=entry.filename):
                        self.assertNotIn(source, archive.read(entry))


unittest.main()
