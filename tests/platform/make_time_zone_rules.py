#!/usr/bin/env python3
"""Prints the rows of time_zone_rules.inc from the system's compiled time zone data, by zdump.

usage: make_time_zone_rules.py VERSION > time_zone_rules.inc     VERSION: that of the data (2026f)
"""
import calendar
import re
import subprocess
import sys
import time

# The library's rules are those of the database that is installed when it is built. These zones, in
# these years, are the same in the releases 2020a, 2024a and 2026f; others get corrected at times.
ZONES = """
Africa/Cairo Africa/Casablanca America/Asuncion America/Los_Angeles America/Mexico_City
America/New_York America/Sao_Paulo America/St_Johns Antarctica/Troll Asia/Almaty Asia/Kathmandu
Asia/Kolkata Asia/Tehran Asia/Tokyo Australia/Lord_Howe Europe/Berlin Europe/Dublin Europe/London
Europe/Moscow Pacific/Apia Pacific/Chatham
""".split()
# First year, end year, greatest number of transitions taken from these years.
PERIODS = [(1880, 1925, 2), (1940, 1950, 3), (1980, 1982, 2), (2007, 2012, 2), (2014, 2020, 4)]
LINE = re.compile(r"\S+ +\w+ (\w+ +\d+ [\d:]+ \d+) UT = .* gmtoff=(-?\d+)")


def transitions(zone, first, end):
    """Pairs of lines: the last second of the old offset, the first of the new one."""
    dump = subprocess.run(["zdump", "-V", "-c", f"{first},{end}", zone], check=True,
                          capture_output=True, text=True, env={"LC_ALL": "C"}).stdout
    points = [LINE.match(line).groups() for line in dump.splitlines()]
    for (_, before), (date, after) in zip(points[::2], points[1::2]):
        if before != after:
            yield calendar.timegm(time.strptime(date, "%b %d %H:%M:%S %Y")), before, after


def main():
    print(f"// Made by make_time_zone_rules.py from version {sys.argv[1]} of the time zone database.")
    for zone in ZONES:
        for first, end, most in PERIODS:
            for instant, before, after in list(transitions(zone, first, end))[:most]:
                print(f'{{"{zone}", {instant}, {before}, {after}}},')


main()
