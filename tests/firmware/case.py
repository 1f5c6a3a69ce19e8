# SPDX-License-Identifier: MIT
"""What the tests of the firmware share: a chip in its circuit, asked as a host would."""

import os
import unittest

import chip
import page

ANSWER = 0.5  # s
POWER_UP = 0.05  # s, more than the chip takes
PAUSE = 0.001  # s, in which a board that has answered must be quiet
BREATH = 0.000_1  # s


class Chip(chip.Chip):
    """A chip that has started, with the ways of a host."""

    def __init__(self, crystal="20mhz", wiring="AD9850"):
        super().__init__(crystal)
        self.slowest = 0  # s, from the end of a command to the end of its answer
        self.run(POWER_UP)
        self.wire(wiring)

    def wire(self, name):
        """Sets the jumpers and switches the supply on; what is in the RAM then is up to chance."""
        self.wiring = page.WIRINGS[name]
        self.ask(f"jumpers {int(self.wiring.j1)} {int(self.wiring.j2)}")
        self.power_up()

    def power_up(self, seed=1):
        self.ask(f"ram {seed}")
        self.ask("disturb")
        self.ask("reset power")
        self.run(POWER_UP)

    def heard(self, first):
        """The bytes since the given number."""
        return bytes(byte.value for byte in self.bytes(first))

    def answer(self, first, seconds=ANSWER):
        """Waits for an answer up to its carriage return; empty if none comes in time."""
        end = self.time() + self.cycles(seconds)
        count = first + 3
        while self.expect(count, max(1, end - self.time()) / self.hertz) >= count:
            data = self.heard(first)
            if page.CR in data[2:]:
                return data
            count += 1
        return self.heard(first)

    def tell(self, data):
        """Sends bytes, one right after the other, and waits for what comes until the line is quiet again."""
        first = self.counts().bytes
        self.send(data)
        self.run(10 * len(data) / chip.BAUD)
        began = self.time()
        answer = self.answer(first)
        if answer:
            self.slowest = max(self.slowest, (self.time() - began) / self.hertz)
        self.run(PAUSE)
        return self.heard(first)

    def command(self, text):
        """A command without its carriage return; the answer."""
        return self.tell(text.encode("latin-1") + b"\r")

    def silence(self, seconds):
        """What comes although nothing was asked."""
        first = self.counts().bytes
        self.run(seconds)
        return self.heard(first)

    def word(self):
        """Tuning word and control byte that the generator has."""
        last = self.words(self.counts().words - 1)[0]
        return last.tuning, last.control

    def prepare(self, start, step):
        """The answers to start, step and P."""
        return self.command(f"B{start}") + self.command(f"D{step}") + self.command("P")

    def frames(self, count):
        """Starts a sweep, takes so many whole frames, stops it: the stamped bytes of the frames."""
        first = self.counts().bytes
        self.send(b"G\r")
        wanted = first + 3 + count * page.FRAME
        longest = 4 + 0.1 * count
        if self.expect(wanted, longest) < wanted:
            raise AssertionError(f"only {self.counts().bytes - first} bytes after G")
        data = self.bytes(first)[:3 + count * page.FRAME]
        if bytes(byte.value for byte in data[:3]) != b"G+\r":
            raise AssertionError("G is not answered")
        self.stop()
        return [data[at:at + page.FRAME] for at in range(3, len(data), page.FRAME)]

    def answer_of_abort(self, first):
        """Waits until what has come since the given number ends as the answer to ! does."""
        end = self.time() + self.cycles(ANSWER)
        while True:
            count = self.counts().bytes
            if self.heard(max(first, count - 3)) == b"!+\r":
                return
            if self.time() >= end:
                raise AssertionError(f"! is not answered: {self.heard(first).hex()}")
            self.expect(count + 1, BREATH * 10)

    def stop(self):
        """Sends one !; the bytes up to its answer, which must be the last."""
        first = self.counts().bytes
        self.send(b"!")
        self.answer_of_abort(first)
        self.run(PAUSE)
        return self.heard(first)


def bytes_of(frame):
    return bytes(byte.value for byte in frame)


class FirmwareCase(unittest.TestCase):
    """Tests that share a chip; each begins with a supply that is switched on."""

    crystal = "20mhz"
    wiring = "AD9850"

    @classmethod
    def setUpClass(cls):
        cls.chip = Chip(cls.crystal, cls.wiring)
        cls.addClassCleanup(cls.chip.close)

    def setUp(self):
        self.c = self.chip
        self.c.ask("device constant 0")
        self.c.ask("settle 0")
        self.c.wire(self.wiring)
        self.bytes_before = self.c.counts().bytes
        self.faults_before = len(self.c.faults())

    def tearDown(self):
        self.assertEqual(self.c.faults()[self.faults_before:], [], "the generator was treated badly")
        self.assertTrue(all(byte.framed for byte in self.c.bytes(self.bytes_before)), "a byte without a stop bit")
        self.assertLess(self.c.slowest, ANSWER)

    def says(self, text, answer):
        """The command has this answer, and nothing follows."""
        self.assertEqual(self.c.command(text), answer.encode("latin-1"), repr(text))

    def accepts(self, *texts):
        for text in texts:
            self.says(text, text[0] + "+\r")

    def refuses(self, *texts):
        for text in texts:
            self.says(text, text[0] + "-\r")

    def has_frequency(self, hertz):
        self.assertEqual(self.c.word(), (page.tuning_word(hertz, self.c.wiring.clock), self.c.wiring.control), hertz)

    def is_off(self):
        self.assertEqual(self.c.word(), (0, page.POWER_DOWN | self.c.wiring.control))

    def sweeps(self, start, step, count=1):
        """A sweep gives good frames of this plan, with the words of this plan; the frames."""
        words = self.c.counts().words
        frames = self.c.frames(count)
        for number, frame in enumerate(frames):
            data = bytes_of(frame)
            self.assertTrue(page.is_good(data, start, step), f"frame {number}: {data.hex()}")
            self.assertEqual(data[2], number & 0xFF)
        clock = self.c.wiring.clock
        wanted = [(page.tuning_word(start + index * step, clock), self.c.wiring.control)
                  for index in range(page.POINTS)] * count
        found = [(word.tuning, word.control) for word in self.c.words(words)]
        self.assertEqual(found[:len(wanted)], wanted)
        return frames

    def settling(self):
        """The settling time that the board tells."""
        return int(self.c.command("?").split()[-1])


def note(text):
    """A measured value, for the log."""
    path = os.environ.get("CALVORN_NOTES")
    print(f"-- {text}", flush=True)
    if path:
        with open(path, "a", encoding="utf-8") as file:
            file.write(text + "\n")
