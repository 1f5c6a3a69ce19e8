# SPDX-License-Identifier: MIT
"""Tests docs/examples/spread.py, the example script for users."""

import csv
import datetime
import pathlib
import subprocess
import sys
import xml.etree.ElementTree

from harness import ProgramCase, free_port

SCRIPT = pathlib.Path(__file__).resolve().parents[3] / "docs" / "examples" / "spread.py"
SVG = "{http://www.w3.org/2000/svg}"


class Spread(ProgramCase):
    def run_it(self, *more, port=None):
        command = [sys.executable, "-B", str(SCRIPT), "--port", str(port or self.program.port), *more]
        return subprocess.run(command, capture_output=True, text=True, timeout=120, cwd=self.program.folder,
                              check=False)

    def test_five_sweeps(self):
        done = self.run_it("--start", "6.5e6", "--stop", "7.7e6", "--count", "5", "--interval", "0.2",
                           "--csv", "five.csv", "--picture", "five.svg")
        self.assertEqual((done.returncode, done.stdout), (0, "five.csv, five.svg\n"), done.stderr)
        with open(self.program.folder / "five.csv", encoding="utf-8", newline="") as file:
            rows = list(csv.DictReader(file))
        keys = self.c.ask("CALC:RES:KEYS? FILT").replace('"', "").split(",")
        self.assertEqual(list(rows[0]), ["time", *keys])
        self.assertEqual(len(rows), 5)
        for row in rows:
            self.assertAlmostEqual(float(row["peak"]), -1.5, delta=0.5)
            # The pass band from 6.8 to 7.4 MHz is nearly flat, so the noise decides where it peaks.
            self.assertAlmostEqual(float(row["peakFreq"]), 7.1e6, delta=0.3e6)
            self.assertAlmostEqual(float(row["bw3"]), 600e3, delta=20e3)
            self.assertAlmostEqual(float(row["centre"]), 7.1e6, delta=30e3)
            self.assertEqual(row["loss"], "", "without a reference there is no loss")
        last = self.c.numbers("CALC:RES? FILT")
        self.assertEqual([float(rows[4][key]) if rows[4][key] else None for key in keys], last)
        times = [datetime.datetime.fromisoformat(row["time"]) for row in rows]
        self.assertGreaterEqual((times[4] - times[0]).total_seconds(), 0.6)
        self.picture(self.program.folder / "five.svg", 400)

    def picture(self, path, samples):
        root = xml.etree.ElementTree.parse(path).getroot()
        lines = {}
        for line in root.iter(f"{SVG}polyline"):
            lines[line.get("id")] = [tuple(map(float, pair.split(","))) for pair in line.get("points").split()]
        self.assertEqual(set(lines), {"mean", "min", "max"})
        for mean, low, high in zip(lines["mean"], lines["min"], lines["max"]):
            self.assertEqual(mean[0], low[0])
            self.assertEqual(mean[0], high[0])
            self.assertTrue(high[1] - 0.011 <= mean[1] <= low[1] + 0.011, "SVG's y axis points down")
        self.assertEqual([len(line) for line in lines.values()], [samples] * 3)
        self.assertNotEqual(lines["min"], lines["max"])
        texts = [text.text for text in root.iter(f"{SVG}text")]
        self.assertIn("Frequency / MHz", texts)
        self.assertIn("Level / dB", texts)
        self.assertIn("7", texts)
        self.assertTrue(any(text.startswith("5 sweeps") for text in texts))
        # The mean curve peaks in the pass band; the plot covers 6.5 to 7.697 MHz.
        top = min(lines["mean"], key=lambda point: point[1])[0]
        left, right = lines["mean"][0][0], lines["mean"][-1][0]
        self.assertAlmostEqual(6.5 + (top - left) / (right - left) * 1.197, 7.1, delta=0.3)

    def test_errors(self):
        for more, part, code in ((("--count", "0"), "--count must be", 2), (("--start", "-3"), "--start must be", 2),
                                 (("--interval", "nan"), "--interval must be", 2), (("--port", "x"), "invalid int", 2),
                                 (("--csv", "/nowhere/a.csv"), "No such file", 1),
                                 (("--count", "1", "--picture", "/nowhere/a.svg"), "No such file", 1),
                                 (("--start", "5e9"), "-222", 1)):
            with self.subTest(more):
                done = self.run_it(*more)
                self.assertEqual(done.returncode, code, done.stderr)
                self.assertIn(part, done.stderr)
                self.assertNotIn("Traceback", done.stderr)

    def test_nobody_listens(self):
        done = self.run_it("--count", "1", "--csv", "no.csv", port=free_port())
        self.assertEqual(done.returncode, 1)
        self.assertIn("spread.py: ", done.stderr)
        self.assertNotIn("Traceback", done.stderr)
        self.assertIn("calvorn-sweep --listen", done.stderr)
