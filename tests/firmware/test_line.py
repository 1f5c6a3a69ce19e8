# SPDX-License-Identifier: MIT
"""Tests a line that loses and damages bytes: the board never accepts a wrong frequency, and one ! frees the line."""

import random

import case
import chip
import page

QUIET = 0.02  # s, much longer than any answer takes
START = 8_980_000
STEP = 100
LINES = ("A7000000", "B1234567", "D-100", "P", "S70", "?", "*", "z")


def items(data):
    return [f"b{byte:02x}" for byte in data]


class Damage(case.FirmwareCase):
    def setUp(self):
        super().setUp()
        self.accepts("A9000000")
        self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")

    def put(self, *what, seconds=QUIET):
        """Puts items on the line, waits and returns the bytes that the board sends."""
        first = self.c.counts().bytes
        self.c.line(*what)
        self.c.run(seconds + 12 * len(what) / chip.BAUD)
        return self.c.heard(first)

    def unchanged(self):
        self.has_frequency(9_000_000)
        self.assertEqual(self.settling(), page.SETTLING)
        self.sweeps(START, STEP)
        self.accepts("A9000000")

    def lives(self):
        """Checks that one ! frees the line."""
        self.assertEqual(self.c.tell(b"!"), b"!+\r")

    def test_a_byte_without_a_stop_bit(self):
        """Damages each byte of each command: the board ignores the line, sends nothing, and accepts the next line."""
        for line in LINES:
            data = line.encode("ascii") + b"\r"
            for at in range(len(line)):
                damaged = items(data)
                damaged[at] = "f" + damaged[at][1:]
                self.assertEqual(self.put(*damaged), b"", (line, at))
            self.has_frequency(9_000_000)
        self.unchanged()

    def test_a_damaged_carriage_return(self):
        for line in LINES:
            self.assertEqual(self.put(*items(line.encode("ascii")), "f0d"), b"", line)
            self.lives()
        self.unchanged()

    def test_two_lines_the_first_damaged(self):
        self.assertEqual(self.put("f41", *items(b"5\rA6000000\r")), b"A+\r")
        self.has_frequency(6_000_000)
        self.assertEqual(self.put(*items(b"A500"), "f30", *items(b"\r")), b"")
        self.accepts("A5000000")
        self.has_frequency(5_000_000)

    def test_damage_before_a_line(self):
        self.assertEqual(self.put("f00", "h3000", *items(b"A6000000\r")), b"")
        self.has_frequency(9_000_000)
        self.accepts("A6000000")
        self.has_frequency(6_000_000)

    def test_a_spoilt_line_of_any_length(self):
        for length in (0, 1, 11, 12, 13, 100, 255, 256, 257, 300):
            self.assertEqual(self.put("f41", *items(b"7" * length + b"\r")), b"", length)
            self.accepts("A9000000")
        self.unchanged()

    def test_a_damaged_abort(self):
        self.assertEqual(self.put("f21"), b"")
        self.assertEqual(self.put(*items(b"\r")), b"")
        self.accepts("A6000000")
        self.assertEqual(self.put(*items(b"A7"), "f21", *items(b"000000\r")), b"")
        self.has_frequency(6_000_000)

    def test_a_whole_abort_in_a_spoilt_line(self):
        self.assertEqual(self.put(*items(b"A7"), "f30", *items(b"00!")), b"!+\r")
        self.accepts("A6000000")
        self.assertEqual(self.put("f0d", *items(b"!A5000000\r"))[:3], b"!+\r")
        self.lives()

    def test_damage_in_a_sweep(self):
        """During a sweep the board ignores damaged bytes, including a damaged !."""
        first = self.c.counts().bytes
        self.c.send(b"G\r")
        self.c.line("h5000", "f21", "h5000", "f0d", "h5000", "f41", "h5000", "l20000", "h5000", "l600", "h5000", "f21")
        self.c.expect(first + 3 + 4 * page.FRAME, 1)
        heard = self.c.heard(first)
        for number in range(4):
            self.assertTrue(page.is_good(heard[3 + number * page.FRAME:][:page.FRAME], START, STEP))
        self.assertTrue(self.c.stop().endswith(b"!+\r"))
        self.accepts("A9000000")
        self.unchanged()

    def test_breaks(self):
        bit = self.c.hertz / chip.BAUD
        for bits in (0.2, 0.7, 1, 3, 5, 8, 9, 10, 11, 15, 20, 50, 100, 1_000, 10_000):
            with self.subTest(bits):
                self.put(f"l{bits * bit}", "h1000", seconds=QUIET + bits / chip.BAUD)
                self.lives()
                self.accepts("A9000000")
        self.assertEqual(self.put(*items(b"A70"), f"l{30 * bit}", "h500", *items(b"00000\r")), b"")
        self.unchanged()

    def test_overrun_at_each_place(self):
        """The receiver loses a byte and receives nothing more until the board re-enables it."""
        for line in LINES:
            data = line.encode("ascii") + b"\r"
            for at in range(1, len(data)):
                before = self.c.counts().overruns
                self.assertEqual(self.put(*items(data[:at]), "o", "h800", *items(data[at:])), b"", (line, at))
                self.assertEqual(self.c.counts().overruns, before + 1)
            self.has_frequency(9_000_000)
        self.unchanged()

    def test_overrun_without_a_pause(self):
        """If the board re-enables the receiver in the middle of a byte, the receiver may read anything."""
        for line in LINES:
            data = line.encode("ascii") + b"\r"
            for at in range(1, len(data)):
                words = self.c.counts().words
                self.put(*items(data[:at]), "o", *items(data[at:]))
                self.assertEqual(self.c.counts().words, words)
                self.lives()
        self.unchanged()

    def test_overrun_with_nothing_after_it(self):
        for before in (b"", b"A", b"A7000000", b"\r"):
            self.put(*items(before), "o")
            self.lives()
            self.accepts("A9000000")
        self.unchanged()

    def test_overrun_in_a_sweep(self):
        for _ in range(3):
            first = self.c.counts().bytes
            self.c.line(*items(b"G\r"), "h50000", "o", "h2000", "b41", "h30000", "o")
            self.c.expect(first + 3 + 2 * page.FRAME, 0.5)
            heard = self.c.heard(first)
            for number in range(2):
                self.assertTrue(page.is_good(heard[3 + number * page.FRAME:][:page.FRAME], START, STEP))
            self.assertTrue(self.c.stop().endswith(b"!+\r"))
            self.accepts("A9000000")
        self.unchanged()

    def test_a_host_that_does_not_wait(self):
        """Sends lines without pauses to a busy board, which may lose some but must not execute lines never sent."""
        chance = random.Random(11)
        for _ in range(40):
            lines = [chance.choice(("P", "B8980000", "D100", "?", f"A{chance.randrange(1_000_000, 9_999_999)}", "S50",
                                    "*")) for _ in range(chance.randrange(2, 12))]
            words = self.c.counts().words
            self.put(*items("\r".join(lines).encode("ascii") + b"\r"), seconds=0.1)
            sent = {page.tuning_word(int(line[1:]), self.c.wiring.clock) for line in lines if line[0] == "A"} | {0}
            self.assertLessEqual({word.tuning for word in self.c.words(words)}, sent, lines)
            self.lives()
            self.accepts("A9000000")
        self.has_frequency(9_000_000)

    def test_a_host_that_does_not_wait_in_a_sweep(self):
        self.put(*items(b"G\r"), seconds=0.005)
        self.put(*items(b"A7000000\rB1\r" * 20), seconds=0.005)
        self.assertTrue(self.c.stop().endswith(b"!+\r"))
        self.assertEqual(self.c.tell(b"\r"), b"")
        self.sweeps(START, STEP)

    def test_noise(self):
        """Sends levels of random lengths: the board accepts no command, and one ! frees the line."""
        chance = random.Random(5)
        for _ in range(60):
            self.put(*(f"{'lh'[at % 2]}{chance.choice((3, 20, 40, 90, 200, 450, 900)) * chance.random():.1f}"
                       for at in range(chance.randrange(2, 120))), "h1000")
            self.lives()
        self.has_frequency(9_000_000)
        self.unchanged()

    def test_damaged_lines_at_random(self):
        """Compares the answers to randomly damaged lines with the model board's answers."""
        chance = random.Random(17)
        reference = page.Board(self.c.wiring)
        version = self.c.command("?").split()[1]
        for line in ("A9000000", f"B{START}", f"D{STEP}", "P"):
            for byte in line.encode("ascii") + b"\r":
                reference.take(byte)
        for _ in range(250):
            data = chance.choice(("A", "B", "D", "P", "S", "?", "*", "!", "z", "")) + \
                chance.choice(("", "0", "50", "7000000", "00007000000", "-5", "125000000", "5" * 30))
            sent = []
            for byte in data.encode("ascii") + b"\r":
                sent.append((byte, chance.random() > 0.08))
            wanted = b"".join(reference.take(byte, whole) for byte, whole in sent)
            found = self.put(*(f"{'b' if whole else 'f'}{byte:02x}" for byte, whole in sent), seconds=0.006)
            self.assertEqual(found, wanted.replace(b"{version}", version), sent)
            self.assertEqual(self.c.word(), reference.word, sent)

    def test_a_host_with_another_clock(self):
        for rate in (chip.BAUD * 0.99, chip.BAUD * 1.01):
            self.c.ask(f"baud {self.c.hertz / rate}")
            self.addCleanup(self.c.ask, f"baud {self.c.hertz / chip.BAUD}")
            self.accepts("A00007000000", "B00008980000", "D00000000100", "P")
            self.has_frequency(7_000_000)
            self.sweeps(START, STEP)


class DamageWithTheOtherCrystal(Damage):
    crystal = "18mhz432"
