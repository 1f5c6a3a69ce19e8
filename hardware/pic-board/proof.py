# SPDX-License-Identifier: MIT
"""Checks that a sheet matches the netlist and is readable. Each check returns a list of error messages."""

import sheet as sheets
from board import written


def listed(pins):
    return " ".join(sorted(map(written, pins)))


def same_connections(board, sheet):
    faults = []
    drawn = {}  # net: pins
    for names, pins in sheet.groups():
        nets = {board.net_of(pin) for pin in pins}
        if names - nets:
            faults.append(f"the sheet names {', '.join(sorted(names))} what the netlist does not: {listed(pins)}")
        if len(pins) == 1 and not names:
            (pin,) = pins
            if pin not in board.open or sheet.pins[pin] not in sheet.open:
                faults.append(f"{written(pin)} ends in the air on the sheet")
        elif len(nets) != 1 or None in nets:
            faults.append(f"the sheet joins {listed(pins)}")
        else:
            net = nets.pop()
            if net in drawn:
                faults.append(f"the net {net} is in two pieces on the sheet: {listed(drawn[net])} and {listed(pins)}")
            drawn.setdefault(net, set()).update(pins)
    for net, pins in board.nets.items():
        missing = set(pins) - drawn.get(net, set())
        if missing:
            faults.append(f"the sheet does not have on the net {net}: {listed(missing)}")
    return faults


def apart(one, other):
    return one[2] <= other[0] or other[2] <= one[0] or one[3] <= other[1] or other[3] <= one[1]


def inside(one, other):
    return other[0] <= one[0] and other[1] <= one[1] and one[2] <= other[2] and one[3] <= other[3]


def box(wire):
    (x1, y1), (x2, y2) = wire
    return (min(x1, x2), min(y1, y2), max(x1, x2), max(y1, y2))


def grown(area, by):
    return (area[0] - by, area[1] - by, area[2] + by, area[3] + by)


def readable(sheet):
    faults = [f"two wires cross: {one} and {other}" for one, other in sheet.crossings()]
    frame = (1.3, 1.3, sheets.WIDTH - 1.3, sheets.HEIGHT - 1.3)
    for index, text in enumerate(sheet.texts):
        if not inside(text, frame):
            faults.append(f'the text "{text[4]}" does not fit into the frame')
        for other in sheet.texts[index + 1:]:
            if not apart(text, other):
                faults.append(f'two texts overlap: "{text[4]}" and "{other[4]}"')
        for wire in sheet.wires + sheet.stubs:
            if not apart(text, grown(box(wire), 0.06)):
                faults.append(f'the text "{text[4]}" lies on the line {wire}')
        for solid in sheet.solid:
            if not apart(text, solid) and not inside(text, solid):
                faults.append(f'the text "{text[4]}" lies on {solid[4]}')
    for wire in sheet.wires:
        for solid in sheet.solid:
            if not apart(box(wire), grown(solid, -0.05)):
                faults.append(f"the wire {wire} goes through {solid[4]}")
    for index, solid in enumerate(sheet.solid):
        for other in sheet.solid[index + 1:]:
            if not apart(solid, other):
                faults.append(f"{solid[4]} and {other[4]} overlap")
    return faults


def check(board, sheet):
    return same_connections(board, sheet) + readable(sheet)
