#!/usr/bin/env python3
"""Reads what the benchmarks measured, prints it as ratios, and keeps the baseline of the ratios.

usage: report.py COMMAND --measured FOLDER ...      report.py COMMAND --help tells the rest

The folder holds a file GROUP.json of Google Benchmark for each group. A benchmark is named
OPERATION/FORM; the forms are "library", "plain", "limit ..." and peers (support/comparison.h). An
operation is measured in rounds, each form once a round (support/rounds.h): of its times the median
counts, and of the ratios of two forms in a round.
"""
import argparse
import json
import re
import statistics
import sys
from pathlib import Path

Times = dict[str, list[float]]  # form -> nanoseconds, one of each round
Operations = dict[str, Times]  # operation -> its forms
Ratios = dict[str, float]  # form -> how many times as fast as that the library is

NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
SLOWER_THAN_PLAIN = 1.05
DEFAULT_TOLERANCE = 25  # percent


def is_limit(form: str) -> bool:
    return form.startswith("limit")


def limit_name(form: str) -> str:
    return form.removeprefix("limit").lstrip(": ")


def read_group(path: Path) -> dict:
    """The context of a run and the times of those operations in which the library is measured."""
    text = path.read_text(encoding="utf-8")
    if not text.strip():  # no benchmark of the group matched a filter
        return {"context": {}, "operations": {}}
    try:
        measured = json.loads(text)
    except json.JSONDecodeError:
        sys.exit(f"report.py: {path.name} holds no figures of Google Benchmark")
    operations: Operations = {}
    for run in measured["benchmarks"]:
        if run.get("error_occurred"):
            sys.exit(f"report.py: {run['name']} failed: {run.get('error_message')}")
        operation, form = run["name"].split("/")[:2]
        time = run["real_time"] * NANOSECONDS[run["time_unit"]]
        operations.setdefault(operation, {}).setdefault(form, []).append(time)
    compared = {name: times for name, times in operations.items() if "library" in times}
    return {"context": measured["context"], "operations": compared}


def read_groups(folder: Path, names: list[str]) -> dict[str, dict]:
    paths = [folder / f"{name}.json" for name in names] or sorted(folder.glob("*.json"))
    if missing := [path.stem for path in paths if not path.exists()]:
        sys.exit(f"report.py: nothing has been measured of {', '.join(missing)}")
    return {path.stem: read_group(path) for path in paths}


def median(times: Times, form: str) -> float:
    return statistics.median(times[form])


def ratio(times: Times, form: str) -> float:
    """How many times as fast as the form the library is."""
    rounds = zip(times[form], times["library"], strict=True)
    return statistics.median(other / library for other, library in rounds)


def ratios(times: Times) -> Ratios:
    return {form: ratio(times, form) for form in times if form != "library"}


def slower_than_plain(operations: Operations) -> list[str]:
    return [
        operation
        for operation, times in operations.items()
        if "plain" in times and ratio(times, "plain") < 1 / SLOWER_THAN_PLAIN
    ]


# Numbers as text.


def ratio_text(value: float) -> str:
    decimals = 2 if value < 2 else 1 if value < 20 else 0
    return f"x {value:.{decimals}f}"


def time_text(nanoseconds: float) -> str:
    for unit, size in reversed(NANOSECONDS.items()):
        value = nanoseconds / size
        if value >= 1 or unit == "ns":
            break
    decimals = 2 if value < 10 else 1 if value < 100 else 0
    return f"{value:.{decimals}f} {unit}"


def bytes_text(count: int) -> str:
    return f"{count >> 20} MiB" if count >> 20 else f"{count >> 10} KiB"


# Tables.

HEADINGS = ["operation", "library", "plain", "others", "limit"]


def rows(operations: Operations) -> list[list[str]]:
    """A row an operation: the time of the library, and how many times as fast as the rest it is."""
    slower = slower_than_plain(operations)
    result = []
    for operation, times in operations.items():
        against = {form: ratio_text(value) for form, value in ratios(times).items()}
        plain = against.pop("plain", "") + (" slower!" if operation in slower else "")
        limits = [f"{limit_name(form)} {against[form]}" for form in against if is_limit(form)]
        peers = [f"{form} {against[form]}" for form in against if not is_limit(form)]
        row = [operation, time_text(median(times, "library")), plain, ", ".join(peers), ", ".join(limits)]
        result.append(row)
    return result


def plain_table(operations: Operations) -> str:
    table = [HEADINGS, *rows(operations)]
    widths = [max(len(row[column]) for row in table) for column in range(len(HEADINGS))]
    lines = []
    for row in table:
        cells = [cell.ljust(width) for cell, width in zip(row, widths)]
        cells[1] = row[1].rjust(widths[1])
        lines.append("  ".join(cells).rstrip())
    return "\n".join(lines) + "\n"


def markdown_table(operations: Operations) -> str:
    table = [HEADINGS, ["---", "--:", "---", "---", "---"], *rows(operations)]
    return "".join(f"| {' | '.join(row)} |\n" for row in table)


def machine(context: dict) -> str:
    """What the figures depend on, as a sentence."""
    caches = ", ".join(
        f"L{cache['level']} {bytes_text(cache['size'])}"
        for cache in context["caches"]
        if cache["type"] != "Instruction"
    )
    return (
        f"{context['processor']} ({context['features']}; {caches}; {context['num_cpus']} cores), "
        f"{context['compiler']}, {context['wine']}."
    )


def write_results(path: Path, groups: dict[str, dict]) -> None:
    """All medians and ratios in one file."""
    results = {
        name: {
            "context": group["context"],
            "operations": {
                operation: {
                    "nanoseconds": {form: median(times, form) for form in times},
                    "ratios": ratios(times),
                }
                for operation, times in group["operations"].items()
            },
        }
        for name, group in groups.items()
    }
    path.write_text(json.dumps(results, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")


# The commands.


def table(arguments: argparse.Namespace, groups: dict[str, dict]) -> int:
    """Prints a table per group."""
    for name, group in groups.items():
        if group["operations"]:
            print(f"\n{name}\n{plain_table(group['operations'])}", end="")
    slower = [
        f"slower than its plain form: {name}, {operation}\n"
        for name, group in groups.items()
        for operation in slower_than_plain(group["operations"])
    ]
    print("\n" * bool(slower) + "".join(slower), end="")
    return 0


def kept_ratios(operations: Operations) -> dict[str, Ratios]:
    """What the baseline holds: three digits of the ratios against the plain form and the limits."""
    return {
        operation: {
            form: float(f"{value:.3g}")
            for form, value in sorted(ratios(times).items())
            if form == "plain" or is_limit(form)
        }
        for operation, times in sorted(operations.items())
    }


def baseline(arguments: argparse.Namespace, groups: dict[str, dict]) -> int:
    """Writes the ratios of the given groups into the baseline."""
    path = arguments.baseline
    kept = json.loads(path.read_text(encoding="utf-8")) if path.exists() else {}
    for name, group in groups.items():
        tolerance = kept.get(name, {}).get("tolerance", DEFAULT_TOLERANCE)
        kept[name] = {"tolerance": tolerance, "ratios": kept_ratios(group["operations"])}
    text = json.dumps(dict(sorted(kept.items())), indent=1, ensure_ascii=False)
    path.write_text(text + "\n", encoding="utf-8")
    print(f"{path.name} holds the ratios of: {', '.join(groups)}")
    return 0


def compare(arguments: argparse.Namespace, groups: dict[str, dict]) -> int:
    """Compares the ratios with the baseline; the status is 1 when the library got slower."""
    if not arguments.baseline.exists():
        sys.exit("report.py: there is no baseline yet; ./kv bench --baseline writes it")
    kept = json.loads(arguments.baseline.read_text(encoding="utf-8"))
    slower = compared = 0
    for name, group in groups.items():
        old = kept.get(name, {"ratios": {}})
        factor = 1 + old.get("tolerance", DEFAULT_TOLERANCE) / 100
        new = kept_ratios(group["operations"])
        for operation, form in pairs(old["ratios"], new):
            before = old["ratios"].get(operation, {}).get(form)
            now = new.get(operation, {}).get(form)
            verdict = judge(before, now, factor)
            slower += verdict == "slower"
            compared += verdict in ("", "slower", "faster")
            if verdict:
                texts = [ratio_text(value) if value else "-" for value in (before, now)]
                print(f"{verdict:7} {name}, {operation}, {form}: {texts[0]} -> {texts[1]}")
    print(f"{compared} ratios compared with the baseline, {slower} of them slower")
    return 1 if slower else 0


def pairs(old: dict[str, Ratios], new: dict[str, Ratios]) -> list[tuple[str, str]]:
    """Each operation with each of its forms, of both."""
    both = [*old.items(), *new.items()]
    return list(dict.fromkeys((operation, form) for operation, forms in both for form in forms))


def judge(before: float | None, now: float | None, factor: float) -> str:
    if before is None or now is None:
        return "new" if before is None else "gone"
    if now * factor < before:
        return "slower"
    return "faster" if now > before * factor else ""


def plot(arguments: argparse.Namespace, groups: dict[str, dict]) -> int:
    """Draws a chart per group and fills in the tables of the page."""
    import charts  # needs matplotlib, which nothing else here does

    folder = arguments.page.with_suffix("")
    folder.mkdir(exist_ok=True)
    text = arguments.page.read_text(encoding="utf-8")
    for name, group in groups.items():
        charts.draw(group["operations"], folder / f"{name}.svg")
        text = filled(text, name, group_text(f"{folder.name}/{name}.svg", group))
    arguments.page.write_text(text, encoding="utf-8")
    print(f"{arguments.page.name} and its charts show: {', '.join(groups)}")
    return 0


def group_text(chart: str, group: dict) -> str:
    context = group["context"]
    return (
        f"![Times as a chart]({chart})\n\n{markdown_table(group['operations'])}\n"
        f"Measured on {context['date'][:10]}, commit {context['commit']}: {machine(context)}\n"
    )


def filled(page: str, group: str, text: str) -> str:
    """The page with the text between the group's markers."""
    begin, end = f"<!-- measured: {group} -->\n", "<!-- end -->\n"
    pattern = re.compile(f"({re.escape(begin)}).*?({re.escape(end)})", re.DOTALL)
    if not pattern.search(page):
        sys.exit(f"report.py: the page has no place for the group {group}: {begin.strip()}")
    return pattern.sub(lambda match: match[1] + text + match[2], page)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.partition("\n")[0])
    commands = parser.add_subparsers(required=True, metavar="COMMAND")
    for command in (table, compare, baseline, plot):
        sub = commands.add_parser(command.__name__, help=command.__doc__)
        sub.set_defaults(command=command)
        sub.add_argument("--measured", type=Path, required=True, metavar="FOLDER")
        sub.add_argument("groups", nargs="*", help="all of the folder if none is named")
        sub.add_argument("--results", type=Path, help="a file for all medians and ratios")
        if command is table:
            continue
        if command is plot:
            sub.add_argument("--page", type=Path, required=True, help="charts lie beside it")
        else:
            sub.add_argument("--baseline", type=Path, required=True)
    arguments = parser.parse_args()
    if arguments.results:
        write_results(arguments.results, read_groups(arguments.measured, []))
    return arguments.command(arguments, read_groups(arguments.measured, arguments.groups))


if __name__ == "__main__":
    sys.exit(main())
