#!/usr/bin/env python3
"""Reads which lines and branches the tests ran, and compares the rest with docs/coverage.md.

usage: report.py COMMAND --counts FILE --sources FOLDER ...  report.py COMMAND --help tells the rest

The file holds the JSON of gcov, a document a line, each of one object file. The page holds a table
with a row for each line of source that is not run, or of which a branch is not: the file, the line
as it is written there, what is not run, the reason.

The instances of a template, and those of a function that stands in a header, count as one: each
branch is to be run in one of them. The way by which an exception leaves a call is no branch. A line
that holds no word is not looked at: what it has are the compiler's calls of destructors.
"""
import argparse
import json
import re
import sys
from collections import Counter
from pathlib import Path
from typing import NamedTuple

LIBRARY = "utils"  # the folder of its sources
LEAST_BRANCHES = 95  # percent
NEVER = "the line"  # what is not run of a line without a count
CHANCE = "up to "  # before what some runs of the tests do not run


class Row(NamedTuple):
    """A line of source that is not run to the full, known by its text and not by its number."""

    file: str
    text: str
    missing: str


class Tally(NamedTuple):
    """How many of so many were run."""

    run: int
    all: int

    def __add__(self, other: "Tally") -> "Tally":
        return Tally(self.run + other.run, self.all + other.all)


class File(NamedTuple):
    lines: Tally
    branches: Tally
    missing: list[Row]


class Line:
    """What gcov counts of a line in all objects and functions that have it."""

    def __init__(self) -> None:
        self.count = 0
        self.instances: dict[int, list[int]] = {}  # by the number of branches, the counts of each

    def add(self, counted: dict) -> None:
        self.count += counted["count"]
        counts = own_branches(counted["branches"])
        sums = self.instances.setdefault(len(counts), [0] * len(counts))
        self.instances[len(counts)] = [sum(pair) for pair in zip(sums, counts)]

    @property
    def branches(self) -> list[int]:
        return [count for counts in self.instances.values() for count in counts]


def own_branches(branches: list[dict]) -> list[int]:
    """The counts without those of the pair by which a call is left: in order, by an exception."""
    counts = []
    position = 0
    while position < len(branches):
        pair = branches[position : position + 2]
        if sum(branch["throw"] for branch in pair) == 1:
            position += 2
        else:
            counts.append(pair[0]["count"])
            position += 1
    return counts


def read_counts(path: Path, sources: Path) -> dict[str, File]:
    """What was run of each file of the library."""
    lines: dict[str, dict[int, Line]] = {}
    for document in path.read_text(encoding="utf-8").splitlines():
        for file in json.loads(document)["files"]:
            name = Path(file["file"])
            if not name.is_relative_to(sources / LIBRARY):
                continue
            of_file = lines.setdefault(str(name.relative_to(sources)), {})
            for line in file["lines"]:
                of_file.setdefault(line["line_number"], Line()).add(line)
    return {name: read_file(name, lines[name], sources) for name in sorted(lines)}


def read_file(name: str, lines: dict[int, Line], sources: Path) -> File:
    texts = (sources / name).read_text(encoding="utf-8").splitlines()
    counted = [
        (texts[number - 1].strip(), line)
        for number, line in sorted(lines.items())
        if re.search(r"\w", texts[number - 1])
    ]
    missing = [Row(name, text, what) for text, line in counted if (what := missing_of(line))]
    return File(
        tally([line.count for _, line in counted]),
        tally([count for _, line in counted for count in line.branches]),
        missing,
    )


def tally(counts: list[int]) -> Tally:
    return Tally(sum(count > 0 for count in counts), len(counts))


def missing_of(line: Line) -> str:
    """What of the line was not run, as the table says it; nothing for a line that was run whole."""
    if line.count == 0:
        return NEVER
    run, every = tally(line.branches)
    return f"{every - run} of {every} branches" if run < every else ""


# The page.


def read_page(path: Path) -> Counter[Row]:
    """The rows of all tables of the page that begin with a file and a line of it."""
    rows: Counter[Row] = Counter()
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if not line.startswith("| `"):
            continue
        cells = [cell.strip().replace(r"\|", "|") for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
        if len(cells) != 4 or not all(cells):
            place = f"{path.name}:{number}"
            sys.exit(f"report.py: {place}: a row is a file, a line, what, and a reason")
        rows[Row(cells[0].strip("`"), cells[1].strip("`"), cells[2])] += 1
    return rows


def without_chances(listed: Counter[Row], found: Counter[Row]) -> Counter[Row]:
    """The rows to be found: "up to 2 of 6 branches" stands for what was found, if it is no more."""
    result: Counter[Row] = Counter()
    for row in listed.elements():
        if row.missing.startswith(CHANCE):
            least = found_branches(row, found)
            row = row._replace(missing=row.missing.removeprefix(CHANCE))
            if least == 0:
                continue
            if least < int(row.missing.split()[0]):
                row = row._replace(missing=" ".join([str(least), *row.missing.split()[1:]]))
        result[row] += 1
    return result


def found_branches(row: Row, found: Counter[Row]) -> int:
    """How many branches of that line were not run."""
    same = [other.missing for other in found if other[:2] == row[:2] and other.missing != NEVER]
    return max((int(missing.split()[0]) for missing in same), default=0)


def row_text(row: Row) -> str:
    """The row as the page has it, without a reason."""
    text = row.text.replace("|", r"\|")
    return f"| `{row.file}` | `{text}` | {row.missing} |"


# Tables.


def percent_text(counts: Tally) -> str:
    """Cut to a tenth: what is not all is less than 100."""
    return f"{1000 * counts.run // counts.all / 10:.1f} %" if counts.all else "-"


def tally_cells(counts: Tally) -> list[str]:
    return [f"{counts.run} of {counts.all}", percent_text(counts)]


def table_text(files: dict[str, File]) -> str:
    table = [["file", "lines", "", "branches", ""]]
    for name, file in files.items():
        table.append([name, *tally_cells(file.lines), *tally_cells(file.branches)])
    lines, branches = totals(files)
    table.append(["all", *tally_cells(lines), *tally_cells(branches)])
    widths = [max(map(len, column)) for column in zip(*table)]
    result = ""
    for first, *others in table:
        cells = [first.ljust(widths[0]), *map(str.rjust, others, widths[1:])]
        result += "  ".join(cells).rstrip() + "\n"
    return result


def totals(files: dict[str, File]) -> tuple[Tally, Tally]:
    none = Tally(0, 0)
    lines = sum((file.lines for file in files.values()), none)
    return lines, sum((file.branches for file in files.values()), none)


# The commands.


def table(arguments: argparse.Namespace) -> int:
    """Prints how much of each file was run."""
    print(table_text(read_counts(arguments.counts, arguments.sources)), end="")
    return 0


def check(arguments: argparse.Namespace) -> int:
    """Does so and compares what was not run with the page; the status is 1 where they differ."""
    files = read_counts(arguments.counts, arguments.sources)
    print(table_text(files))
    found = Counter(row for file in files.values() for row in file.missing)
    listed = without_chances(read_page(arguments.page), found)
    page = arguments.page.name
    faults = [f"not run, and not in {page}: {row_text(row)}" for row in (found - listed).elements()]
    faults += [f"in {page}, and run: {row_text(row)}" for row in (listed - found).elements()]
    lines, branches = totals(files)
    if 100 * branches.run < LEAST_BRANCHES * branches.all:
        faults.append(f"less than {LEAST_BRANCHES} % of the branches are run")
    if faults:
        print("\n".join(faults) + "\n")
    unrun = sum(row.missing == NEVER for row in found.elements())
    print(f"lines:    {percent_text(lines)}, of {lines.all} all but {unrun}")
    unrun = branches.all - branches.run
    print(f"branches: {percent_text(branches)}, of {branches.all} all but {unrun}")
    return 1 if faults else 0


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    commands = parser.add_subparsers(required=True, metavar="COMMAND")
    for command in (table, check):
        sub = commands.add_parser(command.__name__, help=command.__doc__)
        sub.set_defaults(command=command)
        sub.add_argument("--counts", type=Path, required=True, help="gcov's JSON")
        sub.add_argument("--sources", type=Path, required=True, help="the source tree")
        if command is check:
            sub.add_argument("--page", type=Path, required=True, help="lists what is not run")
    arguments = parser.parse_args()
    return arguments.command(arguments)


if __name__ == "__main__":
    sys.exit(main())
