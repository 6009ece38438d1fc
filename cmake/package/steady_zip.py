"""Rewrites zips so that the same files give the same bytes: sorted, of one date, of nobody."""

import argparse
import pathlib
import time
import zipfile

READABLE = 0o100644 << 16


def rewrite(path, date):
    with zipfile.ZipFile(path) as old:
        content = {entry.filename: old.read(entry) for entry in old.infolist() if not entry.is_dir()}
    with zipfile.ZipFile(path, "w") as new:
        for name in sorted(content):
            entry = zipfile.ZipInfo(name, date)
            entry.external_attr = READABLE
            entry.create_system = 3
            new.writestr(entry, content[name], zipfile.ZIP_DEFLATED, 9)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--date", type=pathlib.Path, required=True, help="file with seconds since 1970")
    parser.add_argument("zips", nargs="+")
    arguments = parser.parse_args()
    date = time.gmtime(int(arguments.date.read_text()))[:6]
    for path in arguments.zips:
        rewrite(path, date)


main()
