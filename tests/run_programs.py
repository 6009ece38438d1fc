#!/usr/bin/env python3
"""Runs test programs that were built elsewhere, as on a Windows without CMake.

Each case gets a process, as under CTest; those of programs that the list marks "alone" run one after the
other at the end. The Documents folder must be what the environment variable KVUTILS_DOCUMENTS says:
the registry's "User Shell Folders\\Personal" is %KVUTILS_DOCUMENTS%.
"""
import argparse
import concurrent.futures
import fnmatch
import os
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Dict, List, NamedTuple

TIMEOUT = 300  # seconds; for a case that would hang, none takes a tenth


class Case(NamedTuple):
    program: Path
    name: str


class Result(NamedTuple):
    case: Case
    passed: bool
    output: str


def read_patterns(file: Path) -> List[str]:
    """The patterns of a file, one a line; # begins a comment."""
    lines = (line.split("#")[0].strip() for line in file.read_text(encoding="utf-8").splitlines())
    return [line for line in lines if line]


def names_of(listing: str) -> List[str]:
    """The cases in what --gtest_list_tests prints."""
    suite, names = "", []
    for line in listing.splitlines():
        text = line.split("#")[0].rstrip()
        if text.startswith("  "):
            names.append(suite + text.strip())
        elif text.endswith("."):
            suite = text
    return [name for name in names if "DISABLED_" not in name]


class Runner:
    def __init__(self, prefix: List[str], sandbox: str):
        self.prefix = prefix
        self.environment = {
            **os.environ,
            "KVUTILS_SANDBOX_ROOT": Path(sandbox).as_posix(),
            "KVUTILS_DOCUMENTS": str(Path(sandbox) / "Documents"),
        }

    def run(self, program: Path, argument: str) -> subprocess.CompletedProcess:
        return subprocess.run([*self.prefix, str(program), argument], env=self.environment, timeout=TIMEOUT,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              encoding="utf-8", errors="replace", check=False)

    def cases(self, program: Path) -> List[Case]:
        listed = self.run(program, "--gtest_list_tests")
        if listed.returncode != 0:
            sys.exit(f"{program} does not start: {listed.stdout}")
        return [Case(program, name) for name in names_of(listed.stdout)]

    def result(self, case: Case) -> Result:
        try:
            done = self.run(case.program, "--gtest_filter=" + case.name)
        except subprocess.TimeoutExpired:
            return Result(case, False, f"did not end within {TIMEOUT} seconds")
        passed = done.returncode == 0 and "1 test from 1 test suite ran" in done.stdout
        return Result(case, passed, f"exit code {done.returncode}\n{done.stdout}")


def read_programs(folder: Path) -> Dict[Path, bool]:
    """The programs of a build, from its list, and whether their cases run alone."""
    programs = {}
    for line in (folder / "test-programs.txt").read_text().splitlines():
        name, *alone = line.split()
        programs[folder / (name + ".exe")] = alone == ["alone"]
    return programs


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", type=Path, help="bin of the build folder")
    parser.add_argument("--only", default="*", help="pattern of the cases to run")
    parser.add_argument("--skip", type=Path, help="file with patterns of cases to leave out")
    parser.add_argument("--prefix", default=[], nargs="+", help="command that runs a program")
    arguments = parser.parse_args()
    skipped = read_patterns(arguments.skip) if arguments.skip else []

    def wanted(case: Case) -> bool:
        return fnmatch.fnmatchcase(case.name, arguments.only) and not any(
            fnmatch.fnmatchcase(case.name, pattern) for pattern in skipped)

    results = []
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as sandbox:
        (Path(sandbox) / "Documents").mkdir()
        runner = Runner(arguments.prefix, sandbox)
        together, alone = [], []
        for program, is_alone in read_programs(arguments.folder.resolve()).items():
            (alone if is_alone else together).extend(filter(wanted, runner.cases(program)))
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            results += pool.map(runner.result, together)
        results += map(runner.result, alone)

    failed = [result for result in results if not result.passed]
    for result in failed:
        print(f"FAILED {result.case.program.name} {result.case.name}: {result.output}")
    print(f"{len(results)} cases, {len(failed)} failed")
    for result in failed:
        print(f"  {result.case.name}")
    return 1 if failed or not results else 0


if __name__ == "__main__":
    sys.exit(main())
