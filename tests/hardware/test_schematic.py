#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tests that the schematic and the bill of materials match the netlist, and that `draw` rejects any other netlist."""

import sys
import unittest
import xml.etree.ElementTree

from bench import Bench, GUIDE, NETLIST, SCHEMATIC, SCRIPTS

sys.path.insert(0, str(SCRIPTS))

import board as boards  # noqa: E402
import layout  # noqa: E402
import proof  # noqa: E402
import sheet as sheets  # noqa: E402
import symbols  # noqa: E402


class Committed(Bench):
    def test_the_schematic_is_the_drawn_one(self):
        drawn = self.folder / "drawn.svg"
        self.assert_fine(self.run_script("draw", "--output", drawn))
        self.assertEqual(SCHEMATIC.read_bytes(), drawn.read_bytes(), "run hardware/pic-board/draw")

    def test_the_bill_of_materials_is_that_of_the_netlist(self):
        guide = self.copy(GUIDE)
        self.assert_fine(self.run_script("bom", "--guide", guide))
        self.assertEqual(GUIDE.read_bytes(), guide.read_bytes(), "run hardware/pic-board/bom")

    def test_every_part_stands_on_the_schematic(self):
        texts = " ".join("".join(element.itertext()) for element in xml.etree.ElementTree.parse(SCHEMATIC).iter()
                         if element.tag.endswith("text")).split()
        for reference in boards.read(NETLIST).parts:
            self.assertIn(reference, texts)


class OtherNetlist(Bench):
    """The drawing is laid out by hand, so `draw` must notice every change in the netlist."""

    def refused(self, changes, *reasons):
        drawn = self.folder / "drawn.svg"
        result = self.run_script("draw", "--netlist", self.copy(NETLIST, *changes), "--output", drawn)
        self.assert_refused(result, *reasons)
        self.assertFalse(drawn.exists())

    def test_a_connection_is_missing(self):
        self.refused([("U1.21 M1.A4 M1.B9", "U1.21 M1.B9"), ("M1.A7 M1.A8", "M1.A4 M1.A7 M1.A8")],
                     "the sheet joins M1.A4 M1.B9 U1.21", "the sheet does not have on the net D7: M1.B9 U1.21",
                     "the wire ((59, 50), (62, 50)) goes through the cross of an open pin")

    def test_a_connection_more(self):
        self.refused([("U1.19 M1.A2", "U1.19 M1.A2 U1.3"), ("    U1.3 U1.4", "    U1.4")],
                     "U1.3 ends in the air on the sheet", "the sheet does not have on the net W_CLK: U1.3")

    def test_a_part_more(self):
        self.refused([("net W_CLK\n    U1.19 M1.A2", "part R9 | 1 kohm | - | resistor | -\nnet W_CLK\n    U1.19 M1.A2 R9.1 R9.2")],
                     "the sheet does not have on the net W_CLK: R9.1 R9.2")

    def test_a_part_less(self):
        self.refused([("part D1 | LED, red | 3 mm | power lamp | optional\n    A A, K K\n", ""), ("R2.2 D1.K", "R2.2"),
                      ("R5.2 D1.A", "R5.2")], "the layout has D1, the netlist does not")


class Drawing(unittest.TestCase):
    """Tests that proof.py finds the faults in a sheet."""

    def setUp(self):
        self.board = boards.read(NETLIST)
        self.sheet = sheets.Sheet()
        layout.place(self.sheet, symbols.Symbols(self.board, self.sheet))

    def assert_fault(self, part):
        faults = proof.check(self.board, self.sheet)
        self.assertTrue([fault for fault in faults if part in fault], f"{part!r} is not in {faults}")

    def test_the_sheet_is_fine(self):
        self.assertEqual(proof.check(self.board, self.sheet), [])

    def test_a_wire_between_two_nets(self):
        self.sheet.wire((40, 52), (40, 54))
        self.assert_fault("the sheet joins M1.A2 M1.A3 U1.19 U1.20")

    def test_two_wires_that_cross(self):
        self.sheet.wire((40, 51), (40, 53))
        self.assert_fault("two wires cross")

    def test_a_wire_on_a_wire(self):
        self.sheet.wire((40, 52), (45, 52))
        self.assert_fault("two wires cross")

    def test_a_wrong_label(self):
        self.sheet.label("VPP", 40, 52, "left")
        self.assert_fault("the sheet joins M1.A3 P1.1 R1.2 U1.1 U1.20")

    def test_a_name_of_no_net(self):
        self.sheet.name("OTHER", 45, 52)
        self.assert_fault("the sheet names FQ_UD, OTHER")

    def test_a_text_on_a_wire(self):
        self.sheet.text(45, 52.3, "text")
        self.assert_fault('the text "text" lies on the line')

    def test_a_text_on_a_symbol(self):
        self.sheet.text(33, 30.5, "text")
        self.assert_fault('the text "text" lies on U1')

    def test_a_text_on_a_text(self):
        self.sheet.text(34.7, 10, "text")
        self.assert_fault('two texts overlap: "MCLR/VPP" and "text"')

    def test_a_text_outside_the_frame(self):
        self.sheet.text(95, 40, "a long text")
        self.assert_fault('the text "a long text" does not fit into the frame')

    def test_a_wire_through_a_symbol(self):
        self.sheet.wire((33, 48.5), (49, 48.5))
        self.assert_fault("goes through U1")

    def test_a_symbol_on_a_symbol(self):
        self.sheet.ground(28.5, 32)
        self.assert_fault("ground and ground overlap")


if __name__ == "__main__":
    unittest.main()
