#!/usr/bin/python3
"""Draws bench.json of scripts/bench_table.py as bars: each case's time as a multiple of its best peer's, job by job.

A bar to the left of 1 is a case that the library is faster at. A tick marks the limit, as the same multiple; a case
without peers is drawn against its limit.
"""
import argparse
import json
from pathlib import Path

import matplotlib

matplotlib.use("svg")
import matplotlib.pyplot as plt
from matplotlib.lines import Line2D
from matplotlib.patches import Patch
from matplotlib.ticker import FuncFormatter, LogLocator, NullFormatter

from bench_table import by_job, label

FASTER, SLOWER, AGAINST_LIMIT, TEXT, GRID = "#2a7f9e", "#c8763a", "#8a8f98", "#24292f", "#d8dce1"
ROW_INCHES, WIDTH_INCHES = 0.2, 9.0


def multiple(number):
    """A number in two figures, or as a whole one, without trailing zeros."""
    return f"{number:.2g}" if number < 99.5 else f"{number:.0f}"


def against(row):
    """The time that the row's bar is a multiple of."""
    return row["limit"] if row["best peer"] is None else row["peers"][row["best peer"]]


def place(rows):
    """Each job's heading and each row with its y, from the top down, and the height of all."""
    headings, bars, y = [], [], 0.0
    for job, its_rows in by_job(rows):
        headings.append((y, job))
        y += 1
        for row in its_rows:
            bars.append((y, row))
            y += 1
        y += 0.5
    return headings, bars, y


def draw(rows, caption):
    headings, bars, height = place(rows)
    figure, axes = plt.subplots(figsize=(WIDTH_INCHES, ROW_INCHES * (height + 5)), layout="constrained")
    axes.set_xscale("log")
    for y, row in bars:
        ratio = row["ours"] / against(row)
        colour = AGAINST_LIMIT if row["best peer"] is None else FASTER if ratio <= 1 else SLOWER
        axes.barh(y, ratio - 1, left=1, height=0.68, color=colour, zorder=2)
        text = multiple(ratio) if row["best peer"] is None else f"{multiple(ratio)}  {row['best peer']}"
        axes.annotate(
            text,
            (max(ratio, 1), y),
            xytext=(4, 0),
            textcoords="offset points",
            va="center",
            fontsize=7,
            color=TEXT,
            bbox={"facecolor": "white", "edgecolor": "none", "pad": 0.6},
            zorder=3,
        )
        if row["limit"] is not None and row["best peer"] is not None:
            axes.plot([row["limit"] / against(row)] * 2, [y - 0.42, y + 0.42], color=TEXT, linewidth=1.4, zorder=4)
    for y, job in headings:
        axes.annotate(
            job,
            (0, y),
            xycoords=("axes fraction", "data"),
            xytext=(-6, 0),
            textcoords="offset points",
            ha="right",
            va="center",
            fontsize=8.5,
            fontweight="bold",
            color=TEXT,
        )

    axes.set_yticks([y for y, _ in bars], [label(row) for _, row in bars], fontsize=7.5, color=TEXT)
    axes.set_ylim(height - 0.5, -0.7)
    multiples = [row["ours"] / against(row) for _, row in bars]
    # Room for the texts behind the longest bar.
    axes.set_xlim(min(0.5, 0.8 * min(multiples)), 6 * max(2.0, *multiples))
    axes.axvline(1, color=TEXT, linewidth=0.8, zorder=3)
    axes.xaxis.set_major_locator(LogLocator(10, subs=(1, 2, 5)))
    axes.xaxis.set_major_formatter(FuncFormatter(lambda x, _: multiple(x)))
    axes.xaxis.set_minor_formatter(NullFormatter())
    axes.tick_params(axis="x", which="both", top=True, labeltop=True, length=0, labelsize=7.5, labelcolor=TEXT)
    axes.tick_params(axis="y", length=0)
    axes.grid(axis="x", color=GRID, linewidth=0.6, zorder=0)
    axes.set_axisbelow(True)
    for spine in axes.spines.values():
        spine.set_visible(False)

    keys = [
        Patch(color=FASTER, label="faster than the best peer"),
        Patch(color=SLOWER, label="slower"),
        Patch(color=AGAINST_LIMIT, label="no peer: against the limit"),
        Line2D([], [], color=TEXT, linewidth=1.4, label="the limit: bare C++ under the same rules"),
    ]
    above = {"loc": "lower center", "bbox_to_anchor": (0.5, 1), "borderaxespad": 2.5}
    axes.legend(handles=keys, ncol=4, fontsize=7.5, frameon=False, **above)
    axes.set_xlabel(f"time as a multiple of the best peer's (logarithmic)\n{caption}", fontsize=7.5, color=TEXT)
    return figure


def main():
    parser = argparse.ArgumentParser(description="Draws bench.json as a bar chart.")
    parser.add_argument("results", type=Path, help="bench.json")
    parser.add_argument("chart", type=Path, help="the SVG to write")
    arguments = parser.parse_args()
    everything = json.loads(arguments.results.read_text(encoding="utf-8"))
    rows = [row for row in everything["cases"] if row["ratio"] is not None or row["limit"] is not None]
    machine = everything["machine"]
    caption = ", ".join(str(machine[key]) for key in ("cpu", "compiler", "date") if machine[key])
    # The same figures give the same file.
    plt.rcParams.update({"font.family": "DejaVu Sans", "svg.hashsalt": "bench", "svg.fonttype": "none"})
    draw(rows, caption).savefig(arguments.chart, metadata={"Date": None}, bbox_inches="tight")


if __name__ == "__main__":
    main()
