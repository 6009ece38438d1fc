#!/usr/bin/env python3
"""Tells versions of the time zone rules apart, and tables what a version says.

usage: zone_rules.py changes OLD NEW
           OLD, NEW: tzdata.zi; prints both versions and where the offsets of a zone differ
       zone_rules.py table PINNED RESULT
           writes the offsets by the system's compiled zones, for comparison with those of a library
           made of the rules PINNED, a tzdata.zi
Offsets are local time minus UTC in seconds, from 1900 to 2037; instants are seconds since 1970.
"""
import datetime
import functools
import struct
import subprocess
import sys
import tempfile
import textwrap
import zoneinfo
from pathlib import Path

SYSTEM = Path("/usr/share/zoneinfo")
ZIC = "/usr/sbin/zic"
UTC = datetime.timezone.utc
EPOCH = datetime.datetime(1970, 1, 1, tzinfo=UTC)
FIRST_YEAR, LAST_YEAR = 1900, 2037
# Besides all changes: one instant a year, in January and in July by turns.
REGULAR = [datetime.datetime(year, 1 + 6 * (year % 2), 15, 7, 30, tzinfo=UTC)
           for year in range(FIRST_YEAR, LAST_YEAR + 1)]
# Not zones that a user names.
LEFT_OUT = {"localtime", "posixrules", "posix", "right"}
MOST_SPANS = 4
LINK_STEP = 10  # of the instants of another name of a zone, one in so many is tabled


def seconds(date):
    return (date - EPOCH) // datetime.timedelta(seconds=1)


START = seconds(datetime.datetime(FIRST_YEAR, 1, 1, tzinfo=UTC))
END = seconds(datetime.datetime(LAST_YEAR + 1, 1, 1, tzinfo=UTC))


def version(rules):
    """The version in the first line of a tzdata.zi."""
    with open(rules, encoding="utf-8") as text:
        first = text.readline().split()
    if first[:2] != ["#", "version"]:
        sys.exit(f"{rules} does not begin with its version")
    return first[2]


def transitions(data):
    """The instants of a compiled zone (RFC 8536) at which anything changes, in its 64-bit block."""
    header = struct.Struct(">4s1s15x6l")

    def block_size(counts, width):
        is_ut, is_standard, leaps, times, types, characters = counts
        return times * (width + 1) + types * 6 + characters + leaps * (width + 4) + is_standard + is_ut

    _, _, *counts = header.unpack_from(data)
    second = header.size + block_size(counts, 4)
    _, _, *counts = header.unpack_from(data, second)
    return struct.unpack_from(f">{counts[3]}q", data, second + header.size)


class Zones:
    """The compiled zones below a folder, by name."""

    def __init__(self, folder):
        self.files = {}
        for file in sorted(folder.rglob("*")):
            name = file.relative_to(folder)
            if name.parts[0] not in LEFT_OUT and file.is_file() and file.read_bytes()[:4] == b"TZif":
                self.files[name.as_posix()] = file

    def transitions(self, name):
        return [time for time in transitions(self.files[name].read_bytes()) if START <= time < END]

    def offsets(self, name, instants):
        """The offset at each of the instants, sorted; none where there is no such zone."""
        if name not in self.files:
            return [None] * len(instants)
        return self.offsets_of_file(self.files[name].resolve(), tuple(instants))

    @functools.lru_cache(maxsize=None)  # many names are links to one file
    def offsets_of_file(self, path, instants):
        with open(path, "rb") as file:
            zone = zoneinfo.ZoneInfo.from_file(file)
        dates = (EPOCH + datetime.timedelta(seconds=instant) for instant in instants)
        return [int(date.astimezone(zone).utcoffset().total_seconds()) for date in dates]


def instants(name, *several):
    """The regular instants, and both sides of every change of the zone in any of the versions."""
    changes = {time for zones in several if name in zones.files for time in zones.transitions(name)}
    return sorted({seconds(date) for date in REGULAR} | changes | {time - 1 for time in changes})


def compiled(rules, folder):
    subprocess.run([ZIC, "-b", "fat", "-d", folder, rules], check=True)
    return Zones(Path(folder))


def date_text(instant):
    return f"{EPOCH + datetime.timedelta(seconds=instant):%Y-%m-%d %H:%M:%S}"


def offset_text(offset):
    if offset is None:
        return "unknown"
    hours, rest = divmod(abs(offset), 3600)
    text = f"{'-' if offset < 0 else '+'}{hours:02}:{rest // 60:02}"
    return text if rest % 60 == 0 else f"{text}:{rest % 60:02}"


def differences(name, old, new):
    """The spans in which the offsets differ: (first instant, old offset, new offset)."""
    spans, last = [], (0, 0)
    times = instants(name, old, new)
    for instant, *pair in zip(times, old.offsets(name, times), new.offsets(name, times)):
        if pair[0] != pair[1] and tuple(pair) != last:
            spans.append((instant, *pair))
        last = tuple(pair)
    return spans


def names_that_differ(old, new):
    """Each zone whose offsets differ, with the spans."""
    for name in sorted(old.files.keys() | new.files.keys()):
        spans = differences(name, old, new)
        if spans:
            yield name, spans


def grouped(differing):
    """The names of the zones that differ alike, by their spans."""
    groups = {}
    for name, spans in differing:
        groups.setdefault(tuple(spans), []).append(name)
    return groups


def print_changes(old_rules, new_rules):
    with tempfile.TemporaryDirectory() as old_folder, tempfile.TemporaryDirectory() as new_folder:
        groups = grouped(names_that_differ(compiled(old_rules, old_folder),
                                           compiled(new_rules, new_folder)))
    print(f"Version {version(old_rules)} -> {version(new_rules)}, offsets of {FIRST_YEAR} to {LAST_YEAR}:",
          "none changes" if not groups else f"{sum(map(len, groups.values()))} zones change")
    for spans, names in groups.items():
        print(textwrap.fill(" ".join(names), 100, break_on_hyphens=False))
        for instant, before, after in spans[:MOST_SPANS]:
            print(f"    from {date_text(instant)} UTC: {offset_text(before)} -> {offset_text(after)}")
        if len(spans) > MOST_SPANS:
            print(f"    and {len(spans) - MOST_SPANS} later times")


def write_table(pinned_rules, result):
    """A line for each version and zone, and one for each instant and offset.

    A zone is marked where the versions differ in it: the library may answer otherwise.
    """
    system = Zones(SYSTEM)
    explained = set()
    if Path(pinned_rules).read_bytes() != (SYSTEM / "tzdata.zi").read_bytes():
        with tempfile.TemporaryDirectory() as folder:
            explained = {name for name, _ in names_that_differ(compiled(pinned_rules, folder), system)}
    with open(result, "w", encoding="utf-8") as table:
        print("pinned", version(pinned_rules), file=table)
        print("system", version(SYSTEM / "tzdata.zi"), file=table)
        for name in system.files:
            print("differing-zone" if name in explained else "zone", name, file=table)
            times = instants(name, system)
            if system.files[name].is_symlink():
                times = times[::LINK_STEP]
            for instant, offset in zip(times, system.offsets(name, times)):
                print(instant, offset, file=table)


def main():
    commands = {("changes", 4): print_changes, ("table", 4): write_table}
    command = commands.get((sys.argv[1] if len(sys.argv) > 1 else "", len(sys.argv)))
    if command is None:
        sys.exit(__doc__)
    command(*sys.argv[2:])


if __name__ == "__main__":
    main()
