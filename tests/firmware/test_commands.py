# SPDX-License-Identifier: MIT
"""Tests every command, every rejection, and the state that the board retains."""

import random

import case
import page

MHZ7 = 7_000_000
COMMANDS = "?ABDPSG*"
# Large numbers, of which the tests use those above the clock frequency. Some exceed 32 bits and would be below the
# clock frequency if truncated.
HUGE = (1 << 32, (1 << 32) + MHZ7, (1 << 33) + 1, (1 << 36) + MHZ7, 4_294_967_295, 99_999_999_999, 68_719_476_736,
        (1 << 31) + MHZ7, (1 << 31), 99_999_999, 10_000_000_000)


class Answers(case.FirmwareCase):
    """Checks which lines the board accepts and which it rejects."""

    def test_who_is_there(self):
        for name, wiring in page.WIRINGS.items():
            with self.subTest(name):
                self.c.wire(name)
                answer = self.c.command("?")
                self.assertLessEqual(len(answer), 48)
                words = answer.decode("ascii").rstrip("\r").split(" ")
                self.assertEqual(words[0], "?+CALVORN-PIC")
                self.assertRegex(words[1], r"^[0-9][0-9.]*$")
                self.assertEqual(words[2:], [wiring.chip, str(wiring.clock), "50"])
                self.assertTrue(answer.endswith(b"\r"))
        self.accepts("S10000")
        self.assertEqual(self.settling(), 10_000)
        self.refuses("? ", "?x", "?0", "??", "?-")

    def test_limits_of_frequencies(self):
        for name, wiring in page.WIRINGS.items():
            with self.subTest(name):
                self.c.wire(name)
                clock = wiring.clock
                for letter in "AB":
                    self.accepts(*(f"{letter}{hertz}" for hertz in (0, 1, clock // 2, clock - 1)))
                    self.refuses(*(f"{letter}{hertz}" for hertz in (clock, clock + 1)))
                    self.refuses(*(f"{letter}{hertz}" for hertz in HUGE if hertz >= clock))
                self.accepts(*(f"D{hertz}" for hertz in (0, 1, clock - 1, -1, 1 - clock)))
                self.refuses(*(f"D{hertz}" for hertz in (clock, -clock, clock + 1, -clock - 1)))
                self.refuses(*(f"D{hertz}" for hertz in HUGE if hertz >= clock))
                self.refuses(*(f"D-{hertz}" for hertz in HUGE if clock <= hertz < 10**10))

    def test_limits_of_settling(self):
        self.accepts("S20", "S21", "S50", "S255", "S256", "S9999", "S10000", "S0000000020")
        self.refuses("S19", "S0", "S1", "S10001", "S65535", "S65536", "S65586", "S4294967346", "S99999999999", "S",
                     "S-50", "S+50", "S50 ", "S5.0", "S050x")
        self.assertEqual(self.settling(), 20)

    def test_numbers(self):
        for letter in "ABD":
            with self.subTest(letter):
                self.accepts(*(f"{letter}{text}" for text in ("0", "00", "00000000000", "00007000000", "07000000")))
                self.refuses(letter, *(f"{letter}{text}" for text in (
                    "-", "+", "+7000000", " 7000000", "7000000 ", "7000000x", "x", "x7000000", "7,000", "7.0", "7e6",
                    "0x10", "70\t0", "7000000-", "--1", "-", "/", ":", "7:", "7/", "\x00", "7\x007", "7\xff",
                    "A7000000", "7000000A")))
        self.refuses("A-0", "B-0", "A-1", "B-1", "A-7000000", "B-7000000", "D--1", "D+1", "D-", "D1-", "D- 1")
        self.accepts("D-0", "D-1", "D-0000000001", "D-00000000000"[:12])

    def test_twelve_characters_and_thirteen(self):
        self.accepts("A00007000000", "B00007000000", "D00000000100", "D-0000000100", "S00000000050")
        self.has_frequency(MHZ7)
        self.refuses("A000001000000", "B000007000000", "D000000000100", "D-00000000100", "S000000000050",
                     "P            ", "G000000000000", "*            ", "?            ", "A            ")
        self.has_frequency(MHZ7)
        self.assertEqual(self.settling(), 50)

    def test_lines_of_any_length(self):
        # An 8-bit length counter that wraps must not turn a long line into a valid one.
        for length in (14, 20, 50, 100, 127, 128, 129, 254, 255, 256, 257, 258, 263, 264, 265, 268, 269, 300, 520):
            with self.subTest(length):
                self.refuses("A" + "8000000".rjust(length - 1, "0"), "P" + "x" * (length - 1), "z" * length)
        self.assertEqual(self.c.word()[0], 0)

    def test_what_is_no_command(self):
        known = {ord(letter) for letter in COMMANDS} | {page.CR, page.LF, page.ABORT}
        for byte in range(256):
            if byte not in known:
                self.says(chr(byte), chr(byte) + "-\r")
        for text in ("a7000000", "b1", "d1", "p", "g", "s50", "-", "--", " A7000000", "\tP", "7000000", "+"):
            self.refuses(text)
        self.assertEqual(self.c.word()[0], 0)

    def test_line_feeds(self):
        self.assertEqual(self.c.tell(b"\n\n\r\n\r\r\n"), b"")
        self.assertEqual(self.c.tell(b"A7000000\r\n"), b"A+\r")
        self.has_frequency(MHZ7)
        self.assertEqual(self.c.tell(b"\nA\n8000\n000\n\r\n"), b"A+\r")
        self.has_frequency(8_000_000)
        self.assertEqual(self.c.tell(b"A" + b"\n" * 300 + b"9000000\r"), b"A+\r")
        self.has_frequency(9_000_000)
        self.assertEqual(self.c.tell(b"A0000\n1000000" + b"\n\r"), b"A+\r")
        self.has_frequency(1_000_000)
        self.assertEqual(self.c.tell(b"A00000\n1000000\r"), b"A-\r")
        self.assertEqual(self.c.tell(b"\n?\n\r"), self.c.command("?"))

    def test_empty_lines(self):
        self.assertEqual(self.c.tell(b"\r"), b"")
        self.assertEqual(self.c.tell(b"\r\r\r\r"), b"")
        self.assertEqual(self.c.tell(b"\r\rA7000000\r"), b"A+\r")

    def test_points_of_a_sweep(self):
        for name, wiring in page.WIRINGS.items():
            with self.subTest(name):
                self.c.wire(name)
                self.limits_of_plans(wiring.clock)

    def limits_of_plans(self, clock):
        widest = (clock - 1) // 399
        wrapped = round((1 << 32) / 399)  # in 32-bit arithmetic, 399 such steps wrap back to the start
        for start, step in ((0, widest), (clock - 1, -widest), (clock - 1, 0), (0, 0), (clock - 1 - 399, 1), (399, -1),
                            (399 * 1_000, -1_000), (clock - 1 - 399_000, 1_000), (399 * 65_536, -65_536)):
            self.assertEqual(self.c.prepare(start, step), b"B+\rD+\rP+\r", (start, step))
        for start, step in ((1, -1), (398, -1), (clock - 399, 1), (clock - 1, 1), (0, -1), (0, widest + 1),
                            (clock - 1, -widest - 1), (399_000 - 1, -1_000), (clock - 399_000, 1_000),
                            (0, clock - 1), (clock - 1, 1 - clock), (1_000, wrapped), (1_000, -wrapped),
                            (399 * 65_536 - 1, -65_536), (clock - 1, -16_777_216)):
            if abs(step) < clock:
                self.assertEqual(self.c.prepare(start, step), b"B+\rD+\rP-\r", (start, step))

    def test_go_needs_a_plan(self):
        self.refuses("G", "Gx", "G0", "G ")
        self.assertEqual(self.c.prepare(8_980_000, 100), b"B+\rD+\rP+\r")
        self.refuses("Gx", "G0", "G ")
        self.sweeps(8_980_000, 100)
        self.sweeps(8_980_000, 100)

    def test_random_lines(self):
        """Compares the answers to random lines with the model board's answers."""
        chance = random.Random(7)
        reference = page.Board(self.c.wiring)
        version = self.c.command("?").split()[1].decode("ascii")
        for _ in range(700):
            line = self.random_line(chance)
            wanted = b"".join(map(reference.take, line + b"\r"))
            if reference.is_sweeping:
                wanted = b""
                reference.take(page.ABORT)
                line = b""
            answer = self.c.tell(line + b"\r") if line else b""
            self.assertEqual(answer, wanted.replace(b"{version}", version.encode("ascii")), line)
            self.assertEqual(self.c.word(), reference.word, line)

    @staticmethod
    def random_line(chance):
        letter = chance.choice(COMMANDS)
        digits = str(chance.choice((0, 1, 50, 399, 8_980_000, chance.randrange(1 << 27), chance.randrange(1 << 35))))
        text = letter + (chance.choice(("", "-")) + digits if letter in "ABDS" else "")
        for _ in range(chance.choice((0, 0, 0, 1, 2))):
            at = chance.randrange(len(text) + 1)
            text = text[:at] + chance.choice("0123456789-? ABDPG*xz\n") + text[at + chance.randrange(2):]
        return text.encode("ascii")


class Memory(case.FirmwareCase):
    """Checks the state that the board retains against the page's table."""

    def prepared(self):
        self.accepts("A7000000")
        self.assertEqual(self.c.prepare(8_980_000, 100), b"B+\rD+\rP+\r")
        self.accepts("S60")

    def keeps(self, hertz=MHZ7, start=8_980_000, step=100, prepared=True, settling=60):
        """Checks the board's state from its tuning words and frames."""
        if hertz is None:
            self.is_off()
        else:
            self.has_frequency(hertz)
        self.assertEqual(self.settling(), settling)
        if not prepared:
            self.refuses("G")
            self.accepts("P")
        self.sweeps(start, step)

    def test_nothing(self):
        self.prepared()
        self.keeps()

    def test_power_up(self):
        self.is_off()
        self.keeps(hertz=None, start=0, step=0, prepared=False, settling=50)

    def test_start_accepted(self):
        self.prepared()
        self.accepts("B9000000")
        self.keeps(start=9_000_000, prepared=False)

    def test_step_accepted(self):
        self.prepared()
        self.accepts("D-77")
        self.keeps(step=-77, prepared=False)

    def test_start_refused(self):
        for text in ("B", "B125000000", "B-1", "B1x", "B0000000000001"):
            with self.subTest(text):
                self.prepared()
                self.refuses(text)
                self.keeps(prepared=False)

    def test_step_refused(self):
        for text in ("D", "D125000000", "D--1", "D1x", "D0000000000001"):
            with self.subTest(text):
                self.prepared()
                self.refuses(text)
                self.keeps(prepared=False)

    def test_plan_refused(self):
        for text in ("Px", "P0", "P ", "P" + "0" * 20):
            with self.subTest(text):
                self.prepared()
                self.refuses(text)
                self.keeps(prepared=False)
        self.prepared()
        self.accepts("D1000000")
        self.refuses("P", "G")
        self.accepts("D100")
        self.keeps(prepared=False)

    def test_settling_accepted(self):
        self.prepared()
        self.accepts("S70")
        self.keeps(settling=70)

    def test_refused_without_a_trace(self):
        for text in ("S", "S19", "S10001", "S5x", "A", "A125000000", "A5x", "?x", "Gx", "z", "b1", "d1", "p"):
            with self.subTest(text):
                self.prepared()
                self.refuses(text)
                self.keeps()

    def test_frequency_accepted(self):
        self.prepared()
        self.accepts("A123456")
        self.keeps(hertz=123_456)

    def test_abort(self):
        self.prepared()
        self.assertEqual(self.c.tell(b"!"), b"!+\r")
        self.keeps()
        # The generator stays on the last frequency of the sweep.
        last = self.c.words()[-1]
        self.c.run(0.1)
        self.assertEqual(self.c.words()[-1], last)
        self.assertEqual(self.c.tell(b"!"), b"!+\r")
        self.assertEqual(self.c.words()[-1], last)
        self.sweeps(8_980_000, 100)

    def test_off(self):
        self.prepared()
        self.accepts("*")
        self.is_off()
        self.keeps(hertz=None, start=0, step=0, prepared=False)

    def test_off_refused(self):
        for text in ("*x", "* ", "*0", "*" + "0" * 15):
            with self.subTest(text):
                self.prepared()
                self.refuses(text)
                self.keeps(prepared=False)

    def test_off_with_the_multiplier(self):
        self.c.wire("AD9851, six times")
        self.is_off()
        self.accepts("A10000000")
        self.assertEqual(self.c.word()[1], 1)
        self.accepts("*")
        self.assertEqual(self.c.word(), (0, 5))
        self.accepts("P")
        self.sweeps(0, 0)
        self.assertEqual(self.c.word()[1], 1)

    def test_second_try_of_each_command(self):
        """Each command sets a state, so sending it twice does no harm."""
        for text in ("?", "A7000000", "B8980000", "D100", "P", "S60"):
            self.assertEqual(self.c.command(text), self.c.command(text))
        self.keeps()
        self.accepts("*", "*")
        self.is_off()
