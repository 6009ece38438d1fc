#!/usr/bin/env python3
"""What bench/report.py makes of given figures."""
import contextlib
import importlib.util
import io
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

BENCH = Path(__file__).resolve().parents[2] / "bench"
sys.path.insert(0, str(BENCH))
import report  # noqa: E402 (after the path)

CONTEXT = {
    "date": "2026-02-28T12:00:00-00:00",
    "num_cpus": 2,
    "caches": [
        {"type": "Data", "level": 1, "size": 49152, "num_sharing": 1},
        {"type": "Instruction", "level": 1, "size": 32768, "num_sharing": 1},
        {"type": "Unified", "level": 3, "size": 33554432, "num_sharing": 2},
    ],
    "processor": "A processor",
    "features": "avx2 vpclmulqdq",
    "compiler": "a compiler 12",
    "wine": "wine 8",
    "commit": "1234567",
}


def run(name: str, time: float, unit: str = "ns") -> dict:
    return {"name": name, "real_time": time, "time_unit": unit}


# Three rounds. The clock is half as fast in the second: the medians of the times are 2 us, 30 us,
# 4 us and 1 us, those of the ratios 15, 2 and 0.6.
CHECKSUM = [
    measured
    for library, plain, zlib, reading in [
        (1.5, 22.5, 3e3, 9e-4),
        (9.0, 30.0, 18e3, 5.4e-3),
        (2.0, 31.0, 4e3, 1e-3),
    ]
    for measured in (
        run("sum of 1 KiB/library/real_time", library, "us"),
        run("sum of 1 KiB/plain/real_time", plain, "us"),
        run("sum of 1 KiB/zlib/real_time", zlib),
        run("sum of 1 KiB/limit: reading/iterations:1/real_time", reading, "ms"),
    )
]
NAMES = [
    run("short/library/real_time", 10.6),
    run("short/plain/real_time", 10.0),
    run("long/library/real_time", 10.4),
    run("long/plain/real_time", 10.0),
]


class Measured(unittest.TestCase):
    """A folder with the figures of two groups."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.measured = self.folder / "measured"
        self.measured.mkdir()
        self.baseline = self.folder / "baseline.json"
        self.measure("checksum", CHECKSUM)
        self.measure("names", NAMES)

    def measure(self, group: str, runs: list[dict]):
        text = json.dumps({"context": CONTEXT, "benchmarks": runs})
        (self.measured / f"{group}.json").write_text(text)

    def call(self, *arguments: str) -> tuple[int, str]:
        """The exit status and the output of a command."""
        line = ["report.py", arguments[0], "--measured", str(self.measured), *arguments[1:]]
        with mock.patch.object(sys, "argv", line), contextlib.redirect_stdout(io.StringIO()) as out:
            status = report.main()
        return status, out.getvalue()


class Report(Measured):
    """The tables, the baseline and the comparison with it."""

    def compare(self, kept: dict) -> tuple[int, str]:
        self.baseline.write_text(json.dumps(kept))
        return self.call("compare", "--baseline", str(self.baseline), "checksum")

    def test_the_table_shows_medians_as_ratios_and_marks_what_is_slower_than_plain(self):
        self.assertEqual(
            self.call("table"),
            (
                0,
                "\n"
                "checksum\n"
                "operation     library  plain   others      limit\n"
                "sum of 1 KiB  2.00 us  x 15.0  zlib x 2.0  reading x 0.60\n"
                "\n"
                "names\n"
                "operation  library  plain           others  limit\n"
                "short      10.6 ns  x 0.94 slower!\n"
                "long       10.4 ns  x 0.96\n"
                "\n"
                "slower than its plain form: names, short\n",
            ),
        )

    def test_named_groups_alone_are_shown(self):
        self.assertNotIn("checksum", self.call("table", "names")[1])

    def test_a_group_of_which_nothing_was_measured_is_left_out(self):
        (self.measured / "names.json").write_text("")
        self.assertEqual(self.call("table", "names"), (0, ""))

    def test_an_operation_without_the_library_is_left_out(self):
        self.measure("names", [run("short/plain/real_time", 10.0)])
        self.assertEqual(self.call("table", "names"), (0, ""))

    def test_what_cannot_be_read_is_told_in_a_line(self):
        failed = {**NAMES[3], "error_occurred": True, "error_message": "no file"}
        self.measure("failed", [failed])
        (self.measured / "text.json").write_text("Benchmark  Time")
        missing = ("--baseline", str(self.folder / "none.json"), "names")
        for arguments, message in [
            (("table", "failed"), "long/plain/real_time failed: no file"),
            (("table", "text"), "text.json holds no figures of Google Benchmark"),
            (("table", "none"), "nothing has been measured of none"),
            (("compare", *missing), "there is no baseline yet; ./kv bench --baseline writes it"),
        ]:
            with self.subTest(message), self.assertRaises(SystemExit) as refusal:
                self.call(*arguments)
            self.assertEqual(refusal.exception.code, f"report.py: {message}")

    def test_the_results_hold_all_medians_and_ratios(self):
        path = self.folder / "results.json"
        self.call("table", "--results", str(path), "names")
        results = json.loads(path.read_text())
        self.assertEqual(
            results["checksum"]["operations"]["sum of 1 KiB"],
            {
                "nanoseconds": {"library": 2e3, "plain": 3e4, "zlib": 4e3, "limit: reading": 1e3},
                "ratios": {"plain": 15.0, "zlib": 2.0, "limit: reading": 0.6},
            },
        )
        self.assertEqual(results["names"]["context"]["processor"], "A processor")

    def test_the_baseline_holds_three_digits_of_the_ratios_against_plain_and_limits(self):
        other = {"tolerance": 30, "ratios": {}}
        self.baseline.write_text(json.dumps({"other": other, "names": {"tolerance": 50}}))
        status, _ = self.call("baseline", "--baseline", str(self.baseline))
        self.assertEqual(status, 0)
        kept = json.loads(self.baseline.read_text())
        self.assertEqual(list(kept), ["checksum", "names", "other"])
        self.assertEqual(
            kept,
            {
                "checksum": {
                    "tolerance": 25,
                    "ratios": {"sum of 1 KiB": {"limit: reading": 0.6, "plain": 15.0}},
                },
                "names": {
                    "tolerance": 50,
                    "ratios": {"long": {"plain": 0.962}, "short": {"plain": 0.943}},
                },
                "other": other,
            },
        )

    def test_ratios_within_the_tolerance_are_the_same(self):
        for plain in (15 * 1.24, 15 / 1.24):
            with self.subTest(plain=plain):
                kept = {"sum of 1 KiB": {"plain": plain, "limit: reading": 0.6}}
                self.assertEqual(
                    self.compare({"checksum": {"tolerance": 25, "ratios": kept}}),
                    (0, "2 ratios compared with the baseline, 0 of them slower\n"),
                )

    def test_what_got_slower_is_told_and_is_a_failure(self):
        kept = {"sum of 1 KiB": {"plain": 15 * 1.26, "limit: reading": 0.6 / 1.26}}
        self.assertEqual(
            self.compare({"checksum": {"tolerance": 25, "ratios": kept}}),
            (
                1,
                "slower  checksum, sum of 1 KiB, plain: x 18.9 -> x 15.0\n"
                "faster  checksum, sum of 1 KiB, limit: reading: x 0.48 -> x 0.60\n"
                "2 ratios compared with the baseline, 1 of them slower\n",
            ),
        )

    def test_a_group_has_its_own_tolerance(self):
        kept = {"sum of 1 KiB": {"plain": 15 * 1.49, "limit: reading": 0.6}}
        self.assertEqual(self.compare({"checksum": {"tolerance": 50, "ratios": kept}})[0], 0)
        self.assertEqual(self.compare({"checksum": {"tolerance": 40, "ratios": kept}})[0], 1)

    def test_operations_that_came_or_went_are_told_and_are_no_failure(self):
        kept = {"sum of 2 KiB": {"plain": 3.0}, "sum of 1 KiB": {"plain": 15.0}}
        self.assertEqual(
            self.compare({"checksum": {"tolerance": 25, "ratios": kept}}),
            (
                0,
                "gone    checksum, sum of 2 KiB, plain: x 3.0 -> -\n"
                "new     checksum, sum of 1 KiB, limit: reading: - -> x 0.60\n"
                "1 ratios compared with the baseline, 0 of them slower\n",
            ),
        )

    def test_the_exit_status_is_that_of_the_comparison(self):
        self.baseline.write_text('{"names": {"ratios": {"long": {"plain": 3}}}}')
        line = ["--measured", self.measured, "--baseline", self.baseline, "names"]
        done = subprocess.run(
            [sys.executable, "-B", BENCH / "report.py", "compare", *line], capture_output=True
        )
        self.assertEqual(done.returncode, 1)

    def test_times_have_three_digits_and_a_fitting_unit(self):
        for time, text in (
            (0.4, "0.40 ns"),
            (9.99, "9.99 ns"),
            (12.34, "12.3 ns"),
            (999.0, "999 ns"),
            (1234.0, "1.23 us"),
            (2.5e6, "2.50 ms"),
            (3e9, "3.00 s"),
        ):
            with self.subTest(time=time):
                self.assertEqual(report.time_text(time), text)


class Page(Measured):
    """The page that shows the tables and the charts."""

    @unittest.skipUnless(importlib.util.find_spec("matplotlib"), "python3-matplotlib is missing")
    def test_the_page_gets_table_chart_and_machine_between_its_markers(self):
        page = self.folder / "page.md"
        place = "<!-- measured: checksum -->\nold\n<!-- end -->\n"
        page.write_text(f"before\n{place}after\n<!-- end -->\n")
        self.call("plot", "--page", str(page), "checksum")
        self.assertEqual(
            page.read_text(),
            "before\n"
            "<!-- measured: checksum -->\n"
            "![Times as a chart](page/checksum.svg)\n"
            "\n"
            "| operation | library | plain | others | limit |\n"
            "| --- | --: | --- | --- | --- |\n"
            "| sum of 1 KiB | 2.00 us | x 15.0 | zlib x 2.0 | reading x 0.60 |\n"
            "\n"
            "Measured on 2026-02-28, commit 1234567: A processor (avx2 vpclmulqdq; L1 48 KiB,"
            " L3 32 MiB; 2 cores), a compiler 12, wine 8.\n"
            "<!-- end -->\n"
            "after\n"
            "<!-- end -->\n",
        )
        chart = self.folder / "page" / "checksum.svg"
        first = chart.read_bytes()
        self.assertIn(b">sum of 1 KiB<", first)
        self.call("plot", "--page", str(page), "checksum")
        self.assertEqual(chart.read_bytes(), first)

    def test_a_page_without_a_place_for_the_group_is_refused(self):
        with self.assertRaisesRegex(SystemExit, "no place for the group names"):
            report.filled("text\n", "names", "table\n")


if __name__ == "__main__":
    unittest.main()
