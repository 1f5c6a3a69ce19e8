# SPDX-License-Identifier: MIT
"""Draws the part symbols. A two-pin symbol lies on the line from its first pin to its second pin."""

from bill import readable


class Symbols:
    def __init__(self, board, sheet):
        self.board = board
        self.sheet = sheet

    # --- boxes ---

    def box(self, reference, left, top, right, bottom, on_left=(), on_right=(), numbers=True, lead=2, title=None):
        """Draws a box with a pin at each (number, y), and a cross at each open pin."""
        part = self.board.parts[reference]
        sheet = self.sheet
        sheet.rectangle(left, top, right, bottom, width=2)
        sheet.solid.append((left, top, right, bottom, reference))
        sheet.text((left + right) / 2, top - 0.6, title or f"{reference} {part.value}", "middle", 12, True)
        for pins, edge, sign, anchor in ((on_left, left, -1, "end"), (on_right, right, 1, "start")):
            for number, y in pins:
                tip = (edge + sign * lead, y)
                sheet.lead((edge, y), tip)
                sheet.pins[(reference, number)] = tip
                sheet.text(edge - sign * 0.5, y + 0.33, part.pins[number], "start" if sign < 0 else "end")
                if numbers:
                    sheet.text(edge + sign * 0.25, y - 0.25, number, anchor, 9)
                if (reference, number) in self.board.open:
                    sheet.not_connected(*tip)

    # --- parts with two pins ---

    def two(self, draw, reference, first, second, label="right", text=None):
        """Draws a part. draw() receives a function that converts (along, across), relative to its centre, to (x, y)."""
        part = self.board.parts[reference]
        numbers = list(part.pins)
        (x1, y1), (x2, y2) = first, second
        length = abs(x2 - x1) + abs(y2 - y1)
        dx, dy = (x2 - x1) / length, (y2 - y1) / length
        x, y = (x1 + x2) / 2, (y1 + y2) / 2
        self.sheet.pins[(reference, numbers[0])] = first
        self.sheet.pins[(reference, numbers[1])] = second

        def place(along, across):
            return (x + along * dx - across * dy, y + along * dy + across * dx)

        half, wide = draw(place)
        self.sheet.lead(first, place(-half, 0))
        self.sheet.lead(place(half, 0), second)
        across, along = (wide, half) if dx == 0 else (half, wide)
        self.sheet.solid.append((x - across, y - along, x + across, y + along, reference))
        self.caption(x, y, across, along, label, [reference, readable(part.value) if text is None else text])

    def caption(self, x, y, across, along, side, lines):
        sheet = self.sheet
        if side in ("left", "right"):
            anchor = "start" if side == "right" else "end"
            x += (across + 0.4) * (1 if side == "right" else -1)
            for index, line in enumerate(lines):
                sheet.text(x, y + 0.33 + 1.1 * (index - (len(lines) - 1) / 2), line, anchor)
        elif side == "above":
            sheet.text(x, y - along - 0.4, " ".join(filter(None, lines)), "middle")
        else:
            sheet.text(x, y + along + 1.1, " ".join(filter(None, lines)), "middle")

    def resistor(self, reference, first, second, label="right"):
        def draw(place):
            corners = [place(-1.2, -0.42), place(1.2, 0.42)]
            (x1, y1), (x2, y2) = corners
            self.sheet.rectangle(min(x1, x2), min(y1, y2), max(x1, x2), max(y1, y2))
            return 1.2, 0.42
        self.two(draw, reference, first, second, label)

    def capacitor(self, reference, first, second, label="right", polar=False):
        def draw(place):
            self.sheet.line(place(-0.25, -0.9), place(-0.25, 0.9), width=2)
            self.sheet.line(place(0.25, -0.9), place(0.25, 0.9), width=2)
            if polar:
                x, y = place(-0.85, 0.75)
                self.sheet.line((x - 0.3, y), (x + 0.3, y))
                self.sheet.line((x, y - 0.3), (x, y + 0.3))
            return 0.25, 0.9
        self.two(draw, reference, first, second, label)

    def crystal(self, reference, first, second, label="right"):
        def draw(place):
            self.sheet.line(place(-0.75, -0.9), place(-0.75, 0.9), width=2)
            self.sheet.line(place(0.75, -0.9), place(0.75, 0.9), width=2)
            self.sheet.polygon(place(-0.4, -0.9), place(0.4, -0.9), place(0.4, 0.9), place(-0.4, 0.9), fill="#fff")
            return 0.75, 0.9
        self.two(draw, reference, first, second, label)

    def lamp(self, reference, first, second, label="right"):
        """Draws an LED; first is the anode, second the cathode."""
        def draw(place):
            self.sheet.polygon(place(-0.6, -0.7), place(-0.6, 0.7), place(0.6, 0), fill="#fff")
            self.sheet.line(place(0.6, -0.7), place(0.6, 0.7), width=2)
            for shift in (-0.35, 0.35):
                tail, tip = place(shift, -0.95), place(shift + 0.45, -1.75)
                self.sheet.line(tail, tip)
                self.sheet.line(place(shift + 0.05, -1.5), tip, place(shift + 0.55, -1.25))
            return 0.6, 0.7
        self.two(draw, reference, first, second, label)

    def jumper(self, reference, first, second, label="above", text=None):
        def draw(place):
            self.sheet.circle(*place(-0.8, 0), 0.28)
            self.sheet.circle(*place(0.8, 0), 0.28)
            self.sheet.line(place(-0.8, -0.6), place(0.8, -0.6), width=2)
            return 1.08, 0.6
        self.two(draw, reference, first, second, label, text)

    # --- other symbols ---

    def shunt_reference(self, reference, cathode, anode, label="right"):
        """Draws two of the three pins; the third is open and not in the symbol."""
        sheet = self.sheet
        part = self.board.parts[reference]
        x, top, bottom = cathode[0], cathode[1], anode[1]
        middle = (top + bottom) / 2
        sheet.line(cathode, (x, middle - 0.65))
        sheet.line((x, middle + 0.65), anode)
        sheet.polygon((x - 0.75, middle + 0.65), (x + 0.75, middle + 0.65), (x, middle - 0.65), fill="#fff")
        sheet.line((x - 1.1, middle - 0.3), (x - 0.75, middle - 0.65), (x + 0.75, middle - 0.65), (x + 1.1, middle - 1.0),
                   width=2)
        sheet.pins[(reference, "K")] = cathode
        sheet.pins[(reference, "A")] = anode
        sheet.solid.append((x - 1.1, middle - 1.0, x + 1.1, middle + 0.65, reference))
        self.caption(x, middle, 1.1, 1, label, [reference, readable(part.value)])

    def coaxial(self, reference, centre, shield):
        """Draws a socket to the right of the point "centre", where its centre contact ends."""
        sheet = self.sheet
        part = self.board.parts[reference]
        x, y = centre[0] + 2, centre[1]
        sheet.circle(x, y, 0.9)
        sheet.circle(x, y, 0.25)
        sheet.line(centre, (x - 0.25, y))
        sheet.line((x, y + 0.9), shield)
        sheet.pins[(reference, "1")] = centre
        sheet.pins[(reference, "2")] = shield
        sheet.solid.append((x - 0.9, y - 0.9, x + 0.9, y + 0.9, reference))
        self.caption(x, y, 0.9, 0.9, "right", [reference, part.value])
