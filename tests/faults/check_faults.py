#!/usr/bin/env python3
"""usage: check_faults.py SOURCE: each test that the table of faults in docs/reliability.md names is there.

A row names its tests in the last column, as Suite.Case; Suite.* stands for all cases of a suite.
"""
import pathlib
import re
import sys

ROWS = 24


def tests_of(root):
    """All cases of the test programs and of CMake's own tests, suites with ".*" as well."""
    cases = set()
    for source in (root / "tests").rglob("*.cpp"):
        for suite, case in re.findall(r"^TEST(?:_[FP])?\((\w+),\s*(\w+)\)", source.read_text(), re.M):
            cases.add(f"{suite}.{case}")
    for source in (root / "tests").rglob("CMakeLists.txt"):
        cases.update(re.findall(r"add_test\(NAME (\w+\.\w+)", source.read_text()))
        cases.update(re.findall(r"add_test\(NAME (\w+\.)\$", source.read_text()))
    suites = {case.split(".")[0] + ".*" for case in cases}
    return cases | suites


def main():
    root = pathlib.Path(sys.argv[1])
    text = (root / "docs" / "reliability.md").read_text()
    table = re.search(r"^\| fault \| .*?\n\|[-|]+\n((?:\|.*\n)+)", text, re.M)
    if table is None:
        sys.exit("docs/reliability.md has no table of faults")
    rows = table.group(1).splitlines()
    known = tests_of(root)
    faults = []
    for row in rows:
        named = re.findall(r"`([\w]+\.[\w*]+)`", row.rsplit("|", 2)[1])
        if not named:
            faults.append(f"no test: {row}")
        faults += [f"no such test: {name}" for name in named if name not in known]
    if len(rows) != ROWS:
        faults.append(f"{len(rows)} faults instead of {ROWS}")
    if faults:
        sys.exit("\n".join(faults))


main()
