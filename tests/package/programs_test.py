"""What run_programs.py makes of programs that pass, fail, do not end in order, and are left out."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[1] / "run_programs.py"

# A test program in sh. What it was asked to run, in what sandbox, is told in a file beside it.
PROGRAM = """
echo "$1 $(ls "$KVUTILS_SANDBOX_ROOT")" >>"$0.log"
case $1 in
  --gtest_list_tests) printf 'Running main()\\nStars.\\n  Shine\\n  Fade  # GetParam() = 1\\nChild.\\n  DISABLED_Waits\\n' ;;
  *Shine) echo '[==========] 1 test from 1 test suite ran. (3 ms total)' ;;
  *) echo 'a failure'; exit 3 ;;
esac
"""


def run(programs: str, *arguments: str):
    """The exit code, the output, and what the programs were asked for."""
    with tempfile.TemporaryDirectory() as folder:
        names = [line.split()[0] for line in programs.splitlines()]
        for name in names:
            (Path(folder) / (name + ".exe")).write_text(PROGRAM)
        (Path(folder) / "test-programs.txt").write_text(programs)
        (Path(folder) / "skipped.txt").write_text("# faint\n*.Fade  # in the morning\n")
        arguments = [argument.replace("FOLDER", folder) for argument in arguments]
        done = subprocess.run([sys.executable, "-B", str(SCRIPT), folder, *arguments, "--prefix", "sh"],
                              capture_output=True, text=True, check=False)
        logs = [(Path(folder) / (name + ".exe.log")).read_text().splitlines() for name in names]
    return done.returncode, done.stdout + done.stderr, logs


class Programs(unittest.TestCase):
    def test_run_each_case_in_a_process_and_tell_which_fail(self):
        code, output, logs = run("sky\n")
        self.assertEqual(code, 1)
        self.assertIn("FAILED sky.exe Stars.Fade: exit code 3\na failure\n", output)
        self.assertTrue(output.endswith("2 cases, 1 failed\n  Stars.Fade\n"), output)
        self.assertEqual(sorted(logs[0]), ["--gtest_filter=Stars.Fade Documents", "--gtest_filter=Stars.Shine Documents",
                                           "--gtest_list_tests Documents"])

    def test_leave_out_what_is_listed(self):
        code, output, _ = run("sky\nmoon alone\n", "--skip", "FOLDER/skipped.txt")
        self.assertEqual((code, output), (0, "2 cases, 0 failed\n"))

    def test_run_what_is_named(self):
        code, output, _ = run("sky\n", "--only", "*.Shine")
        self.assertEqual((code, output), (0, "1 cases, 0 failed\n"))

    def test_fail_when_nothing_ran(self):
        code, output, _ = run("sky\n", "--only", "Nothing")
        self.assertEqual((code, output), (1, "0 cases, 0 failed\n"))


unittest.main()
