# SPDX-License-Identifier: MIT
"""Places the parts and wires on the sheet. The "draw" script checks that the connections match the netlist."""


def place(sheet, symbols):
    sheet.rectangle(1, 1, 98, 69, width=1)
    controller(sheet, symbols)
    reset_and_programmer(sheet, symbols)
    detector(sheet, symbols)
    reference(sheet, symbols)
    supplies_of_controller(sheet, symbols)
    crystal(sheet, symbols)
    jumpers(sheet, symbols)
    serial_bridge(sheet, symbols)
    generator(sheet, symbols)
    power(sheet, symbols)
    title(sheet)


def controller(sheet, symbols):
    left = [(str(pin), 8 + 2 * pin) for pin in range(1, 21)]
    right = [(str(pin), 8 + 2 * (41 - pin)) for pin in range(21, 41)]
    symbols.box("U1", 34, 8, 48, 50, left, right)


def reset_and_programmer(sheet, symbols):
    sheet.wire((32, 10), (29, 10))
    sheet.wire((29, 10), (26, 10))
    symbols.resistor("R1", (29, 5), (29, 10))
    sheet.supply(29, 5)
    sheet.label("VPP", 26, 10, "left")

    symbols.box("P1", 80, 2.9, 88, 13.3, (("1", 4), ("2", 6), ("3", 8), ("4", 10), ("5", 12)), title="P1 programmer")
    sheet.label("VPP", 78, 4, "left")
    sheet.wire((78, 6), (70, 6))
    sheet.supply(70, 6)
    sheet.wire((78, 8), (66, 8))
    sheet.ground(66, 8)
    sheet.wire((50, 10), (78, 10))
    sheet.wire((50, 12), (78, 12))


def detector(sheet, symbols):
    symbols.box("P2", 4, 8.5, 10, 15.5, (), [("1", 10), ("2", 12), ("3", 14)], title="P2 detector")
    sheet.wire((12, 10), (14, 10))
    sheet.supply(14, 10)
    sheet.wire((12, 14), (14, 14))
    sheet.ground(14, 14)
    sheet.wire((12, 12), (17, 12))
    symbols.resistor("R4", (17, 12), (22, 12), "below")
    sheet.wire((22, 12), (32, 12))
    symbols.capacitor("C6", (27, 12), (27, 16))
    sheet.ground(27, 16)


def reference(sheet, symbols):
    sheet.wire((32, 18), (16, 18))
    symbols.capacitor("C5", (28, 18), (28, 22), "left")
    sheet.ground(28, 22)
    symbols.shunt_reference("U2", (21, 18), (21, 22), "left")
    sheet.ground(21, 22)
    symbols.resistor("R3", (11, 18), (16, 18), "above")
    sheet.wire((11, 18), (9, 18))
    sheet.supply(9, 18)
    sheet.name("VREF", 23.5, 18, "2.5 V")


def supplies_of_controller(sheet, symbols):
    sheet.wire((32, 30), (27, 30))
    sheet.supply(27, 30)
    sheet.wire((32, 32), (27, 32))
    sheet.ground(27, 32)
    symbols.capacitor("C3", (27, 30), (27, 32), "left")
    sheet.wire((50, 26), (58, 26))
    sheet.supply(58, 26)
    sheet.wire((50, 28), (58, 28))
    sheet.ground(58, 28)
    symbols.capacitor("C4", (58, 26), (58, 28))


def crystal(sheet, symbols):
    sheet.wire((32, 34), (30, 34), (30, 35), (15, 35))
    sheet.wire((32, 36), (30, 36), (30, 41), (15, 41))
    symbols.crystal("X1", (20, 35), (20, 41))
    symbols.capacitor("C1", (15, 35), (10, 35), "above")
    symbols.capacitor("C2", (15, 41), (10, 41), "below")
    sheet.wire((10, 35), (8, 35), (8, 41))
    sheet.wire((10, 41), (8, 41))
    sheet.ground(8, 41)


def jumpers(sheet, symbols):
    sheet.wire((50, 22), (54, 22), (54, 18), (58, 18))
    symbols.jumper("J2", (58, 18), (62, 18), "above", "")
    sheet.wire((62, 18), (65, 18), (65, 22))
    sheet.wire((50, 24), (56, 24), (56, 22), (58, 22))
    symbols.jumper("J1", (58, 22), (62, 22), "above", "")
    sheet.wire((62, 22), (65, 22))
    sheet.ground(65, 22)
    rows = (("J1", "J2", "generator"), ("open", "open", "AD9850, clock 125 MHz"),
             ("closed", "open", "AD9851, clock 30 MHz"), ("closed", "closed", "AD9851, clock 30 MHz x 6"))
    for index, row in enumerate(rows):
        for x, text in zip((71, 76, 81), row):
            sheet.text(x, 18 + 1.5 * index, text, bold=index == 0)
    sheet.line((71, 18.5), (96, 18.5), width=1)


def serial_bridge(sheet, symbols):
    symbols.box("M2", 80, 28.5, 90, 41.5, [("6", 30), ("2", 32), ("3", 34), ("1", 36), ("4", 38), ("5", 40)])
    sheet.wire((78, 34), (74, 34))
    sheet.supply(74, 34)
    sheet.wire((78, 36), (70, 36))
    sheet.ground(70, 36)
    sheet.wire((50, 38), (78, 38))
    sheet.wire((50, 40), (78, 40))


def generator(sheet, symbols):
    symbols.box("M1", 64, 44.5, 78, 67.5,
                [("A5", 46), ("B9", 48), ("A4", 50), ("A3", 52), ("A2", 54), ("A1", 58), ("B1", 60), ("A6", 64), ("B10", 66)],
                [("A9", 46), ("A10", 48), ("A7", 50), ("A8", 52)] + [(f"B{pin}", 50 + 2 * pin) for pin in range(2, 9)])
    sheet.wire((50, 46), (62, 46))
    sheet.wire((53, 46), (53, 43), (54, 43))
    symbols.resistor("R2", (54, 43), (59, 43), "above")
    sheet.wire((59, 43), (60.5, 43))
    sheet.ground(60.5, 43)
    sheet.wire((50, 48), (62, 48))
    sheet.wire((59, 48), (59, 50), (62, 50))
    sheet.wire((32, 48), (32, 52), (62, 52))
    sheet.wire((32, 46), (30, 46), (30, 54), (62, 54))
    sheet.name("FQ_UD", 36, 52)
    sheet.name("W_CLK", 36, 54)

    sheet.wire((62, 58), (60, 58), (60, 60))
    sheet.wire((62, 60), (46, 60))
    sheet.wire((62, 66), (60, 66), (60, 64))
    sheet.wire((62, 64), (46, 64))
    symbols.capacitor("C7", (54, 60), (54, 64))
    symbols.capacitor("C8", (48, 60), (48, 64))
    sheet.supply(46, 60)
    sheet.ground(46, 64)

    sheet.wire((80, 48), (82, 48))
    symbols.capacitor("C10", (82, 48), (86, 48), "above")
    sheet.wire((86, 48), (88, 48))
    symbols.coaxial("P3", (88, 48), (90, 50))
    sheet.ground(90, 50)
    sheet.wire((80, 54), (83, 54))
    sheet.wire((80, 56), (83, 56), (83, 54))
    sheet.supply(83, 54)
    sheet.wire((80, 58), (83, 58), (83, 66))
    for y in (60, 62, 64, 66):
        sheet.wire((80, y), (83, y))
    sheet.ground(83, 66)


def power(sheet, symbols):
    sheet.supply(8, 47)
    symbols.capacitor("C9", (8, 47), (8, 51), polar=True)
    sheet.ground(8, 51)
    sheet.supply(18, 47)
    symbols.resistor("R5", (18, 47), (18, 51))
    symbols.lamp("D1", (18, 51), (18, 55), "left")
    sheet.ground(18, 55)


def title(sheet):
    sheet.rectangle(3, 59.5, 39, 67.5)
    sheet.solid.append((3, 59.5, 39, 67.5, "the title"))
    sheet.line((3, 62.3), (39, 62.3), width=1)
    sheet.text(4, 61.5, "PIC board: generator, detector, serial line", size=14, bold=True)
    lines = ("M1, M2: go by the names printed on the module; their order differs.",
             "M2: levels and supply of 5 V. It supplies the board; C9 stands beside it.",
             "U2: pin NC stays open. R5 and D1 may be left out.",
             "Drawn from hardware/pic-board/pic-board.netlist.")
    for index, line in enumerate(lines):
        sheet.text(4, 63.5 + 1.15 * index, line, size=9.5)
