#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Sweeps a filter again and again; writes its results as CSV, and the spread of the curves as an SVG picture.

Start "calvorn-sweep --listen 5025" first. Needs PyVISA: Debian packages python3-pyvisa and python3-pyvisa-py.

    spread.py --start 6.5e6 --stop 7.7e6 --count 20 --interval 30 --csv results.csv --picture spread.svg
"""

import argparse
import csv
import datetime
import math
import sys
import time

NOTHING = 9.91e37  # a number that cannot be had
WIDTH, HEIGHT = 900, 560
LEFT, RIGHT, TOP, BOTTOM = 80, 20, 50, 70  # around the plot


def arguments():
    parser = argparse.ArgumentParser(description="Sweep a filter again and again, and show how its results spread.")
    parser.add_argument("--host", default="127.0.0.1", help="where Calvorn listens (default: %(default)s)")
    parser.add_argument("--port", type=int, default=5025, help="TCP port (default: %(default)s)")
    parser.add_argument("--start", type=float, help="first frequency, Hz (default: as it is)")
    parser.add_argument("--stop", type=float, help="last frequency, Hz (default: as it is)")
    parser.add_argument("--count", type=int, default=10, help="number of sweeps (default: %(default)s)")
    parser.add_argument("--interval", type=float, default=0, help="seconds from start to start (default: %(default)s)")
    parser.add_argument("--timeout", type=float, default=60, help="seconds to wait for a sweep (default: %(default)s)")
    parser.add_argument("--csv", default="spread.csv", help="file of the results (default: %(default)s)")
    parser.add_argument("--picture", default="spread.svg", help="file of the picture (default: %(default)s)")
    chosen = parser.parse_args()
    if chosen.count < 1:
        parser.error("--count must be 1 or more")
    if not 0 <= chosen.interval < 1e6:
        parser.error("--interval must be 0 or more seconds")
    if not 0 < chosen.timeout < 1e6:
        parser.error("--timeout must be more than 0 seconds")
    for name in ("start", "stop"):
        value = getattr(chosen, name)
        if value is not None and not (math.isfinite(value) and value > 0):
            parser.error(f"--{name} must be a frequency in Hz")
    return chosen


class Calvorn:
    """One connection; an error of the program becomes an exception."""

    def __init__(self, host, port, seconds):
        import pyvisa  # here, so that --help works without it

        self.link = pyvisa.ResourceManager("@py").open_resource(f"TCPIP0::{host}::{port}::SOCKET")
        self.link.read_termination = self.link.write_termination = "\n"
        self.link.timeout = seconds * 1000
        self.link.write("*CLS")

    def check(self, what):
        error = self.link.query("SYST:ERR?")
        if not error.startswith("0,"):
            raise RuntimeError(f"{what}: {error}")

    def do(self, command):
        self.link.write(command)
        self.check(command)

    def row(self, query):
        """The numbers that a query answers with. A query that fails has no answer, so the time would run out."""
        try:
            values = self.link.query_binary_values(query, datatype="d", is_big_endian=True)
        except Exception as problem:
            self.check(query)
            raise RuntimeError(f"{query}: {problem}") from problem
        self.check(query)
        return [None if abs(value) >= 9.9e37 else value for value in values]

    def sweep(self):
        self.do("INIT")
        if self.link.query("*OPC?") != "1":
            raise RuntimeError("the sweep has not ended")

    def results(self):
        values = map(float, self.link.query("CALC:RES? FILT").split(","))
        return [None if value == NOTHING else value for value in values]


def take(chosen, file):
    """Sweeps, and writes a line for each; the frequencies and all curves."""
    calvorn = Calvorn(chosen.host, chosen.port, chosen.timeout)
    calvorn.do("ABOR")
    if chosen.start is not None:
        calvorn.do(f"FREQ:STAR {chosen.start:.0f}")
    if chosen.stop is not None:
        calvorn.do(f"FREQ:STOP {chosen.stop:.0f}")
    calvorn.do("DISP:SCAL DBV;:CALC:UNIT DB")
    calvorn.do("FORM REAL,64")
    names = calvorn.link.query("CALC:RES:KEYS? FILT").replace('"', "").split(",")
    table = csv.writer(file)
    table.writerow(["time", *names])
    curves, freqs, began = [], [], time.monotonic()
    for number in range(chosen.count):
        time.sleep(max(0, began + number * chosen.interval - time.monotonic()))
        calvorn.sweep()
        now = datetime.datetime.now().astimezone().isoformat(timespec="milliseconds")
        freqs = calvorn.row("CALC:FREQ?")
        curves.append(calvorn.row("CALC:DATA?"))
        table.writerow([now, *("" if value is None else repr(value) for value in calvorn.results())])
        file.flush()
        print(f"\r{number + 1} of {chosen.count}", end="", file=sys.stderr, flush=True)
    print(file=sys.stderr)
    return freqs, curves


def spread(curves):
    """Mean, lowest and highest of each sample; None where no curve has one."""
    rows = []
    for sample in zip(*curves):
        known = [value for value in sample if value is not None]
        rows.append((sum(known) / len(known), min(known), max(known)) if known else None)
    return rows


def steps(low, high, wanted):
    """Round numbers between two others, about as many as wanted."""
    raw = (high - low) / wanted
    step = 10 ** math.floor(math.log10(raw))
    step *= next(factor for factor in (1, 2, 5, 10) if step * factor >= raw)
    first = math.ceil(low / step - 1e-9)
    last = math.floor(high / step + 1e-9)
    return [number * step for number in range(first, last + 1)]


def picture(freqs, rows, count):
    """The picture as SVG."""
    points = [(freq / 1e6, row) for freq, row in zip(freqs, rows) if row]
    if not points:
        raise RuntimeError("no sample has a level")
    left, right = min(freqs) / 1e6, max(freqs) / 1e6
    low = math.floor(min(row[1] for _, row in points) - 0.5)
    high = math.ceil(max(row[2] for _, row in points) + 0.5)

    def x(freq):
        return LEFT + (freq - left) / (right - left) * (WIDTH - LEFT - RIGHT)

    def y(level):
        return TOP + (high - level) / (high - low) * (HEIGHT - TOP - BOTTOM)

    def line(which, colour, name):
        path = " ".join(f"{x(freq):.2f},{y(row[which]):.2f}" for freq, row in points)
        return f'<polyline id="{name}" points="{path}" fill="none" stroke="{colour}" stroke-width="1.2"/>'

    def text(across, down, words, anchor="middle", more=""):
        return f'<text x="{across:.1f}" y="{down:.1f}" text-anchor="{anchor}"{more}>{words}</text>'

    out = ['<?xml version="1.0" encoding="UTF-8"?>',
           f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" viewBox="0 0 {WIDTH} {HEIGHT}" '
           'font-family="sans-serif" font-size="13">', f'<rect width="{WIDTH}" height="{HEIGHT}" fill="white"/>']
    grid = 'stroke="#ddd" stroke-width="1"'
    for freq in steps(left, right, 8):
        out.append(f'<line x1="{x(freq):.2f}" y1="{TOP}" x2="{x(freq):.2f}" y2="{HEIGHT - BOTTOM}" {grid}/>')
        out.append(text(x(freq), HEIGHT - BOTTOM + 20, f"{freq:.10g}"))
    for level in steps(low, high, 8):
        out.append(f'<line x1="{LEFT}" y1="{y(level):.2f}" x2="{WIDTH - RIGHT}" y2="{y(level):.2f}" {grid}/>')
        out.append(text(LEFT - 8, y(level) + 4, f"{level:.10g}", "end"))
    band = [f"{x(freq):.2f},{y(row[2]):.2f}" for freq, row in points]
    band += [f"{x(freq):.2f},{y(row[1]):.2f}" for freq, row in reversed(points)]
    out.append(f'<polygon points="{" ".join(band)}" fill="#9cf" fill-opacity="0.5"/>')
    out += [line(1, "#36a", "min"), line(2, "#a33", "max"), line(0, "black", "mean")]
    out.append(f'<rect x="{LEFT}" y="{TOP}" width="{WIDTH - LEFT - RIGHT}" height="{HEIGHT - TOP - BOTTOM}" '
               'fill="none" stroke="black"/>')
    out.append(text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 20, "Frequency / MHz"))
    middle = (TOP + HEIGHT - BOTTOM) / 2
    out.append(text(22, middle, "Level / dB", more=f' transform="rotate(-90 22 {middle:.1f})"'))
    widest = max(row[2] - row[1] for _, row in points)
    out.append(text(LEFT, TOP - 26, f"{count} sweeps, widest spread {widest:.2f} dB", "start"))
    for place, (name, colour) in enumerate((("mean", "black"), ("min", "#36a"), ("max", "#a33"))):
        out.append(text(WIDTH - RIGHT - 120 + 50 * place, TOP - 26, name, "start", f' fill="{colour}"'))
    return "\n".join([*out, "</svg>", ""])


def main():
    chosen = arguments()
    try:
        with open(chosen.csv, "w", encoding="utf-8", newline="") as file:
            freqs, curves = take(chosen, file)
        with open(chosen.picture, "w", encoding="utf-8") as file:
            file.write(picture(freqs, spread(curves), len(curves)))
    except ImportError:
        sys.exit("spread.py: PyVISA is missing: install python3-pyvisa and python3-pyvisa-py")
    except KeyboardInterrupt:
        sys.exit("\nspread.py: stopped")
    except ConnectionError as problem:
        sys.exit(f"spread.py: no connection to port {chosen.port}: {problem}. Does calvorn-sweep --listen run?")
    except OSError as problem:
        sys.exit(f"spread.py: {problem}")
    except Exception as problem:  # PyVISA has its own
        sys.exit(f"spread.py: {problem}")
    print(f"{chosen.csv}, {chosen.picture}")


if __name__ == "__main__":
    main()
