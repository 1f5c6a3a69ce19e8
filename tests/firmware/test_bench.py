# SPDX-License-Identifier: MIT
"""Tests that the bench detects faults, with a small program instead of the firmware."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

import chip
import page

CLOCK, UPDATE, DATA, RESET = 1, 2, 4, 8
GO_ON = 0.003  # s
OERR, FERR = 2, 4


class Bench(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="calvorn-probe-")
        cls.addClassCleanup(folder.cleanup)
        source = pathlib.Path(folder.name) / "probe.asm"
        shutil.copy(pathlib.Path(__file__).with_name("probe.asm"), source)
        subprocess.run(["gpasm", "-q", "-w", "2", "-p", "16f877", source.name], check=True, cwd=folder.name)
        cls.program = source.with_suffix(".cod")

    def setUp(self):
        self.c = chip.Chip(program=self.program)
        self.addCleanup(self.c.close)
        self.c.run(GO_ON)

    def lines(self, *levels):
        """Sets port D to these levels in turn."""
        for level in levels:
            self.c.send(bytes([0x80 | level]))
            self.c.run(0.0002)

    def enter(self):
        """Puts the generator into serial mode."""
        self.lines(RESET, 0, CLOCK, 0, UPDATE, 0)

    def shift(self, bits):
        for bit in bits:
            data = DATA if bit else 0
            self.lines(data, data | CLOCK, data)

    def latch(self):
        self.lines(0, UPDATE, 0)

    def load(self, tuning, control):
        word = control << 32 | tuning
        self.shift(word >> at & 1 for at in range(40))
        self.latch()

    def complains(self, *wanted):
        found = [fault.split(":", 1)[1] for fault in self.c.faults()]
        self.assertEqual(found, list(wanted))

    def told(self, *items, seconds=GO_ON):
        first = self.c.counts().bytes
        self.c.line(*items)
        self.c.run(seconds)
        return bytes(byte.value for byte in self.c.bytes(first))

    def test_good_word(self):
        self.enter()
        self.shift(map(int, "0001001010000111010111100010100000000000"))
        self.latch()
        self.assertEqual([(word.tuning, word.control) for word in self.c.words()], [(0x147AE148, 0)])
        self.load(0, 4)
        self.assertEqual([(word.tuning, word.control) for word in self.c.words()][1:], [(0, 4)])
        self.complains()

    def test_words_of_another_length(self):
        self.enter()
        self.shift([0] * 39)
        self.latch()
        self.shift([0] * 41)
        self.latch()
        self.assertEqual(self.c.words(), [])
        self.complains("FQ_UD after 39 bits", "FQ_UD after 41 bits")

    def test_words_without_the_serial_mode(self):
        self.load(1, 0)
        self.lines(RESET, 0)
        self.load(1, 0)
        self.assertEqual(self.c.words(), [])
        self.complains("FQ_UD before a pulse on RESET", "FQ_UD after 40 pulses of W_CLK before the serial mode")

    def test_factory_tests(self):
        for jumpers, bad in (("0 0", (1, 2, 3)), ("1 0", (2, 3))):
            self.c.ask(f"jumpers {jumpers}")
            self.enter()
            for control in range(4):
                before = len(self.c.faults())
                self.load(1, control)
                self.assertEqual(len(self.c.faults()) - before, int(control in bad), (jumpers, control))

    def test_edges_that_fall_together(self):
        self.enter()
        self.lines(DATA | CLOCK, CLOCK, 0, CLOCK, CLOCK | UPDATE, 0)
        # In gpsim, the pins affected by one write change one after another, W_CLK first.
        self.complains("D7 changes while W_CLK is high", "D7 changes while W_CLK is high",
                       "FQ_UD rises while W_CLK is high", "FQ_UD after 2 bits")

    def test_converter(self):
        for count in (0, 1, 511, 512, 1022, 1023):
            self.c.ask(f"device constant {count}")
            self.assertEqual(int.from_bytes(self.told("b43"), "big"), count)
        self.assertEqual(len(self.c.conversions()), 6)
        self.assertEqual({(item.adcon0 & 0xC1, item.adcon1) for item in self.c.conversions()}, {(0x81, 0x85)})

    def test_device(self):
        self.enter()
        self.c.ask("device hash")
        self.assertEqual(self.told("b43"), b"\0\0")
        self.load(0x147AE148, 0)
        self.assertEqual(int.from_bytes(self.told("b43"), "big"), (0x147AE148 * 2_654_435_761 & 0xFFFFFFFF) >> 22)
        self.load(0x147AE148, page.POWER_DOWN)
        self.assertEqual(self.told("b43"), b"\0\0")

    def test_framing_errors_belong_to_their_bytes(self):
        self.assertEqual(self.told("b41", "f42", "b45"), bytes([0x41, 0x90, 0x42, 0x90 | FERR,
                                                                                    0x45, 0x90]))
        for items, wanted in ((("f41", "b42"), (FERR, 0)), (("b41", "f42"), (0, FERR))):
            self.c.line("b57")
            self.c.run(0.0005)
            answer = self.told(*items, seconds=0.1)
            self.assertEqual(answer, bytes([0x90 | wanted[0], 0x41, 0x90 | wanted[0], 0x42, 0x90 | wanted[1]]))

    def test_overruns(self):
        """Two bytes are buffered, the third is lost, and no more are received until the receiver is enabled again."""
        self.c.line("b57")
        self.c.run(0.0005)
        answer = self.told("b41", "b42", "b44", "b45", "b46", seconds=0.1)
        self.assertEqual(answer, bytes([0x90 | OERR, 0x41, 0x90, 0x42, 0x90]))
        self.assertEqual(self.c.counts().overruns, 1)
        self.c.line("o")
        self.assertEqual(self.told("b41"), b"")
        self.assertEqual(self.c.counts().overruns, 2)

    def test_breaks(self):
        self.assertEqual(self.told("l5000", "h500", "b41"), bytes([0, 0x90 | FERR, 0x41, 0x90]))
        self.assertEqual(self.told("l10", "h500", "b41"), bytes([0x41, 0x90]))

    def test_transmitter(self):
        """A byte takes ten bits of 44 cycles."""
        self.told("b41", "b42")
        cycles = [byte.cycle for byte in self.c.bytes()]
        self.assertEqual(cycles[1] - cycles[0], 440)

    def test_pins(self):
        pins = self.c.ask("pins").split()
        self.assertEqual([pins[at - 1][:2] for at in (19, 20, 21, 22)], ["o0"] * 4)
        self.assertEqual(pins[26][0], "i")
