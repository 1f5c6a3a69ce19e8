# SPDX-License-Identifier: MIT
"""Compares a netlist with the "The pins" section of docs/hardware/pic-board.md."""

import re

from board import written
from wiring import GROUND, SUPPLY, same_amount

RAILS = {"+5 V": SUPPLY, "ground": GROUND}
STRAPS = "wire D0 and D1 to + and D2 to ground (D3 to D6 to ground, too)"


def rows(page):
    """Returns [number, name, signal, connect] for each row in the pin table."""
    section = re.search(r"^## The pins$(.*?)(?=^## |\Z)", page, re.M | re.S)
    found = re.findall(r"^\| *(\d+) *\|([^|]*)\|([^|]*)\|([^|]*)\| *$", section[1] if section else "", re.M)
    return [[cell.strip() for cell in row] for row in found]


class PinCheck:
    """Compares a controller pin with its row. Each phrase in the "connect" column accounts for some net pins."""

    def __init__(self, board, controller, row):
        self.board = board
        self.number, self.name, self.signal, self.connect = row
        self.pin = (controller.reference, self.number)
        self.net = board.net_of(self.pin)
        self.explained = {self.pin}
        self.faults = []

    def fault(self, sentence):
        self.faults.append(f"pin {self.number} ({self.name}): {sentence}")

    PHRASES = (
        (r"open(?=$)", "open"),
        (r"ground with an AD9851[^,;]*(?:, open with an AD9850)?", "jumper"),
        (r"weak pull-up in the chip", "nothing"),
        (r"programmer, pin (\w+)", "programmer"),
        (r"([\d.]+ [kM]?ohm|[\d.]+ [pnu]F) to (\+5 V|ground)", "part_to_rail"),
        (r"([\d.]+ [pnu]F) to pin (\d+)", "decoupling"),
        (r"([\d.]+ [kM]?ohm) from the detector's output", "detector"),
        (r"crystal of ([\d.]+) or ([\d.]+) MHz", "crystal"),
        (r"the crystal's other end", "other_end"),
        (r"the generator's (\w+)(?: \(serial data\))?", "generator"),
        (r"(RXD|TXD) of the serial bridge", "bridge"),
        (r"2\.5 V", "reference"),
        (r"(\+5 V|ground)", "rail"),
    )

    def run(self):
        rest = self.connect
        while rest:
            for pattern, method in self.PHRASES:
                found = re.match(pattern, rest)
                if found:
                    getattr(self, method)(*found.groups())
                    rest = rest[found.end():].lstrip(" ,;")
                    break
            else:
                self.fault(f'the page says "{rest}", which this script does not understand')
                break
        if self.net and self.net not in RAILS.values():
            for pin in self.board.nets[self.net]:
                if pin not in self.explained:
                    self.fault(f"{written(pin)} is on its net {self.net}, but not in the table of the page")
        return self.faults

    def on_net(self, part, name, what):
        number = part.pin_named(name)
        if number is None:
            self.fault(f'{part.reference} has not exactly one pin "{name}"')
        elif self.net is None or self.board.net_of((part.reference, number)) != self.net:
            self.fault(f"not connected to {what}, {part.reference}.{number}")
        else:
            self.explained.add((part.reference, number))

    def only(self, role):
        found = self.board.with_role(role)
        if len(found) != 1:
            self.fault(f'the netlist has {len(found)} parts with the role "{role}", not one')
            return None
        return found[0]

    def between(self, role, other_net, value=None):
        """Returns a part with this role and value that connects this net to another, and adds its pin to "explained"."""
        for part in self.board.with_role(role):
            nets = {number: self.board.net_of((part.reference, number)) for number in part.pins}
            fits = value is None or same_amount(part.value, value)
            if self.net and fits and set(nets.values()) == {self.net, other_net}:
                number = next(number for number, net in nets.items() if net == self.net)
                self.explained.add((part.reference, number))
                return part
        return None

    def nothing(self):
        pass

    def open(self):
        if self.pin not in self.board.open:
            self.fault("open on the page, not in the netlist")

    def rail(self, rail):
        if self.net != RAILS[rail]:
            self.fault(f"{rail} on the page, {self.net or 'open'} in the netlist")

    def jumper(self):
        name = self.signal.removeprefix("jumper ")
        part = self.board.parts.get(name)
        if not part or not self.between("jumper", GROUND) or (name, "1") not in self.explained:
            self.fault(f"no jumper {name} between it and {GROUND}")

    def programmer(self, name):
        part = self.only("programmer")
        if part:
            self.on_net(part, name, "the programmer's pin " + name)

    def part_to_rail(self, value, rail):
        role = "resistor" if value.endswith("ohm") else "capacitor"
        if not self.between(role, RAILS[rail], value):
            self.fault(f"no {role} of {value} to {rail}")

    def decoupling(self, value, number):
        pair = (self.pin, (self.pin[0], number))
        for capacitor, *pins in self.board.decoupling:
            part = self.board.parts.get(capacitor)
            if tuple(pins) == pair and part and same_amount(part.value, value):
                return
        self.fault(f"no decoupling capacitor of {value} to pin {number}")

    def detector(self, value):
        part = self.only("detector")
        output = part and self.board.net_of((part.reference, part.pin_named("OUT")))
        if part and (output is None or not self.between("resistor", output, value)):
            self.fault(f"no resistor of {value} from the detector's output")

    def crystal(self, *frequencies):
        part = self.only("crystal")
        if part and part.value not in [frequency + " MHz" for frequency in frequencies]:
            self.fault(f"the crystal {part.reference} has {part.value}, not {' or '.join(frequencies)} MHz")
        if part:
            self.end_of_crystal(part, "1")

    def other_end(self):
        part = self.only("crystal")
        if part:
            self.end_of_crystal(part, "2")

    def end_of_crystal(self, part, number):
        if self.net and self.board.net_of((part.reference, number)) == self.net:
            self.explained.add((part.reference, number))
        else:
            self.fault(f"not connected to the crystal, {part.reference}.{number}")

    def generator(self, name):
        part = self.only("generator")
        if not part:
            return
        self.on_net(part, name, "the generator's " + name)
        if name == "D7" and "DATA" in part.pins.values():  # the modules have two pins for D7
            self.on_net(part, "DATA", "the generator's DATA")

    def bridge(self, name):
        part = self.only("serial bridge")
        if part:
            self.on_net(part, name, name + " of the serial bridge")

    def reference(self):
        part = self.only("reference")
        if not part:
            return
        if "2.5" not in part.value:
            self.fault(f"the reference {part.reference} is {part.value}, not 2.5 V")
        self.on_net(part, "K", "the reference")
        if self.board.net_of((part.reference, "A")) != GROUND:
            self.fault(f"{part.reference}.A, the reference's other end, is not on {GROUND}")
        if not self.between("resistor", SUPPLY):
            self.fault("no resistor feeds the reference from +5 V")


def straps(board, page):
    if STRAPS not in page:
        return [f'the page no longer says "{STRAPS}"']
    faults = []
    for part in board.with_role("generator"):
        for name, net in [("D0", SUPPLY), ("D1", SUPPLY)] + [(f"D{bit}", GROUND) for bit in range(2, 7)]:
            if board.net_of((part.reference, part.pin_named(name))) != net:
                faults.append(f"{name} of the generator {part.reference} is not on {net}: the serial mode needs it there")
    return faults


def check(board, page):
    table = rows(page)
    if not table:
        return ['the page has no table of pins in a section "The pins"']
    controllers = board.with_role("controller")
    if len(controllers) != 1:
        return [f"the netlist has {len(controllers)} controllers, not one"]
    controller = controllers[0]
    faults = []
    numbers = [row[0] for row in table]
    for number in sorted(set(numbers) | set(controller.pins), key=lambda text: (len(text), text)):
        if numbers.count(number) != 1:
            faults.append(f"pin {number} has {numbers.count(number)} rows in the table of the page, not one")
        if number not in controller.pins:
            faults.append(f"pin {number} of the page is not a pin of {controller.reference}")
    for row in table:
        name = controller.pins.get(row[0])
        if name is None:
            continue
        if name != row[1]:
            faults.append(f"pin {row[0]} is {row[1]} on the page, {name} in the netlist")
        faults += PinCheck(board, controller, row).run()
    return faults + straps(board, page)
