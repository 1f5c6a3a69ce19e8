#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Tests that hardware/pic-board/check accepts this project's netlist and rejects broken ones for the right reason."""

import unittest

from bench import Bench, GUIDE, NETLIST, PAGE

W_CLK = "net W_CLK\n    U1.19 M1.A2\n"
FQ_UD = "net FQ_UD\n    U1.20 M1.A3\n"


class Netlist(Bench):
    def refused(self, changes, *reasons):
        netlist = self.copy(NETLIST, *changes)
        self.assert_refused(self.run_script("check", "--netlist", netlist), *reasons)

    def test_the_netlist_of_this_project_agrees(self):
        result = self.run_script("check")
        self.assert_fine(result)
        self.assertIn("the netlist agrees with the page", result.stdout)

    def test_two_pins_changed_round(self):
        self.refused([(W_CLK, "net W_CLK\n    U1.20 M1.A2\n"), (FQ_UD, "net FQ_UD\n    U1.19 M1.A3\n")],
                     "pin 19 (RD0): not connected to the generator's W_CLK, M1.A2",
                     "pin 19 (RD0): M1.A3 is on its net FQ_UD, but not in the table of the page",
                     "pin 20 (RD1): not connected to the generator's FQ_UD, M1.A3",
                     "pin 20 (RD1): M1.A2 is on its net W_CLK, but not in the table of the page")

    def test_a_wrong_name_of_a_pin(self):
        self.refused([("19 RD0, 20 RD1", "19 RD1, 20 RD0")],
                     "pin 19 is RD0 on the page, RD1 in the netlist", "pin 20 is RD1 on the page, RD0 in the netlist")

    def test_transmitter_on_transmitter(self):
        self.refused([("U1.25 M2.5", "U1.25 M2.4"), ("U1.26 M2.4", "U1.26 M2.5")],
                     "pin 25 (RC6/TX): not connected to RXD of the serial bridge, M2.5",
                     "pin 25 (RC6/TX): M2.4 is on its net TX, but not in the table of the page",
                     "pin 26 (RC7/RX): not connected to TXD of the serial bridge, M2.4",
                     "pin 26 (RC7/RX): M2.5 is on its net RX, but not in the table of the page")

    def test_a_pin_that_is_missing(self):
        self.refused([("    U1.3 U1.4 U1.6", "    U1.3 U1.6")],
                     "U1.4 (RA2) is in no net and not open", "pin 4 (RA2): open on the page, not in the netlist")

    def test_a_pin_in_two_nets(self):
        self.refused([("U1.22 M1.A5 R2.1", "U1.22 M1.A5 R2.1 U1.21")], "U1.21 occurs 2 times: D7, RESET",
                     "pin 22 (RD3): U1.21 is on its net RESET, but not in the table of the page")

    def test_a_pin_twice_in_one_net(self):
        self.refused([("U1.22 M1.A5 R2.1", "U1.22 M1.A5 R2.1 R2.1")], "R2.1 occurs 2 times: RESET, RESET")

    def test_an_open_pin_in_a_net(self):
        self.refused([(W_CLK, "net W_CLK\n    U1.19 M1.A2 U1.3\n")], "U1.3 occurs 2 times: W_CLK, open",
                     "pin 19 (RD0): U1.3 is on its net W_CLK, but not in the table of the page",
                     "pin 3 (RA1): U1.19 is on its net W_CLK, but not in the table of the page",
                     "pin 3 (RA1): M1.A2 is on its net W_CLK, but not in the table of the page")

    def test_a_net_with_a_single_pin(self):
        self.refused([(W_CLK, "net W_CLK\n    U1.19\nnet OTHER\n    M1.A2\n")],
                     "the net W_CLK has one pin only", "the net OTHER has one pin only",
                     "pin 19 (RD0): not connected to the generator's W_CLK, M1.A2")

    def test_an_empty_net(self):
        self.refused([(W_CLK, W_CLK + "net NOTHING\n")], "the net NOTHING has no pin")

    def test_no_decoupling_capacitor(self):
        self.refused([("    C4 U1.32 U1.31\n", "")], "U1.32 (VDD) has no decoupling capacitor",
                     "pin 32 (VDD): no decoupling capacitor of 100 nF to pin 31")

    def test_one_capacitor_for_two_pairs(self):
        self.refused([("C4 U1.32 U1.31", "C3 U1.32 U1.31")], "C3 is said to decouple 2 pairs of pins")

    def test_a_decoupling_capacitor_elsewhere(self):
        self.refused([("C8 M1.B1 M1.B10", "C5 M1.B1 M1.B10")], "C5 does not connect M1.B1 on +5V to M1.B10 on GND")

    def test_a_decoupling_capacitor_that_is_too_small(self):
        self.refused([("part C8 | 100 nF", "part C8 | 10 nF")], "C8, at M1.B1, is below 100 nF",
                     *self.other_bill())

    def test_no_capacitor_at_the_serial_bridge(self):
        self.refused([("    C9 M2.3 M2.1\n", "")], "M2.3 (VCC) has no decoupling capacitor")

    def test_supply_and_ground_changed_round(self):
        self.refused([("U1.11 C3.1 U1.32", "U1.12 C3.1 U1.32"), ("U1.12 C3.2 U1.31", "U1.11 C3.2 U1.31")],
                     "U1.11 (VDD) is on GND, not on +5V", "U1.12 (VSS) is on +5V, not on GND",
                     "C3 does not connect U1.11 on +5V to U1.12 on GND",
                     "pin 11 (VDD): +5 V on the page, GND in the netlist", "pin 12 (VSS): ground on the page, +5V in the netlist")

    def test_the_supply_of_the_programmer_changed_round(self):
        self.refused([("R5.1 P1.2 P2.1", "R5.1 P1.3 P2.1"), ("J2.2 P1.3 P2.3", "J2.2 P1.2 P2.3")],
                     "P1.2 (VDD) is on GND, not on +5V", "P1.3 (GND) is on +5V, not on GND")

    def test_an_electrolytic_capacitor_the_wrong_way_round(self):
        self.refused([("M2.3 C9.+ U1.11", "M2.3 C9.- U1.11"), ("M2.1 C9.- U1.12", "M2.1 C9.+ U1.12")],
                     "C9.+ (+) is on GND, not on +5V", "C9.- (-) is on +5V, not on GND")

    def test_a_supply_pin_of_a_connector_is_open(self):
        self.refused([("R5.1 P1.2 P2.1", "R5.1 P2.1"), ("    U2.NC", "    U2.NC P1.2")], "P1.2 (VDD) is open, not on +5V")

    def test_the_output_is_not_the_sine(self):
        self.refused([("M1.A10 C10.1", "M1.A7 C10.1"), ("M1.A7 M1.A8", "M1.A10 M1.A8")],
                     "no capacitor joins a sine output of the generator to the centre of P3")

    def test_the_output_without_capacitor(self):
        self.refused([("M1.A10 C10.1", "M1.A10 P3.1"), ("C10.2 P3.1", "C10.2 C10.1")],
                     "C10 has both ends on the net RF",
                     "no capacitor joins a sine output of the generator to the centre of P3")

    def test_the_lamp_the_wrong_way_round(self):
        self.refused([("R2.2 D1.K", "R2.2 D1.A"), ("R5.2 D1.A", "R5.2 D1.K")],
                     "no resistor joins +5V to the anode of D1", "the cathode of D1 is not on GND")

    def test_a_wrong_resistor(self):
        self.refused([("part R2 | 10 kohm", "part R2 | 100 kohm")], "pin 22 (RD3): no resistor of 10 kohm to ground",
                     "pin 22 (RD3): R2.1 is on its net RESET, but not in the table of the page", *self.other_bill())

    def test_something_more_on_a_pin(self):
        self.refused([("U1.1 R1.2 P1.1", "U1.1 R1.2 P1.1 C5.1"), ("U1.5 U2.K R3.2 C5.1", "U1.5 U2.K R3.2")],
                     "pin 1 (MCLR/VPP): C5.1 is on its net VPP, but not in the table of the page",
                     "pin 5 (RA3/AN3/VREF+): no capacitor of 100 nF to ground")

    def test_another_reference(self):
        self.refused([("part U2 | LM4040-2.5", "part U2 | LM4040-4.1")],
                     "pin 5 (RA3/AN3/VREF+): the reference U2 is LM4040-4.1, not 2.5 V", *self.other_bill())

    def test_a_crystal_without_firmware(self):
        self.refused([("part X1 | 20 MHz", "part X1 | 16 MHz")],
                     "pin 13 (OSC1): the crystal X1 has 16 MHz, not 20 or 18.432 MHz", *self.other_bill())

    def test_the_jumpers_changed_round(self):
        self.refused([("U1.33 J1.1", "U1.33 J2.1"), ("U1.34 J2.1", "U1.34 J1.1")],
                     "pin 33 (RB0): no jumper J1 between it and GND", "pin 34 (RB1): no jumper J2 between it and GND")

    def test_the_serial_mode_is_not_strapped(self):
        self.refused([("M1.B1 C8.1 M1.B2 M1.B3", "M1.B1 C8.1 M1.B2 M1.B4"), ("C8.2 M1.B4 M1.B5", "C8.2 M1.B3 M1.B5")],
                     "D1 of the generator M1 is not on +5V: the serial mode needs it there",
                     "D2 of the generator M1 is not on GND: the serial mode needs it there")

    def test_a_short_circuit(self):
        self.refused([("U1.11 C3.1 U1.32", "U1.11 C3.1 R2.2 U1.32"), ("C6.2 R2.2 D1.K", "C6.2 D1.K"),
                      ("U1.22 M1.A5 R2.1", "U1.22 M1.A5"), ("M1.B1 C8.1", "M1.B1 R2.1 C8.1")],
                     "R2 has both ends on the net +5V", "pin 22 (RD3): no resistor of 10 kohm to ground")

    def test_a_part_that_does_not_exist(self):
        self.refused([(W_CLK, "net W_CLK\n    U1.19 M1.A2 R77.1\n")], "R77.1: there is no part R77")

    def test_a_pin_that_does_not_exist(self):
        self.refused([(W_CLK, "net W_CLK\n    U1.19 M1.A2 R1.3\n")], "R1.3: R1 has no pin 3")

    def test_a_part_twice(self):
        self.refused([("part R5 | 1 kohm", "part R4 | 1 kohm")], "R4 is described twice", "R5.1: there is no part R5",
                     "R5.2: there is no part R5")

    def test_a_value_that_is_none(self):
        self.refused([("part R5 | 1 kohm", "part R5 | 1k")], 'R5: "1k" is no value of a resistor', *self.other_bill())

    def test_lines_that_mean_nothing(self):
        line = NETLIST.read_text(encoding="utf-8").splitlines().index("net LED") + 1
        self.refused([("net LED\n", "wire LED\n")], f'line {line}: "wire" is not a keyword',
                     f"line {line + 1}: an indented line that belongs to nothing")

    def test_no_such_file(self):
        result = self.run_script("check", "--netlist", self.folder / "absent")
        self.assertEqual(result.returncode, 1)
        self.assertIn("No such file", result.stderr)

    @staticmethod
    def other_bill():
        return ["the bill of materials differs from the netlist: run hardware/pic-board/bom"]


class Page(Bench):
    def refused(self, changes, *reasons):
        self.assert_refused(self.run_script("check", self.copy(PAGE, *changes)), *reasons)

    def test_a_signal_moves(self):
        self.refused([("| the generator's W_CLK |", "| the generator's FQ_UD |")],
                     "pin 19 (RD0): not connected to the generator's FQ_UD, M1.A3",
                     "pin 19 (RD0): M1.A2 is on its net W_CLK, but not in the table of the page")

    def test_a_value_changes(self):
        self.refused([("the generator's RESET; 10 kohm to ground", "the generator's RESET; 4.7 kohm to ground")],
                     "pin 22 (RD3): no resistor of 4.7 kohm to ground",
                     "pin 22 (RD3): R2.1 is on its net RESET, but not in the table of the page")

    def test_an_open_pin_is_used(self):
        self.refused([("| 35 | RB2 | - | open |", "| 35 | RB2 | lamp | ground |")],
                     "pin 35 (RB2): ground on the page, open in the netlist")

    def test_a_row_is_missing(self):
        self.refused([("| 35 | RB2 | - | open |\n", "")], "pin 35 has 0 rows in the table of the page, not one")

    def test_a_row_is_there_twice(self):
        row = "| 35 | RB2 | - | open |\n"
        self.refused([(row, row + row)], "pin 35 has 2 rows in the table of the page, not one")

    def test_words_that_the_script_does_not_know(self):
        self.refused([("| 35 | RB2 | - | open |", "| 35 | RB2 | - | a lamp |")],
                     'pin 35 (RB2): the page says "a lamp", which this script does not understand')

    def test_the_straps_are_said_otherwise(self):
        self.refused([("wire D0 and D1 to + and D2 to ground", "wire D0 to D2 to +")],
                     'the page no longer says "wire D0 and D1 to + and D2 to ground (D3 to D6 to ground, too)"')

    def test_no_table(self):
        self.refused([("## The pins", "## The legs")], 'the page has no table of pins in a section "The pins"')


class BillOfMaterials(Bench):
    def refused(self, changes, *reasons):
        self.assert_refused(self.run_script("check", "--guide", self.copy(GUIDE, *changes)), *reasons)

    def test_a_part_is_missing(self):
        self.refused([("| R1, R2 | 2 |", "| R1 | 1 |")], "R2 is not in the bill of materials")

    def test_a_part_too_many(self):
        self.refused([("| R1, R2 | 2 |", "| R1, R2, R9 | 3 |")], "R9 is in the bill of materials, not in the netlist")

    def test_a_wrong_value(self):
        self.refused([("| C6 | 1 | 1 nF |", "| C6 | 1 | 10 nF |")],
                     "the bill of materials differs from the netlist: run hardware/pic-board/bom")

    def test_no_marks(self):
        self.refused([("<!-- end of the bill of materials -->", "")],
                     "the guide has no bill of materials between its marks")


if __name__ == "__main__":
    unittest.main()
