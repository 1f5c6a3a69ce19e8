# SPDX-License-Identifier: MIT
"""The rules of docs/hardware/pic-board.md: tuning words, frames, and a model board that follows every rule."""

import collections

CR = 13
LF = 10
ABORT = 0x21
POINTS = 400
FRAME = 505
SYNC = bytes((0xA5, 0x5A))
SETTLING = 50  # us
LONGEST_LINE = 12

Wiring = collections.namedtuple("Wiring", "j1 j2 chip clock control")
WIRINGS = {
    "AD9850": Wiring(False, False, "AD9850", 125_000_000, 0),
    "AD9850, J2 closed": Wiring(False, True, "AD9850", 125_000_000, 0),
    "AD9851": Wiring(True, False, "AD9851", 30_000_000, 0),
    "AD9851, six times": Wiring(True, True, "AD9851", 180_000_000, 1),
}
POWER_DOWN = 4


def constant(clock):
    return ((1 << 65) // clock + 1) // 2


def tuning_word(hertz, clock):
    """Returns the tuning word computed with the page's formula."""
    return (hertz * constant(clock) + (1 << 31)) >> 32


def exact_word(hertz, clock):
    """Returns the tuning word nearest to the frequency, without using the page's constant."""
    return ((hertz << 33) // clock + 1) // 2


def crc(data, value=0xFFFF):
    for byte in data:
        value ^= byte << 8
        for _ in range(8):
            value = (value << 1 ^ 0x1021 if value & 0x8000 else value << 1) & 0xFFFF
    return value


def plan_bytes(start, step):
    return start.to_bytes(4, "big", signed=True) + step.to_bytes(4, "big", signed=True)


def samples_of(frame):
    """Returns the 400 samples in a frame."""
    found = []
    for at in range(3, 503, 5):
        four = int.from_bytes(frame[at:at + 5], "big")
        found += [four >> shift & 0x3FF for shift in (30, 20, 10, 0)]
    return found


def is_good(frame, start, step):
    return len(frame) == FRAME and frame[:2] == SYNC and crc(frame[2:], crc(plan_bytes(start, step))) == 0


def can_be_swept(start, step, clock):
    return all(0 <= start + index * step < clock for index in (0, POINTS - 1))


class Board:
    """Accepts bytes and returns the answers that the page prescribes. Sweeps start and stop but send no frames."""

    def __init__(self, wiring):
        self.wiring = wiring
        self.line = bytearray()
        self.is_spoilt = False
        self.settling = SETTLING
        self.start = self.step = 0
        self.is_prepared = False
        self.is_sweeping = False
        self.word = (0, POWER_DOWN | wiring.control)

    def take(self, byte, is_whole=True):
        """Returns the answer to one byte, usually empty."""
        if byte == ABORT and is_whole:
            self.line.clear()
            self.is_spoilt = self.is_sweeping = False
            return b"!+\r"
        if self.is_sweeping:
            return b""
        if not is_whole:
            self.is_spoilt = True
        elif byte == CR:
            line, self.line = bytes(self.line), bytearray()
            was_spoilt, self.is_spoilt = self.is_spoilt, False
            if line and not was_spoilt:
                return self.answer(line)
        elif byte != LF:
            self.line.append(byte)
        return b""

    def answer(self, line):
        letter = line[:1]
        rest = line[1:].decode("latin-1")
        rules = {b"?": self.who, b"A": self.frequency, b"B": self.begin, b"D": self.distance, b"P": self.prepare,
                 b"S": self.settle, b"G": self.go, b"*": self.off}
        taken = len(line) <= LONGEST_LINE and letter in rules
        if letter in (b"B", b"D", b"P", b"*"):
            self.is_prepared = False
        good = taken and rules[letter](rest)
        if good and letter == b"?":
            wiring = self.wiring
            text = f"?+CALVORN-PIC {{version}} {wiring.chip} {wiring.clock} {self.settling}\r"
            return text.encode("ascii")
        return letter + (b"+\r" if good else b"-\r")

    @staticmethod
    def number(text, minus=False):
        sign = 1
        if minus and text.startswith("-"):
            sign, text = -1, text[1:]
        return sign * int(text) if text and all(c in "0123456789" for c in text) else None

    def who(self, rest):
        return not rest

    def frequency(self, rest):
        hertz = self.number(rest)
        if hertz is None or hertz >= self.wiring.clock:
            return False
        self.word = (tuning_word(hertz, self.wiring.clock), self.wiring.control)
        return True

    def begin(self, rest):
        hertz = self.number(rest)
        if hertz is None or hertz >= self.wiring.clock:
            return False
        self.start = hertz
        return True

    def distance(self, rest):
        hertz = self.number(rest, minus=True)
        if hertz is None or abs(hertz) >= self.wiring.clock:
            return False
        self.step = hertz
        return True

    def prepare(self, rest):
        self.is_prepared = not rest and can_be_swept(self.start, self.step, self.wiring.clock)
        return self.is_prepared

    def settle(self, rest):
        microseconds = self.number(rest)
        if microseconds is None or not 20 <= microseconds <= 10_000:
            return False
        self.settling = microseconds
        return True

    def go(self, rest):
        self.is_sweeping = not rest and self.is_prepared
        return self.is_sweeping

    def off(self, rest):
        if rest:
            return False
        self.start = self.step = 0
        self.is_prepared = False
        self.word = (0, POWER_DOWN | self.wiring.control)
        return True
