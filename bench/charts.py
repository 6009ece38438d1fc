"""Draws the bar chart of a group of operations: times relative to the plain form, as SVG.

The file is the same for the same times: no date, no random names. Text stays text, the background
is transparent, and all colours have contrast with white and with black.
"""
from pathlib import Path

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt  # noqa: E402 (after the choice of the backend)
from matplotlib.patches import Patch  # noqa: E402

from report import Operations, Times, is_limit, limit_name  # noqa: E402
from report import median, ratio_text, ratios, time_text  # noqa: E402

TEXT = "#7a828c"
LIBRARY = "#2f7fe0"
PLAIN = "#9aa3ad"
PEER = "#c98a2b"
STYLE = {
    "svg.fonttype": "none",
    "svg.hashsalt": "kvutils",
    "font.size": 9,
    "text.color": TEXT,
    "axes.labelcolor": TEXT,
    "axes.edgecolor": TEXT,
    "xtick.color": TEXT,
    "ytick.color": TEXT,
    "hatch.linewidth": 0.8,
}
INCHES_PER_BAR = 0.19
# A chart of more operations shows the library and the limits alone; its table shows the others too.
OPERATIONS_IN_FULL = 10


def bar_style(form: str) -> dict:
    if is_limit(form):
        return {"facecolor": "none", "edgecolor": TEXT, "hatch": "////", "linewidth": 0.8}
    return {"color": {"library": LIBRARY, "plain": PLAIN}.get(form, PEER)}


KINDS = ["library", "plain", "other code", "limit"]  # from top to bottom


def order(form: str) -> int:
    return 3 if is_limit(form) else {"library": 0, "plain": 1}.get(form, 2)


def bars(operations: Operations) -> list[tuple[float, str, float, str]]:
    """The place, form, relative time and caption of each bar."""
    result, place = [], 0.0
    for times in operations.values():
        # Ratios of rounds, as in the table, and not of medians.
        against = {"library": 1.0, **ratios(times)}
        unit = against.get("plain", 1.0)
        for form in shown_forms(times, len(operations)):
            name = limit_name(form) if is_limit(form) else form
            caption = f" {name}  {time_text(median(times, form))}"
            if form == "library" and "plain" in times:
                caption += f"  {ratio_text(unit)}"
            result.append((place, form, against[form] / unit, caption))
            place += 1
        place += 1
    return result


def shown_forms(times: Times, operations: int) -> list[str]:
    forms = sorted(times, key=order)
    if operations > OPERATIONS_IN_FULL:
        forms = [form for form in forms if form == "library" or is_limit(form)]
    return forms


def draw(operations: Operations, path: Path) -> None:
    drawn = bars(operations)
    left = min(time for _, _, time, _ in drawn) / 2
    right = max(time for _, _, time, _ in drawn)
    with plt.rc_context(STYLE):
        figure, axes = plt.subplots(figsize=(9, 1.1 + INCHES_PER_BAR * (drawn[-1][0] + 2)))
        axes.set_xscale("log")
        # A third of the width is left for the captions of the longest bars.
        axes.set_xlim(left, max(right, 1) * (max(right, 1) / left) ** 0.5)
        axes.set_ylim(drawn[-1][0] + 0.8, -0.8)
        for place, form, time, caption in drawn:
            axes.barh(place, time - left, left=left, height=0.8, **bar_style(form))
            weight = "bold" if form == "library" else "normal"
            axes.text(time, place, caption, va="center", fontsize=8, fontweight=weight)
        axes.axvline(1, color=TEXT, linewidth=0.8, linestyle=":")
        middles = operation_middles(operations)
        axes.set_yticks(list(middles.values()), list(middles))
        axes.tick_params(axis="y", length=0)
        axes.xaxis.set_major_formatter(lambda value, _: f"{value:g}")
        axes.xaxis.set_minor_formatter(lambda value, _: "")
        axes.set_xlabel("time, that of the plain form = 1 (logarithmic; shorter is faster)")
        axes.spines[["top", "right"]].set_visible(False)
        kinds = sorted({order(form): form for _, form, _, _ in drawn}.items())
        handles = [Patch(label=KINDS[kind], **bar_style(form)) for kind, form in kinds]
        figure.legend(handles=handles, loc="upper right", ncols=len(KINDS), frameon=False)
        figure.tight_layout(rect=(0, 0, 1, 1 - 0.3 / figure.get_figheight()))
        figure.savefig(path, transparent=True, metadata={"Date": None, "Creator": None})
        plt.close(figure)


def operation_middles(operations: Operations) -> dict[str, float]:
    """Where the name of each operation stands: beside the middle of its bars."""
    result, place = {}, 0
    for operation, times in operations.items():
        count = len(shown_forms(times, len(operations)))
        result[operation] = place + (count - 1) / 2
        place += count + 1
    return result
