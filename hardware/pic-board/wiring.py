# SPDX-License-Identifier: MIT
"""Checks that a netlist is internally consistent. Each check returns a list of error messages."""

import collections
import re

from board import written

SUPPLY = "+5V"
GROUND = "GND"
SUPPLIED = ("controller", "generator", "serial bridge")
SUPPLY_PINS = ("VDD", "VCC")
RAIL_OF = {"VDD": SUPPLY, "VCC": SUPPLY, "+5V": SUPPLY, "+": SUPPLY, "VSS": GROUND, "GND": GROUND, "shield": GROUND,
           "-": GROUND}
FACTORS = {"p": 1e-12, "n": 1e-9, "u": 1e-6, "": 1.0, "k": 1e3, "M": 1e6}


def amount(value):
    """Converts "100 nF" to (1e-7, "F"). Returns None unless the value is a number with a unit."""
    found = re.fullmatch(r"([\d.]+) ([pnukM]?)(F|ohm)", value)
    return (float(found[1]) * FACTORS[found[2]], found[3]) if found else None


def same_amount(one, other):
    one, other = amount(one), amount(other)
    return bool(one and other) and one[1] == other[1] and abs(one[0] - other[0]) <= 1e-9 * abs(one[0])


def pins_once(board):
    faults = []
    uses = collections.defaultdict(list)
    for name, pins in board.nets.items():
        for pin in pins:
            uses[pin].append(name)
    for pin in board.open:
        uses[pin].append("open")
    for pin, places in uses.items():
        if len(places) > 1:
            faults.append(f"{written(pin)} occurs {len(places)} times: {', '.join(places)}")
    for part in board.parts.values():
        for number in part.pins:
            if (part.reference, number) not in uses:
                faults.append(f"{part.reference}.{number} ({part.pins[number]}) is in no net and not open")
    return faults


def nets_join(board):
    return [f"the net {name} has {'one pin only' if pins else 'no pin'}"
            for name, pins in board.nets.items() if len(pins) < 2]


def rails(board):
    """Checks pins named after a supply rail, including those of connectors and C9."""
    faults = []
    for part in board.parts.values():
        for number, name in part.pins.items():
            net = board.net_of((part.reference, number))
            if name in RAIL_OF and net != RAIL_OF[name]:
                faults.append(f"{part.reference}.{number} ({name}) is {'on ' + net if net else 'open'}, not on {RAIL_OF[name]}")
    return faults


def joined(board, role, one, other):
    """Returns True if a part with this role connects the two nets."""
    return one != other and any({board.net_of((part.reference, number)) for number in part.pins} == {one, other}
                                for part in board.with_role(role))


def output(board):
    """Checks that a capacitor connects one of the generator's sine outputs to the centre of the socket."""
    faults = []
    sines = {board.net_of((part.reference, number)) for part in board.with_role("generator")
             for number, name in part.pins.items() if name.startswith("ZOUT")} - {None}
    for part in board.with_role("output"):
        centre = board.net_of((part.reference, part.pin_named("centre")))
        if not any(joined(board, "capacitor", sine, centre) for sine in sines):
            faults.append(f"no capacitor joins a sine output of the generator to the centre of {part.reference}")
    return faults


def lamp(board):
    faults = []
    for part in board.with_role("power lamp"):
        if not joined(board, "resistor", SUPPLY, board.net_of((part.reference, "A"))):
            faults.append(f"no resistor joins {SUPPLY} to the anode of {part.reference}")
        if board.net_of((part.reference, "K")) != GROUND:
            faults.append(f"the cathode of {part.reference} is not on {GROUND}")
    return faults


def parts_join_two_nets(board):
    """Finds parts with both ends on the same net, which have no effect."""
    faults = []
    for part in board.parts.values():
        nets = {board.net_of((part.reference, number)) for number in part.pins}
        if len(part.pins) == 2 and len(nets) == 1 and None not in nets:
            faults.append(f"{part.reference} has both ends on the net {nets.pop()}")
    return faults


def values(board):
    units = {"resistor": "ohm", "capacitor": "F"}
    return [f'{part.reference}: "{part.value}" is no value of a {part.role}' for part in board.parts.values()
            if part.role in units and (amount(part.value) or (0, ""))[1] != units[part.role]]


def decoupling(board):
    faults = []
    taken = collections.Counter(pair[0] for pair in board.decoupling)
    for capacitor, count in taken.items():
        if count > 1:
            faults.append(f"{capacitor} is said to decouple {count} pairs of pins")
    for capacitor, plus, minus in board.decoupling:
        part = board.parts.get(capacitor)
        if not part or part.role != "capacitor":
            faults.append(f"{capacitor}, at {written(plus)}, is not a capacitor of the list")
            continue
        ends = {board.net_of((capacitor, number)) for number in part.pins}
        if board.net_of(plus) != SUPPLY or board.net_of(minus) != GROUND or ends != {SUPPLY, GROUND}:
            faults.append(f"{capacitor} does not connect {written(plus)} on {SUPPLY} to {written(minus)} on {GROUND}")
        elif amount(part.value) and amount(part.value)[0] < 99e-9:
            faults.append(f"{capacitor}, at {written(plus)}, is below 100 nF")
        if plus[0] != minus[0]:
            faults.append(f"{capacitor}: {written(plus)} and {written(minus)} are pins of two parts")
    served = [plus for _, plus, _ in board.decoupling]
    for role in SUPPLIED:
        for part in board.with_role(role):
            for number, name in part.pins.items():
                if name in SUPPLY_PINS and (part.reference, number) not in served:
                    faults.append(f"{part.reference}.{number} ({name}) has no decoupling capacitor")
    return faults


def check(board):
    if board.faults:
        return list(board.faults)
    tests = (pins_once, nets_join, rails, output, lamp, parts_join_two_nets, values, decoupling)
    return [fault for test in tests for fault in test(board)]
