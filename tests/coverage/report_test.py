#!/usr/bin/env python3
"""What report.py makes of given counts."""
import contextlib
import io
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
import report  # noqa: E402 (after the path)


def line(number: int, count: int, *branches: int, function: str = "f") -> dict:
    return {
        "line_number": number,
        "count": count,
        "function_name": function,
        "branches": [{"count": taken, "throw": False} for taken in branches],
    }


def with_call(counted: dict, position: int, thrown: int) -> dict:
    """The line with a call at that place among its branches."""
    returned = {"count": counted["count"] - thrown, "throw": False}
    counted["branches"][position:position] = [returned, {"count": thrown, "throw": True}]
    return counted


WHOLE = [line(1, 7, 3, 4), line(2, 5)]
UNRUN_ROW = "| `utils/b.cpp` | `Never();` | the line | the process has ended |\n"
BRANCH_ROW = "| `utils/b.cpp` | `if (a \\|\\| b) return;` | 1 of 4 branches | b is never true |\n"
TABLE = """\
file          lines           branches
utils/a.cpp  2 of 2  100.0 %    2 of 2  100.0 %
utils/b.cpp  1 of 2   50.0 %    3 of 4   75.0 %
utils/c.h    1 of 1  100.0 %    0 of 0        -
all          4 of 5   80.0 %    5 of 6   83.3 %
"""


class Report(unittest.TestCase):
    """A folder with the sources, their counts and the page."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "utils").mkdir()
        self.page = self.folder / "coverage.md"
        self.objects = []
        self.add("utils/b.cpp", "  if (a || b) return;\n  Never();\n}\n", [
            line(1, 9, 9, 0, 1, 8),
            line(2, 0),
            line(3, 0, 0, 0),
        ])
        self.add("utils/a.cpp", "if (x) {\n  y();\n}\n", WHOLE)
        self.add("utils/c.h", "z();\n", [line(1, 1)])
        self.write_page(UNRUN_ROW + BRANCH_ROW)

    def add(self, name: str, text: str, lines: list[dict]):
        """One more object file."""
        (self.folder / name).write_text(text)
        files = [{"file": str(self.folder / name), "lines": lines}]
        files.append({"file": "/usr/include/string", "lines": [line(1, 0)]})
        self.objects.append({"files": files})

    def replace(self, name: str, text: str, lines: list[dict]):
        own = str(self.folder / name)
        self.objects = [one for one in self.objects if one["files"][0]["file"] != own]
        self.add(name, text, lines)

    def write_page(self, rows: str):
        self.page.write_text(f"# Text\n\n| file | line |\n|---|---|\n{rows}\nMore | text.\n")

    def command_line(self, command: str) -> list[str]:
        counts = self.folder / "counts.json"
        counts.write_text("".join(json.dumps(one) + "\n" for one in self.objects))
        result = [command, "--counts", str(counts), "--sources", str(self.folder)]
        return result + (["--page", str(self.page)] if command == "check" else [])

    def call(self, command: str) -> tuple[int, str]:
        """The exit status and the output of a command."""
        with mock.patch.object(sys, "argv", ["report.py", *self.command_line(command)]):
            with contextlib.redirect_stdout(io.StringIO()) as out:
                status = report.main()
        return status, out.getvalue()

    def faults(self) -> list[str]:
        """What the check finds wrong, but for the share of branches."""
        status, text = self.call("check")
        faults = text.split("\n\n")[1].split("\n")
        self.assertEqual(status, 1)
        self.assertEqual(faults.pop(), "less than 95 % of the branches are run")
        return faults

    def test_the_table_has_a_row_a_file_and_the_totals(self):
        self.assertEqual(self.call("table"), (0, TABLE))

    def test_what_is_listed_is_no_fault(self):
        self.assertEqual(self.faults(), [])

    def test_with_enough_branches_the_check_passes_and_tells_the_totals(self):
        self.replace("utils/a.cpp", "x\n", [line(1, 1, *[1] * 16)])
        status, text = self.call("check")
        self.assertEqual(status, 0)
        self.assertTrue(text.endswith(
            "\n\nlines:    75.0 %, of 4 all but 1\nbranches: 95.0 %, of 20 all but 1\n"))
        self.replace("utils/a.cpp", "x\n", [line(1, 1, *[1] * 15)])
        self.assertEqual(self.faults(), [])

    def test_what_is_not_listed_is_told_as_a_row_of_the_page(self):
        self.write_page("")
        told = "not run, and not in coverage.md: "
        self.assertEqual(self.faults(), [
            told + "| `utils/b.cpp` | `if (a \\|\\| b) return;` | 1 of 4 branches |",
            told + "| `utils/b.cpp` | `Never();` | the line |",
        ])

    def test_what_is_listed_and_run_is_told(self):
        stale = "| `utils/a.cpp` | `y();` | the line | a reason |\n"
        self.write_page(UNRUN_ROW + BRANCH_ROW + stale)
        self.assertEqual(
            self.faults(), ["in coverage.md, and run: | `utils/a.cpp` | `y();` | the line |"]
        )

    def test_a_line_of_which_less_is_run_than_is_listed_is_told(self):
        self.write_page(UNRUN_ROW + BRANCH_ROW.replace("1 of 4", "2 of 4"))
        self.assertEqual(len(self.faults()), 2)

    def test_what_only_some_runs_leave_out_is_no_fault_in_either_case(self):
        chance = "| `utils/a.cpp` | `if (x) {` | up to 1 of 2 branches | a reason |\n"
        self.write_page(UNRUN_ROW + BRANCH_ROW + chance)
        self.assertEqual(self.faults(), [])
        self.replace("utils/a.cpp", "if (x) {\n", [line(1, 7, 7, 0)])
        self.assertEqual(self.faults(), [])
        self.write_page(UNRUN_ROW + BRANCH_ROW.replace("1 of 4", "up to 3 of 4") + chance)
        self.assertEqual(self.faults(), [])
        self.replace("utils/a.cpp", "if (x) {\n", [line(1, 7, 0, 0)])
        self.assertEqual(len(self.faults()), 2)

    def test_lines_with_the_same_text_have_a_row_each(self):
        self.replace("utils/b.cpp", "if (a || b) return;\nNever();\n  Never();\n", [
            line(1, 9, 9, 0, 1, 8),
            line(2, 0),
            line(3, 0),
        ])
        told = "not run, and not in coverage.md: | `utils/b.cpp` | `Never();` | the line |"
        self.assertEqual(self.faults(), [told])
        self.write_page(UNRUN_ROW * 2 + BRANCH_ROW)
        self.assertEqual(self.faults(), [])

    def test_the_instances_of_a_function_count_as_one(self):
        self.add("utils/c.h", "z();\n", [line(1, 4, 4, 0), line(1, 3, 0, 3, function="g")])
        self.add("utils/c.h", "z();\n", [line(1, 0, 0, 0)])
        self.assertEqual(self.call("table")[1].splitlines()[3].split(),
                         ["utils/c.h", "1", "of", "1", "100.0", "%", "2", "of", "2", "100.0", "%"])

    def test_instances_with_other_branches_count_beside_each_other(self):
        self.add("utils/c.h", "z();\n", [line(1, 4, 4, 0), line(1, 3, 0, 1, 2, function="g")])
        self.assertEqual(self.faults(), [
            "not run, and not in coverage.md: | `utils/c.h` | `z();` | 2 of 5 branches |"])

    def test_the_two_ways_out_of_a_call_are_no_branches(self):
        for position in (0, 1, 2):
            with self.subTest(position):
                counted = with_call(line(1, 9, 9, 0), position, 2)
                self.assertEqual(report.own_branches(counted["branches"]), [9, 0])

    def test_a_row_without_a_reason_is_refused(self):
        short = "| `utils/b.cpp` | `Never();` |\n"
        for row in (UNRUN_ROW.replace("the process has ended", ""), short):
            with self.subTest(row), self.assertRaises(SystemExit) as refusal:
                self.write_page(row)
                self.call("check")
            self.assertEqual(
                refusal.exception.code,
                "report.py: coverage.md:5: a row is a file, a line, what, and a reason",
            )

    def test_a_share_below_all_is_not_rounded_up(self):
        self.assertEqual(report.percent_text(report.Tally(9999, 10000)), "99.9 %")

    def test_the_exit_status_is_that_of_the_check(self):
        line = [sys.executable, "-B", HERE / "report.py", *self.command_line("check")]
        self.assertEqual(subprocess.run(line, capture_output=True).returncode, 1)


if __name__ == "__main__":
    unittest.main()
