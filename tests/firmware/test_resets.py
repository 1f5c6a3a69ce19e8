# SPDX-License-Identifier: MIT
"""Tests all kinds of reset, the watchdog, the pins, and the firmware's use of stack and memory."""

import random

import case
import chip
import page

KINDS = ("power", "mclr", "watchdog", "brownout")
SILENCE = 0.3  # s
RESTART = 1.0  # s, a restarting board must answer within this time
START = 8_980_000
STEP = 100
SHORTEST_WATCHDOG = 7e-3  # s, the minimum in the chip's data sheet, without prescaler
PLACES_OF_STACK = 8
GOTO = 0x2800
OPTION = 0x81
CONFIGURATION = 0x2007
PROGRAM_WORDS = 8192

# Pin numbers: unconnected pins, the jumpers, the programmer, and the generator.
OPEN = (3, 4, 6, 7, 8, 9, 10, 15, 16, 17, 18, 23, 24, 27, 28, 29, 30, 35, 36, 37, 38)
JUMPERS = (33, 34)
PROGRAMMER = (39, 40)
GENERATOR = (19, 20, 21, 22)


class Resets(case.FirmwareCase):
    def starts_again(self, kind):
        first = self.c.counts().bytes
        words = self.c.counts().words
        self.c.ask(f"reset {kind}")
        began = self.c.time()
        self.assertEqual(self.c.silence(SILENCE), b"")
        self.assertEqual(self.c.counts().bytes, first)
        off = [(word.tuning, word.control) for word in self.c.words(words)]
        self.assertEqual(off, [(0, page.POWER_DOWN | self.c.wiring.control)])
        return (self.c.words(words)[0].cycle - began) / self.c.hertz

    def is_new(self):
        """Checks that the board is in its power-up state."""
        self.assertEqual(self.c.tell(b"!"), b"!+\r")
        self.refuses("G")
        self.assertEqual(self.settling(), page.SETTLING)
        self.accepts("P")
        self.sweeps(0, 0)

    def test_while_it_waits(self):
        slowest = 0
        for name in page.WIRINGS:
            self.c.wire(name)
            for kind in KINDS:
                with self.subTest(kind, wiring=name):
                    self.accepts("A7000000", "S70")
                    self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")
                    self.has_frequency(7_000_000)
                    slowest = max(slowest, self.starts_again(kind))
                    self.is_new()
        case.note(f"{self.crystal}: off {slowest * 1e3:.2f} ms after a reset")

    def test_in_a_sweep(self):
        """Resets the chip at random times, including in the middle of a word or a byte."""
        chance = random.Random(23)
        for number in range(24):
            kind = KINDS[number % len(KINDS)]
            with self.subTest(kind, number=number):
                self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")
                self.c.send(b"G\r")
                self.c.run(0.002 + chance.random() * 0.005)
                # The reset may cut off a byte, so bytes up to here are ignored.
                self.c.ask(f"reset {kind}")
                self.c.run(0.002)
                self.bytes_before = self.c.counts().bytes
                self.assertEqual(self.c.silence(SILENCE), b"")
                self.is_off()
                self.is_new()

    def test_in_a_command(self):
        chance = random.Random(29)
        for number in range(16):
            kind = KINDS[number % len(KINDS)]
            with self.subTest(kind, number=number):
                self.c.send(b"A7000000\r")
                self.c.run(10 * 9 / chip.BAUD * chance.choice((chance.random(), 1 + chance.random())))
                self.c.ask(f"reset {kind}")
                self.c.run(0.002)
                self.bytes_before = self.c.counts().bytes
                self.assertEqual(self.c.silence(SILENCE), b"")
                self.is_off()
                self.assertEqual(self.c.tell(b"!"), b"!+\r")
                self.accepts("A5000000")
                self.has_frequency(5_000_000)

    def test_generator_in_an_unknown_state(self):
        """A short supply failure leaves the generator and the RAM in an undefined state."""
        for seed in range(2, 12):
            self.c.power_up(seed)
            self.is_off()
            self.is_new()
            self.accepts("A7000000")
            self.has_frequency(7_000_000)

    def test_answers_soon(self):
        """A host that opens the port sends ! immediately, and again after 0.5 s without an answer."""
        for delay in (0.0005, 0.005, 0.05, 0.5):
            first = self.c.counts().bytes
            self.c.ask("reset mclr")
            began = self.c.time()
            self.c.run(delay)
            self.c.send(b"!")
            self.c.run(case.ANSWER)
            if not self.c.heard(first).endswith(b"!+\r"):
                self.c.send(b"!")
                self.c.run(RESTART - (self.c.time() - began) / self.c.hertz)
            self.assertEqual(self.c.heard(first), b"!+\r", delay)

    def test_jumpers_are_read_once(self):
        self.c.wire("AD9850")
        self.c.ask("jumpers 1 1")
        self.accepts("A10000000")
        self.assertEqual(self.c.word(), (page.tuning_word(10_000_000, 125_000_000), 0))
        self.assertIn(b"AD9850 125000000", self.c.command("?"))
        self.c.ask("reset mclr")
        self.c.run(case.POWER_UP)
        self.assertIn(b"AD9851 180000000", self.c.command("?"))

    def test_pins(self):
        """Unconnected pins are outputs at 0, or inputs with pull-up."""
        for moment in ("idle", "sweep"):
            if moment == "sweep":
                self.accepts("P")
                self.c.send(b"G\r")
                self.c.run(0.01)
            pins = dict(enumerate(self.c.ask("pins").split(), 1))
            for pin in OPEN:
                side, level, volts, ohms = pins[pin][0], pins[pin][1], *map(float, pins[pin][3:].split(":"))
                pulled = side == "i" and level == "1" and volts == 5 and ohms < 1e5
                self.assertTrue(pulled or (side, level) == ("o", "0"), (pin, pins[pin]))
            for pin in (*JUMPERS, *PROGRAMMER):
                self.assertEqual(pins[pin][0], "i", pin)
                self.assertLess(float(pins[pin].split(":")[2]), 1e5, pin)
            for pin in GENERATOR:
                self.assertEqual(pins[pin][0], "o", pin)
        self.c.stop()


class ResetsOfTheOtherCrystal(Resets):
    crystal = "18mhz432"


class Program(case.FirmwareCase):
    """Tests the watchdog and the stack."""

    def prescaler(self):
        """Returns the watchdog prescaler."""
        option = int(self.c.ask(f"register {OPTION}"))
        return 1 << (option & 7) if option & 8 else 1

    def hang(self):
        """Puts an endless loop at the program counter until the next reset and returns its address."""
        for attempt in range(100):
            self.c.ask(f"run {1 + 37 * attempt}")
            place = int(self.c.ask("pc"))
            opcode = self.c.ask(f"poke {place} {GOTO | place & 0x7FF} 0")
            self.c.run(0.001)
            stands = int(self.c.ask("pc")) == place
            self.c.ask(f"poke {place} {opcode} 0")
            if stands:
                self.c.ask(f"poke {place} {GOTO | place & 0x7FF} 1")
                return place
        raise AssertionError("the firmware cannot be stopped")

    def test_watchdog_bites(self):
        """The watchdog restarts a firmware that hangs anywhere, with the generator off and the line silent."""
        for sweeping in (False, True, False, True):
            self.accepts("A7000000")
            self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")
            if sweeping:
                self.c.send(b"G\r")
                self.c.run(0.01)
            place = self.hang()
            began = self.c.time()
            words = self.c.counts().words
            self.c.run(0.001)
            self.assertEqual(int(self.c.ask("pc")), place)
            self.bytes_before = self.c.counts().bytes
            self.assertEqual(self.c.silence(0.040 * self.prescaler()), b"")
            self.assertEqual(self.c.counts().words, words + 1, "the watchdog does not bite")
            self.is_off()
            case.note(f"the watchdog bites after {(self.c.words()[-1].cycle - began) / self.c.hertz * 1e3:.0f} ms")
            self.assertEqual(self.c.tell(b"!"), b"!+\r")
            self.refuses("G")

    def test_longest_stretch_and_stack(self):
        """The firmware checks the line and clears the watchdog often enough, whatever it does."""
        self.c.stretches()
        self.c.run(1)
        idle = self.c.stretches()
        for text in ("?", "A124999999", "B124999999", "D-313283", "P", "S10000", "x" * 40):
            self.c.command(text)
        busy = self.c.stretches()
        self.sweeps(124_999_999, -313_283)
        slow = self.c.stretches()
        self.accepts("S20")
        self.sweeps(124_999_999, -313_283, 3)
        fast = self.c.stretches()
        for name, found in (("idle", idle), ("commands", busy), ("slow sweep", slow), ("fast sweep", fast)):
            case.note(f"{name}: longest time between looks at OERR {found.line / self.c.hertz * 1e3:.3f} ms, between "
                      f"clearings of the watchdog {found.watchdog / self.c.hertz * 1e3:.3f} ms")
            self.assertGreater(found.line, 0)
            self.assertLess(found.line / self.c.hertz, case.ANSWER)
            self.assertLess(found.watchdog / self.c.hertz, SHORTEST_WATCHDOG * self.prescaler() / 2)
        case.note(f"stack: {fast.deepest} of {PLACES_OF_STACK}; watchdog: prescaler {self.prescaler()}")
        self.assertLessEqual(fast.deepest, PLACES_OF_STACK)
        self.assertGreater(fast.deepest, 0)
        self.assertEqual(fast.shallowest, 0)


class Image(case.unittest.TestCase):
    """Tests the .hex files."""

    def words(self, crystal):
        """Returns the program words, keyed by address."""
        found = {}
        base = 0
        for line in (chip.firmware() / f"{chip.PROCESSOR}-{crystal}.hex").read_text("ascii").split():
            record = bytes.fromhex(line[1:])
            self.assertEqual(sum(record) & 0xFF, 0)
            count, address, kind, data = record[0], int.from_bytes(record[1:3], "big"), record[3], record[4:-1]
            self.assertEqual(len(data), count)
            if kind == 4:
                base = int.from_bytes(data, "big") << 16
            elif kind == 0:
                for at in range(0, count, 2):
                    found[(base + address + at) // 2] = int.from_bytes(data[at:at + 2], "little")
        return found

    def test_image(self):
        for crystal in chip.CRYSTALS:
            words = self.words(crystal)
            configuration = words.pop(CONFIGURATION)
            self.assertEqual(configuration & 3, 2, "a crystal above 4 MHz")
            self.assertEqual(configuration & 0x80, 0, "RB3 is open: no low-voltage programming")
            self.assertTrue(configuration & 0x800, "RB6 and RB7 belong to no debugger")
            self.assertTrue(all(address < PROGRAM_WORDS for address in words), "code beyond the memory")
            self.assertTrue(all(word < 1 << 14 for word in words.values()))
            case.note(f"{crystal}: {len(words)} of {PROGRAM_WORDS} words, configuration {configuration:04X}: watchdog "
                      f"{'on' if configuration & 4 else 'off'}, brown-out {'on' if configuration & 0x40 else 'off'}")
