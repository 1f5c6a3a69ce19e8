# SPDX-License-Identifier: MIT
"""Reads a board's netlist. README.md describes its format."""

import pathlib
import re

FOLDER = pathlib.Path(__file__).resolve().parent
ROOT = FOLDER.parents[1]
NETLIST = FOLDER / "pic-board.netlist"
PAGE = ROOT / "docs/hardware/pic-board.md"
SCHEMATIC = ROOT / "docs/hardware/pic-board.svg"
GUIDE = ROOT / "docs/hardware/pic-newcomer.md"


class Part:
    def __init__(self, reference, value, package, role, remark):
        self.reference = reference
        self.value = value
        self.package = package
        self.role = role
        self.remark = remark
        self.pins = {}  # number -> name

    def pin_named(self, name):
        """Returns the number of the pin with this name, or None if there is not exactly one."""
        found = [number for number, of_pin in self.pins.items() if of_pin == name]
        return found[0] if len(found) == 1 else None


class Board:
    """The contents of a netlist. Pins are pairs (reference, number); faults lists the errors in the netlist."""

    def __init__(self):
        self.parts = {}
        self.nets = {}
        self.open = []
        self.decoupling = []  # (capacitor reference, supply pin, ground pin)
        self.also = []  # (quantity, what, package, remark)
        self.faults = []

    def net_of(self, pin):
        """Returns the name of the net that contains this pin, or None."""
        for name, pins in self.nets.items():
            if pin in pins:
                return name
        return None

    def with_role(self, role):
        return [part for part in self.parts.values() if part.role == role]

    def name_of(self, pin):
        return self.parts[pin[0]].pins[pin[1]]


def written(pin):
    return ".".join(pin)


def fields(text, count):
    found = [field.strip() for field in text.split("|")]
    return found if len(found) == count and all(found) else None


def read(path):
    return parse(pathlib.Path(path).read_text(encoding="utf-8"))


def parse(text):
    reader = _Reader()
    for number, line in enumerate(text.splitlines(), 1):
        line = re.sub(r"(^|\s)#.*", "", line).rstrip()
        if line:
            reader.take(number, line)
    return reader.finished()


class _Reader:
    def __init__(self):
        self.board = Board()
        self.body = None  # the function that reads the following indented lines

    def fault(self, sentence):
        self.board.faults.append(sentence)

    def take(self, number, line):
        self.number = number
        if line[0].isspace():
            if self.body:
                self.body(line.strip())
            else:
                self.fault(f"line {number}: an indented line that belongs to nothing")
            return
        keyword, _, rest = line.partition(" ")
        start = {"part": self.part, "also": self.also, "net": self.net, "open": self.open,
                 "decoupling": self.decoupling}.get(keyword)
        if start:
            self.body = start(rest.strip())
        else:
            self.body = None
            self.fault(f'line {number}: "{keyword}" is not a keyword')

    def part(self, rest):
        found = fields(rest, 5)
        if not found:
            self.fault(f"line {self.number}: a part has five fields, none of them empty")
            return None
        part = Part(*found)
        if part.reference in self.board.parts:
            self.fault(f"{part.reference} is described twice")
            return None
        self.board.parts[part.reference] = part

        def pins(line):
            for entry in line.split(","):
                pin, _, name = entry.strip().partition(" ")
                if pin in part.pins:
                    self.fault(f"{part.reference} has two pins {pin}")
                part.pins[pin] = name.strip() or pin
        return pins

    def also(self, rest):
        found = fields(rest, 4)
        if found and found[0].isdigit():
            self.board.also.append((int(found[0]), *found[1:]))
        else:
            self.fault(f'line {self.number}: "also" has four fields and begins with a quantity')

    def net(self, name):
        if not re.fullmatch(r"[A-Za-z0-9_+]+", name):
            self.fault(f'line {self.number}: "{name}" is not the name of a net')
            return None
        if name in self.board.nets:
            self.fault(f"the net {name} is described twice")
            return None
        net = self.board.nets[name] = []
        return lambda line: net.extend(self.pins(line))

    def open(self, rest):
        if rest:
            self.fault(f'line {self.number}: the pins stand below "open"')
        return lambda line: self.board.open.extend(self.pins(line))

    def decoupling(self, rest):
        if rest:
            self.fault(f'line {self.number}: the capacitors stand below "decoupling"')

        def pair(line):
            found = line.split()
            if len(found) == 3:
                self.board.decoupling.append((found[0], *self.pins(" ".join(found[1:]))))
            else:
                self.fault(f"line {self.number}: a capacitor and two pins are needed")
        return pair

    def pins(self, line):
        found = []
        for entry in line.split():
            reference, dot, number = entry.partition(".")
            if not dot or not number:
                self.fault(f'line {self.number}: "{entry}" is not a pin')
            found.append((reference, number))
        return found

    def finished(self):
        board = self.board
        for part in board.parts.values():
            part.pins = part.pins or {"1": "1", "2": "2"}
        named = [pin for net in board.nets.values() for pin in net] + board.open
        named += [pin for pair in board.decoupling for pin in pair[1:]]
        for reference, number in dict.fromkeys(named):
            if reference not in board.parts:
                self.fault(f"{reference}.{number}: there is no part {reference}")
            elif number not in board.parts[reference].pins:
                self.fault(f"{reference}.{number}: {reference} has no pin {number}")
        return board
