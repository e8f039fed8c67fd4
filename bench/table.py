#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later
"""table.py FIGURES GOALS: the table, in Markdown.

FIGURES has a line "row<TAB>participant<TAB>value" for each round, in the order of the
rounds: seconds, or MiB in the rows "memory/...". Ratios are those of one round; the table
shows their median.
"""

import csv
import fnmatch
import statistics
import sys


def read_figures(path):
    figures = {}
    with open(path, encoding="utf-8") as lines:
        for row, who, value in csv.reader(lines, delimiter="\t"):
            figures.setdefault(row, {}).setdefault(who, []).append(float(value))
    return figures


def read_goals(path):
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if not line.startswith("#"):
                rows, who, other, factor, *plus = line.rstrip("\n").split("\t")
                yield (rows, who, other, None if factor == "-" else float(factor),
                       float(plus[0]) if plus else 0)


def amount(row, value):
    if row.startswith("memory/"):
        return f"{value:.1f} MiB"
    for unit, size in (("s", 1), ("ms", 1e-3)):
        if abs(value) >= size:
            return f"{value / size:.3g} {unit}"
    return f"{value / 1e-6:.3g} µs"


def compare(row, values, others, other, factor, plus):
    """What the comparison gives, the goal, and whether it is met."""
    pairs = list(zip(values, others))
    if plus and factor is None:
        return "", amount(row, plus), statistics.median(values) <= plus
    if plus:
        more = statistics.median(value - factor * base for value, base in pairs)
        times = "" if factor == 1 else f"{factor:g} × "
        return (f"{times}{other} {'+' if more >= 0 else '-'} {amount(row, abs(more))}",
                f"+ {amount(row, plus)}", more <= plus)
    ratio = statistics.median(value / base for value, base in pairs)
    if factor is None:
        return f"{ratio:.3g} × {other}", "", None
    return f"{ratio:.3g} × {other}", f"{factor:g}", ratio <= factor


def comparisons(row, who, figures, goals):
    for rows, whose, other, factor, plus in goals:
        if whose != who or not fnmatch.fnmatchcase(row, rows):
            continue
        other_row, _, other_who = other.rpartition(":")
        others = figures.get(other_row or row, {}).get(other_who)
        if others:
            yield compare(row, figures[row][who], others, other, factor, plus)


def main():
    figures = read_figures(sys.argv[1])
    goals = list(read_goals(sys.argv[2]))
    print("| row | who | median | min | max | is | goal | met |")
    print("|---|---|---|---|---|---|---|---|")
    missed = 0
    for row, participants in figures.items():
        for who, values in participants.items():
            cells = [row, who] + [amount(row, f(values))
                                  for f in (statistics.median, min, max)]
            for measured, goal, met in (list(comparisons(row, who, figures, goals))
                                        or [("", "", None)]):
                missed += met is False
                word = {None: "", True: "yes", False: "**no**"}[met]
                print("| " + " | ".join([*cells, measured, goal, word]) + " |")
                cells = [""] * len(cells)
    print(f"\n{missed} goals are missed." if missed else "\nAll goals are met.")


main()
