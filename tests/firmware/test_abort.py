# SPDX-License-Identifier: MIT
"""Tests ! wherever it may occur: its answer is the last thing the board sends, and the board works afterwards."""

import random

import case
import chip
import page

START = 8_980_000
STEP = 100
LINES = ("?", "A7000000", "B8980000", "D-100", "P", "S60", "*", "A00007000000", "z", "A-")
QUIET = 0.05  # s


class Abort(case.FirmwareCase):
    def prepare(self):
        self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")

    def test_alone(self):
        for _ in range(5):
            self.assertEqual(self.c.tell(b"!"), b"!+\r")
        # Each ! gets a separate answer. An answer takes three times as long as a !.
        first = self.c.counts().bytes
        self.c.send(b"!!")
        self.c.run(QUIET)
        self.assertEqual(self.c.heard(first), b"!+\r!+\r")
        self.c.send(b"!" * 30)
        self.c.run(QUIET)
        self.assertEqual(self.c.tell(b"!"), b"!+\r")

    def test_in_a_line(self):
        """Sends ! after each character of each command."""
        self.prepare()
        for line in LINES:
            for length in range(len(line) + 1):
                first = self.c.counts().bytes
                words = self.c.counts().words
                self.c.send(line[:length].encode("ascii") + b"!")
                self.c.run(0.002 + QUIET / 10)
                self.assertEqual(self.c.heard(first), b"!+\r", line[:length])
                self.assertEqual(self.c.counts().words, words)
                # ! discards the characters before it, so the carriage return terminates an empty line.
                self.assertEqual(self.c.tell(b"\r"), b"")
        self.assertEqual(self.settling(), page.SETTLING)
        self.sweeps(START, STEP)

    def test_in_a_long_line_and_a_wrong_one(self):
        for line in (b"A" + b"0" * 50, b"x" * 300, b"-" * 13, b"A\n\n7"):
            self.assertEqual(self.c.tell(line + b"!"), b"!+\r")
            self.assertEqual(self.c.tell(b"A7000000\r"), b"A+\r")

    def test_while_a_command_is_carried_out(self):
        """Sends ! in steps of 0.1 ms from the carriage return until long after the answer."""
        self.prepare()
        for line in ("A7000000", "A8000000", "B8980000", "D100", "P", "S50", "?", "*"):
            for delay in range(0, 30):
                self.carry_out(line, delay * 1e-4)
        self.accepts("A1000000")
        self.has_frequency(1_000_000)

    def carry_out(self, line, delay):
        first = self.c.counts().bytes
        own = line[0].encode("ascii")
        self.c.send(line.encode("ascii") + b"\r")
        self.c.line(f"h{max(1, self.c.cycles(delay))}", "b21")
        self.c.run(10 * (len(line) + 2) / chip.BAUD + delay)
        self.c.answer_of_abort(first)
        self.c.run(0.002)
        heard = self.c.heard(first)
        self.assertEqual(heard[-3:], b"!+\r", (line, delay))
        self.assertLess(self.c.words()[-1].cycle, self.c.bytes(first)[-3].cycle)
        before = heard[:-3]
        if own != b"?":
            # The answer may be complete, truncated or missing.
            self.assertTrue((own + b"+\r").startswith(before), (line, delay, heard))
        else:
            self.assertTrue(before == b"" or before.startswith(b"?"), heard)
        if line.startswith("A"):
            tuning, control = self.c.word()
            self.assertIn((tuning, control), [(page.tuning_word(hertz, self.c.wiring.clock), 0)
                                              for hertz in (7_000_000, 8_000_000)] + [(0, page.POWER_DOWN)])

    def test_ignored_in_a_sweep(self):
        """Sends other bytes during a sweep, with pauses, and checks that they have no effect."""
        self.prepare()
        first = self.c.counts().bytes
        self.c.send(b"G\r")
        for byte in list(b"A7000000\r\n?\rP\rB1\r*\r") + [0, 0x20, 0x22, 0xA1, 0x7F, 0xFF]:
            self.c.line(f"b{byte:02x}", "h2000")
        self.c.expect(first + 3 + 3 * page.FRAME, 0.3)
        self.c.send(b"A12")
        self.c.run(0.002)
        heard = self.c.heard(first)
        tail = self.c.stop()
        self.assertEqual(self.c.tell(b"\r"), b"")
        frames = heard[3:3 + 3 * page.FRAME]
        for number in range(3):
            frame = frames[number * page.FRAME:][:page.FRAME]
            self.assertTrue(page.is_good(frame, START, STEP))
            self.assertEqual(frame[2], number)
        self.assertTrue(tail.endswith(b"!+\r"))
        self.sweeps(START, STEP)


class AbortInAFrame(case.FirmwareCase):
    """Sends ! after each byte of a frame, at a random time within a bit, and checks that the next G works."""

    def test_after_each_byte(self):
        self.c.ask("device hash")
        self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")
        whole = b"".join(map(case.bytes_of, self.sweeps(START, STEP, 2)))
        chance = random.Random(3)
        slowest = 0
        for count in range(page.FRAME + 3):
            first = self.c.counts().bytes
            # The count starts at G, so it includes the three bytes of its answer.
            self.c.line("b47", "b0d", f"n{first + count}", f"h{chance.uniform(1, 450)}", "b21")
            slowest = max(slowest, self.check(first, count, whole))
        case.note(f"!: answered within {slowest * 1e3:.2f} ms of the byte before it")
        self.sweeps(START, STEP)

    def check(self, first, count, whole):
        self.c.expect(first + count, 0.1)
        began = self.c.time()
        self.c.answer_of_abort(first)
        passed = (self.c.time() - began) / self.c.hertz
        self.assertLess(passed, case.ANSWER)
        self.c.run(0.002)
        heard = self.c.heard(first)
        self.assertTrue(heard.endswith(b"!+\r"), (count, heard[-10:].hex()))
        self.assertLess(self.c.words(self.c.counts().words - 1)[0].cycle, self.c.bytes(first)[-3].cycle, count)
        before = heard[:-3]
        self.assertTrue((b"G+\r" + whole).startswith(before), (count, before[-20:].hex()))
        self.assertGreaterEqual(len(before), count)
        return passed


class AbortWithTheOtherCrystal(Abort):
    crystal = "18mhz432"
