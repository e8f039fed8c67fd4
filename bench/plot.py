#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The korvasync developers
# SPDX-License-Identifier: LGPL-2.1-or-later
"""plot.py FIGURES: how the cost of a message grows, as SVG.

Draws the rows "growth/PANEL/add|read/X/MESSAGES" of the figures that script/bench collects,
as time per message over X. "growth/messages/add/X" is the time up to X messages, and drawn
is that of those since the point before.
"""

import csv
import math
import statistics
import sys

PANELS = (("messages", "messages in the store"),
          ("conversations", "conversations in the store"),
          ("call size", "messages in a call of add"))
COLOURS = {"add": "#b5402a", "read": "#2a62b5"}
WIDTH, HEIGHT, GAP = 250, 230, 65
TOP, LEFT = 50, 70


def read_points(path):
    """{panel: {(operation, participant): {x: microseconds per message}}}"""
    rounds = {}
    with open(path, encoding="utf-8") as lines:
        for row, who, value in csv.reader(lines, delimiter="\t"):
            if row.startswith("growth/"):
                rounds.setdefault((row, who), []).append(float(value))
    panels = {}
    before = {}
    for (row, who), values in rounds.items():
        _, panel, operation, *numbers = row.split("/")
        x, count, micros = int(numbers[0]), int(numbers[-1]), statistics.median(values) * 1e6
        points = panels.setdefault(panel, {}).setdefault((operation, who), {})
        if len(numbers) == 1:
            counted, spent = before.get(who, (0, 0))
            before[who] = count, micros
            count, micros = count - counted, micros - spent
        points[x] = micros / count
    return panels


class Scale:
    """A logarithmic axis over whole decades."""

    def __init__(self, values, start, end):
        self.low = math.floor(math.log10(min(values)) + 1e-9)
        self.high = max(math.ceil(math.log10(max(values)) - 1e-9), self.low + 1)
        self.start, self.end = start, end

    def __call__(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return self.start + share * (self.end - self.start)

    def decades(self):
        return [10.0 ** power for power in range(self.low, self.high + 1)]


def text(x, y, words, anchor="middle", colour="#222"):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" fill="{colour}">{words}</text>'


def line(x1, y1, x2, y2, style):
    return f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" {style}/>'


def stroke(operation, who):
    dashes = "" if who == "ours" else ' stroke-dasharray="5 4"'
    return f'stroke="{COLOURS[operation]}" stroke-width="2" fill="none"{dashes}'


def draw_panel(index, title, series, vertical):
    left = LEFT + index * (WIDTH + GAP)
    horizontal = Scale([x for points in series.values() for x in points], left, left + WIDTH)
    for y in vertical.decades():
        yield line(left, vertical(y), left + WIDTH, vertical(y), 'stroke="#ddd"')
        yield text(left - 6, vertical(y) + 4, f"{y:,g}", "end")
    for x in horizontal.decades():
        yield line(horizontal(x), TOP, horizontal(x), TOP + HEIGHT, 'stroke="#ddd"')
        yield text(horizontal(x), TOP + HEIGHT + 18, f"{x:,.0f}")
    yield text(left + WIDTH / 2, TOP + HEIGHT + 40, title)
    for (operation, who), points in series.items():
        places = [(horizontal(x), vertical(y)) for x, y in sorted(points.items())]
        yield (f'<polyline points="{" ".join(f"{x:.1f},{y:.1f}" for x, y in places)}" '
               f'{stroke(operation, who)}/>')
        for x, y in places:
            yield f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3" fill="{COLOURS[operation]}"/>'


def draw_legend():
    yield text(LEFT, 22, "µs per message", "start")
    x = LEFT + 150
    for operation, who, words in (("add", "ours", "add"), ("add", "limit", "add, limit"),
                                  ("read", "ours", "read"), ("read", "limit", "read, limit")):
        yield line(x, 18, x + 30, 18, stroke(operation, who))
        yield text(x + 36, 22, words, "start")
        x += 130


def main():
    panels = read_points(sys.argv[1])
    values = [y for series in panels.values() for points in series.values()
              for y in points.values()]
    vertical = Scale(values, TOP + HEIGHT, TOP)
    width = LEFT + len(PANELS) * (WIDTH + GAP) - GAP + 30
    height = TOP + HEIGHT + 55
    print("<!-- SPDX-FileCopyrightText: 2026 The korvasync developers -->")
    print("<!-- SPDX-License-Identifier: LGPL-2.1-or-later -->")
    print(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
          f'width="{width}" height="{height}" font-family="sans-serif" font-size="12">')
    print('<rect width="100%" height="100%" fill="#fff"/>')
    for part in draw_legend():
        print(part)
    for index, (panel, title) in enumerate(PANELS):
        for part in draw_panel(index, title, panels[panel], vertical):
            print(part)
    print("</svg>")


main()
