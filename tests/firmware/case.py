# SPDX-License-Identifier: MIT
"""Base classes for the firmware tests: a chip in its circuit, and a host that sends commands to it."""

import os
import unittest

import chip
import page

ANSWER = 0.5  # s
POWER_UP = 0.05  # s, longer than the chip needs to start
PAUSE = 0.001  # s, the board must be silent this long after an answer
BREATH = 0.000_1  # s


class Chip(chip.Chip):
    """A chip that has started up, with the operations that a host performs."""

    def __init__(self, crystal="20mhz", wiring="AD9850"):
        super().__init__(crystal)
        self.slowest = 0  # s, from the end of a command to the end of its answer
        self.run(POWER_UP)
        self.wire(wiring)

    def wire(self, name):
        """Sets the jumpers and powers up the chip with random RAM contents."""
        self.wiring = page.WIRINGS[name]
        self.ask(f"jumpers {int(self.wiring.j1)} {int(self.wiring.j2)}")
        self.power_up()

    def power_up(self, seed=1):
        self.ask(f"ram {seed}")
        self.ask("disturb")
        self.ask("reset power")
        self.run(POWER_UP)

    def heard(self, first):
        """Returns the bytes since the index `first`."""
        return bytes(byte.value for byte in self.bytes(first))

    def answer(self, first, seconds=ANSWER):
        """Waits for an answer up to its carriage return. Returns the answer or, on a timeout, the bytes so far."""
        end = self.time() + self.cycles(seconds)
        count = first + 3
        while self.expect(count, max(1, end - self.time()) / self.hertz) >= count:
            data = self.heard(first)
            if page.CR in data[2:]:
                return data
            count += 1
        return self.heard(first)

    def tell(self, data):
        """Sends bytes without gaps and returns everything the board sends until the line is silent again."""
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
        """Sends a command, adding the carriage return, and returns the answer."""
        return self.tell(text.encode("latin-1") + b"\r")

    def silence(self, seconds):
        """Waits and returns any bytes that the board sends unprompted."""
        first = self.counts().bytes
        self.run(seconds)
        return self.heard(first)

    def word(self):
        """Returns the generator's tuning word and control byte."""
        last = self.words(self.counts().words - 1)[0]
        return last.tuning, last.control

    def prepare(self, start, step):
        """Sends start, step and P, and returns their answers."""
        return self.command(f"B{start}") + self.command(f"D{step}") + self.command("P")

    def frames(self, count):
        """Sweeps until `count` frames are complete and returns the frames as bytes with time stamps."""
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
        """Waits until the bytes since the index `first` end with the answer to !."""
        end = self.time() + self.cycles(ANSWER)
        while True:
            count = self.counts().bytes
            if self.heard(max(first, count - 3)) == b"!+\r":
                return
            if self.time() >= end:
                raise AssertionError(f"! is not answered: {self.heard(first).hex()}")
            self.expect(count + 1, BREATH * 10)

    def stop(self):
        """Sends ! and returns the bytes up to its answer and any that follow."""
        first = self.counts().bytes
        self.send(b"!")
        self.answer_of_abort(first)
        self.run(PAUSE)
        return self.heard(first)


def bytes_of(frame):
    return bytes(byte.value for byte in frame)


class FirmwareCase(unittest.TestCase):
    """Tests that share a chip; each test starts with a power-up."""

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
        self.assertEqual(self.c.faults()[self.faults_before:], [], "the generator reported faults")
        self.assertTrue(all(byte.framed for byte in self.c.bytes(self.bytes_before)), "a byte without a stop bit")
        self.assertLess(self.c.slowest, ANSWER)

    def says(self, text, answer):
        """Checks that the board answers the command with `answer` and sends nothing else."""
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
        """Sweeps, checks the frames and the tuning words against the plan, and returns the frames."""
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
        """Returns the settling time that the board reports."""
        return int(self.c.command("?").split()[-1])


def note(text):
    """Prints a measured value and, if CALVORN_NOTES is set, appends it to the file of that name."""
    path = os.environ.get("CALVORN_NOTES")
    print(f"-- {text}", flush=True)
    if path:
        with open(path, "a", encoding="utf-8") as file:
            file.write(text + "\n")
