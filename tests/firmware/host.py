# SPDX-License-Identifier: MIT
"""Runs the real program with the simulated chip as its board, in real time, behind a pseudo-terminal."""

import os
import pathlib
import sys
import tempfile
import time
import unittest

import chip
import page

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "remote" / "client"))
os.environ["CALVORN_BOARD"] = "PIC"

import harness  # noqa: E402

PORT = 7  # COM7
FRAME = 0.045  # s


class LiveChip(chip.Chip):
    """A chip that runs in real time behind a port."""

    def __init__(self, link, crystal="20mhz"):
        super().__init__(crystal)
        self.link = link
        self.run(0.05)
        self.ask("realtime")

    def plug(self):
        self.ask(f"plug {self.link}")

    def unplug(self):
        self.ask("unplug")

    def lag(self):
        """Returns to virtual time and reports the largest lag, in seconds."""
        return float(self.ask("virtual"))


class HostCase(unittest.TestCase):
    """Each test starts a separate chip and program."""

    crystal = "20mhz"

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="calvorn-port-")
        self.addCleanup(self.folder.cleanup)
        self.chip = LiveChip(pathlib.Path(self.folder.name) / "board", self.crystal)
        self.addCleanup(self.chip.close)

    def begin(self, changes=None, plugged=True):
        """Starts the program and returns a client connected to it."""
        if plugged:
            self.chip.plug()
        wanted = {("Serial Port", "CommPort"): PORT, ("Ports", f"COM{PORT}"): self.chip.link, **(changes or {})}
        self.program = harness.program(wanted)
        self.addCleanup(self.program.remove)
        self.c = self.program.client()
        self.addCleanup(self.c.close)
        self.c.write("*CLS")
        return self.c

    def span(self, start, stop):
        self.c.write(f"FREQ:STAR MIN;STOP {stop};STAR {start}")
        self.assertEqual(self.c.errors(), [])

    def band(self, hertz, width, peak=900):
        """Makes the device under test a band-pass and returns a function from frequency to expected counts."""
        clock = page.WIRINGS["AD9850"].clock
        centre, wide = page.tuning_word(hertz, clock), page.tuning_word(width, clock)
        self.chip.ask(f"device band {centre} {wide} {peak}")
        return lambda at: peak / (1 + (2 * (page.tuning_word(round(at), clock) - centre) / wide) ** 2) ** 0.5

    def stands(self, counts_at):
        """Checks the count in each row of the last sweep."""
        frequencies = self.c.numbers("CALC:FREQ?")
        counts = self.c.numbers("CALC:COUN?")
        self.assertEqual(len(frequencies), page.POINTS)
        self.assertEqual(len(counts), page.POINTS)
        for frequency, count in zip(frequencies, counts):
            self.assertAlmostEqual(count, counts_at(frequency), delta=1.01, msg=f"at {frequency} Hz")

    def sweep(self):
        """Runs one sweep and checks that it succeeds."""
        self.c.write("*CLS;INIT")
        self.assertEqual(self.c.ask("*OPC?"), "1")
        self.assertEqual(self.c.errors(), [])

    def fails(self, seconds=10):
        """Waits until a failing sweep stops, and returns its errors."""
        self.c.wait_for("STAT:OPER:COND?", lambda answer: int(answer) & 8 == 0, seconds)
        found = []
        while (error := self.c.error())[0]:
            found.append(error)
        return found

    def wait(self, seconds):
        time.sleep(seconds)
