# SPDX-License-Identifier: MIT
"""A schematic sheet: symbols, wires and labels on a grid, their connections, and the SVG drawing.

Coordinates are in cells of 3 mm; the sheet is A4 landscape.
"""

import collections
import html

CELL = 12  # SVG units per cell
WIDTH, HEIGHT = 99, 70
FONT = "DejaVu Sans, Verdana, Arial, sans-serif"
GROUND, SUPPLY = "GND", "+5V"


def number(value):
    return f"{value:.1f}".rstrip("0").rstrip(".")


def text_width(text, size):
    """Returns the width in cells, computed for a wide font, so that the text fits in any font."""
    narrow = sum(character in "il1.,;:|'/() " for character in text)
    return (0.66 * len(text) - 0.26 * narrow) * size / CELL


class Sheet:
    def __init__(self):
        self.shapes = []
        self.wires = []  # ((x, y), (x, y))
        self.pins = {}  # (reference, number): (x, y)
        self.names = []  # (net, (x, y)): labels and supply symbols, at the end of a line
        self.remarks = []  # (net, (x, y)): names above a wire, not at the end of a line
        self.stubs = []  # lines that belong to a symbol, in the same format as wires
        self.open = []  # (x, y)
        self.texts = []  # (left, top, right, bottom, text)
        self.solid = []  # (left, top, right, bottom, what): areas that wires and text must not touch

    # --- shapes ---

    def line(self, *points, width=1.4):
        path = " ".join(f"{number(x * CELL)},{number(y * CELL)}" for x, y in points)
        self.shapes.append(f'<polyline points="{path}" fill="none" stroke="#000" stroke-width="{width}"/>')

    def lead(self, one, other):
        self.stubs.append((one, other))
        self.line(one, other)

    def polygon(self, *points, fill="#000"):
        path = " ".join(f"{number(x * CELL)},{number(y * CELL)}" for x, y in points)
        self.shapes.append(f'<polygon points="{path}" fill="{fill}" stroke="#000" stroke-width="1.4"/>')

    def rectangle(self, left, top, right, bottom, width=1.4):
        self.shapes.append(f'<rect x="{number(left * CELL)}" y="{number(top * CELL)}" width="{number((right - left) * CELL)}" '
                           f'height="{number((bottom - top) * CELL)}" fill="none" stroke="#000" stroke-width="{width}"/>')

    def circle(self, x, y, radius, fill="#fff", width=1.4):
        self.shapes.append(f'<circle cx="{number(x * CELL)}" cy="{number(y * CELL)}" r="{number(radius * CELL)}" '
                           f'fill="{fill}" stroke="#000" stroke-width="{width}"/>')

    def text(self, x, y, text, anchor="start", size=11, bold=False):
        """Draws text; y is its baseline."""
        width = text_width(text, size)
        left = x - {"start": 0, "middle": width / 2, "end": width}[anchor]
        self.texts.append((left, y - 0.75 * size / CELL, left + width, y + 0.08 * size / CELL, text))
        weight = ' font-weight="bold"' if bold else ""
        anchored = "" if anchor == "start" else f' text-anchor="{anchor}"'
        self.shapes.append(f'<text x="{number(x * CELL)}" y="{number(y * CELL)}" font-size="{number(size)}"{anchored}{weight}>'
                           f"{html.escape(text, quote=False)}</text>")

    # --- connections ---

    def wire(self, *points):
        for one, other in zip(points, points[1:]):
            if one[0] != other[0] and one[1] != other[1]:
                raise ValueError(f"a wire that is neither level nor upright: {one} to {other}")
            self.wires.append((one, other))
        self.line(*points)

    def ground(self, x, y):
        self.names.append((GROUND, (x, y)))
        self.solid.append((x - 0.85, y + 0.3, x + 0.85, y + 1.3, "ground"))
        self.line((x, y), (x, y + 0.5))
        for step, half in enumerate((0.8, 0.5, 0.2)):
            self.line((x - half, y + 0.5 + 0.35 * step), (x + half, y + 0.5 + 0.35 * step))

    def supply(self, x, y):
        self.names.append((SUPPLY, (x, y)))
        self.line((x, y), (x, y - 0.8))
        self.line((x - 0.7, y - 0.8), (x + 0.7, y - 0.8))
        self.text(x, y - 1.1, "+5 V", "middle")

    def label(self, net, x, y, side):
        """Draws a flag with the net name; its tip is at (x, y), and its body extends to this side."""
        self.names.append((net, (x, y)))
        sign = -1 if side == "left" else 1
        long = text_width(net, 11) + 1.1
        self.polygon((x, y), (x + sign * 0.6, y - 0.65), (x + sign * (long + 0.3), y - 0.65),
                     (x + sign * (long + 0.3), y + 0.65), (x + sign * 0.6, y + 0.65), fill="#fff")
        self.text(x + sign * (0.6 + (long - 0.3) / 2), y + 0.33, net, "middle")

    def name(self, net, x, y, text=None):
        """Writes the net name above a horizontal wire at (x, y)."""
        self.remarks.append((net, (x, y)))
        self.text(x, y - 0.3, text or net, "middle", 10)

    def not_connected(self, x, y):
        self.open.append((x, y))
        self.solid.append((x - 0.35, y - 0.35, x + 0.35, y + 0.35, "the cross of an open pin"))
        self.line((x - 0.35, y - 0.35), (x + 0.35, y + 0.35))
        self.line((x - 0.35, y + 0.35), (x + 0.35, y - 0.35))

    # --- results ---

    def places(self):
        """Counts wire ends, pins and names at each point."""
        ends = collections.Counter(point for wire in self.wires for point in wire)
        ends.update(self.pins.values())
        ends.update(point for _, point in self.names)
        return ends

    def groups(self):
        """Returns the connected groups, each as (net names, pins)."""
        leader = {}

        def find(item):
            while leader.setdefault(item, item) != item:
                item = leader[item]
            return item

        names = self.names + self.remarks
        places = set(self.places()) | {point for _, point in self.remarks}
        for wire in self.wires:
            for point in places:
                if on_wire(point, wire):
                    leader[find(point)] = find(wire[0])
        for net, point in names:
            leader[find(point)] = find(("net", net))
        found = collections.defaultdict(lambda: (set(), set()))
        for net, point in names:
            found[find(point)][0].add(net)
        for pin, point in self.pins.items():
            found[find(point)][1].add(pin)
        return list(found.values())

    def junctions(self):
        """Returns the points where three or more lines meet."""
        meeting = self.places()
        for point in meeting:
            meeting[point] += 2 * sum(on_wire(point, wire) and point not in wire for wire in self.wires)
        return sorted(point for point, lines in meeting.items() if lines > 2)

    def crossings(self):
        return [(one, other) for index, one in enumerate(self.wires) for other in self.wires[index + 1:]
                if cross(one, other)]

    def svg(self, title):
        dots = [f'<circle cx="{number(x * CELL)}" cy="{number(y * CELL)}" r="2.6" fill="#000"/>' for x, y in self.junctions()]
        width, height = WIDTH * CELL, HEIGHT * CELL
        return "\n".join([
            f'<svg xmlns="http://www.w3.org/2000/svg" width="297mm" height="210mm" viewBox="0 0 {width} {height}" '
            f'font-family="{FONT}">',
            "<!-- SPDX-License-Identifier: MIT. Made by hardware/pic-board/draw; do not edit. -->",
            f"<title>{html.escape(title)}</title>",
            f'<rect width="{width}" height="{height}" fill="#fff"/>', *self.shapes, *dots, "</svg>", ""])


def on_wire(point, wire):
    (x1, y1), (x2, y2) = wire
    return min(x1, x2) <= point[0] <= max(x1, x2) and min(y1, y2) <= point[1] <= max(y1, y2)


def cross(one, other):
    """Returns True if two wires cross or overlap where neither of them ends, so that they would look connected."""
    level, upright = (one, other) if one[0][1] == one[1][1] else (other, one)
    if level[0][1] != level[1][1] or upright[0][0] != upright[1][0]:
        return one[0][0 if one[0][0] == one[1][0] else 1] == other[0][0 if one[0][0] == one[1][0] else 1] and overlap(one, other)
    point = (upright[0][0], level[0][1])
    return on_wire(point, level) and on_wire(point, upright) and point not in level and point not in upright


def overlap(one, other):
    """Returns True if two parallel wires on the same line share more than one point."""
    axis = 1 if one[0][0] == one[1][0] else 0
    if (other[0][0] == other[1][0]) != (axis == 1):
        return False
    first, second = sorted(point[axis] for point in one), sorted(point[axis] for point in other)
    return min(first[1], second[1]) > max(first[0], second[0])
