# SPDX-License-Identifier: MIT
"""Frequency range, sweeps and speed; formats of headers and numbers."""

import time

from harness import ProgramCase, board


class Range(ProgramCase):
    def test_start_and_stop(self):
        for start, stop in (("FREQ:STAR", "FREQ:STOP"), ("freq:star", "Freq:Stop"),
                            ("FREQuency:STARt", "FREQuency:STOP"), ("SENS:FREQ:STAR", "SENS:FREQ:STOP"),
                            (":SENSe:FREQuency:STARt", ":sense:frequency:stop"), (":FREQ:STAR", ":FREQ:STOP")):
            with self.subTest(start):
                self.c.write("*RST")
                self.c.write(f"{start} 6500000")
                self.c.write(f"{stop} 7700000")
                self.assertEqual(self.c.number(f"{start}?"), 6_500_000)
                self.assertEqual(self.c.number(f"{stop}?"), 7_700_000)
                self.fine()

    def test_numbers_and_suffixes(self):
        self.range(2e6, 9e6)
        for text, wanted in (("7100000", 7_100_000), ("7.1e6", 7_100_000), ("7.1E+06", 7_100_000),
                             ("+7100000.0", 7_100_000), ("71.e5", 7_100_000), ("7.1 MHZ", 7_100_000),
                             ("7.1MHZ", 7_100_000), ("7.1 mhz", 7_100_000), ("7100 KHZ", 7_100_000),
                             ("7100000 HZ", 7_100_000), (".0071 GHZ", 7_100_000), ("#H6C5660", 0x6C5660),
                             ("#h6c5660", 0x6C5660), ("#Q33053140", 0o33053140),
                             ("#B11011000101011001100000", 7_100_000)):
            with self.subTest(text):
                self.c.write("FREQ:STAR 6 MHZ")
                self.c.write(f"FREQ:STAR {text}")
                self.fine()
                self.assertEqual(self.c.number("FREQ:STAR?"), wanted)

    def test_ends_and_usual_values(self):
        low, high = self.low, self.high
        for node, ends in (("STAR", (low, high, low)), ("STOP", (low, high, high)), ("CENT", (low, high, None)),
                           ("SPAN", (400, high - low, None))):
            found = [self.c.number(f"FREQ:{node}? {which}") for which in ("MIN", "MAX", "DEF")]
            self.assertEqual(found[:2], list(ends[:2]), node)
            if ends[2] is not None:
                self.assertEqual(found[2], ends[2], node)
        self.assertEqual(self.c.ask("FREQ:STAR? MINimum;:FREQ:STOP? maximum;:FREQ:STAR? DEFault"),
                         f"{low};{high};{low}")
        self.range(5e6, 6e6)
        self.c.write("FREQ:STAR MIN;STOP MAX")
        self.assertEqual(self.c.ask("FREQ:STAR?;STOP?"), f"{low};{high}")
        self.range(5e6, 6e6)
        self.c.write("FREQ:STAR DEF;STOP DEF")
        self.assertEqual(self.c.ask("FREQ:STAR?;STOP?"), f"{low};{high}")
        self.range(5e6, 6e6)
        self.c.write("FREQ:SPAN MIN")
        self.assertEqual(self.c.ask("FREQ:SPAN?"), "400")
        self.c.write(f"FREQ:CENT {(low + high) / 2};SPAN MAX")
        self.assertEqual(self.c.number("FREQ:SPAN?"), high - low)
        self.fine()

    def test_centre_and_span(self):
        self.range(6e6, 8e6)
        self.c.write("FREQ:CENT 10 MHZ")
        self.assertEqual(self.c.numbers("FREQ:STAR?")[0], 9e6)
        self.assertEqual(self.c.numbers("FREQ:STOP?")[0], 11e6)
        self.c.write("SENSE:FREQUENCY:SPAN 500 KHZ")
        self.assertEqual([self.c.number(f"FREQ:{node}?") for node in ("STAR", "STOP", "CENT", "SPAN")],
                         [9.75e6, 10.25e6, 10e6, 0.5e6])
        self.c.write("FREQ:SPAN -1 MHZ")
        self.assertEqual([self.c.number(f"FREQ:{node}?") for node in ("STAR", "STOP", "CENT", "SPAN")],
                         [10.5e6, 9.5e6, 10e6, -1e6])
        self.fine()

    def test_step_points_and_frequencies(self):
        self.range(6.5e6, 7.7e6)
        self.assertEqual(self.c.number("FREQ:STEP?"), 3000)
        self.assertEqual(self.c.number("SENS:FREQuency:STEP?"), 3000)
        self.assertEqual(self.c.ask("SWE:POIN?"), "400")
        self.assertEqual(self.c.ask("SENSe:SWEep:POINts?"), "400")
        self.c.sweep()
        self.assertEqual(self.c.numbers("CALC:FREQ?"), [6.5e6 + 3000 * i for i in range(400)])
        self.range(7.7e6, 6.5e6)
        self.c.sweep()
        self.assertEqual(self.c.number("FREQ:STEP?"), -3000)
        self.assertEqual(self.c.numbers("CALC:FREQ? LIVE"), [7.7e6 - 3000 * i for i in range(400)])
        self.fine()

    def test_memory_of_the_tree(self):
        self.c.write("FREQ:STAR 6 MHZ; STOP 8 MHZ;:FREQ:SPAN 1 MHZ;CENT 9 MHZ; *CLS ;SPAN 2 MHZ")
        self.fine()
        self.assertEqual(self.c.ask("FREQ:STAR?;STOP?;*ESE?;SPAN?;CENT?;:SWE:POIN?"),
                         "8000000;10000000;0;2000000;9000000;400")
        self.complains("FREQ:STAR 6 MHZ;SWE:POIN?", -113)
        self.complains("FREQ:STAR 6 MHZ;FREQ:STOP 8 MHZ", -113)

    def test_white_space_and_empty_messages(self):
        self.c.write("  FREQ:STAR\t 6.1   MHZ  ;  STOP   6.2MHZ  ")
        self.c.write("")
        self.assertEqual(self.c.ask(" FREQ:STAR? ; STOP?  \r"), "6100000;6200000")
        self.fine()

    def test_a_limit_is_taken_for_a_frequency_beyond_it(self):
        for message, node, taken in ((f"FREQ:STAR {self.low - 1}", "STAR", self.low),
                                     ("FREQ:STAR 0", "STAR", self.low), ("FREQ:STAR -7 MHZ", "STAR", self.low),
                                     (f"FREQ:STOP {self.high + 1}", "STOP", self.high),
                                     ("FREQ:STOP 5 GHZ", "STOP", self.high), ("FREQ:STOP 1E300", "STOP", self.high)):
            with self.subTest(message):
                self.range(6e6, 8e6)
                self.complains(message, -222)
                self.assertEqual(self.c.number(f"FREQ:{node}?"), taken)

    def test_the_span_shrinks_where_the_limits_ask_for_it(self):
        self.range(1e6, 11e6)
        self.complains("FREQ:CENT 3 MHZ", -222)
        self.assertEqual(self.c.number("FREQ:CENT?"), 3e6)
        self.assertGreaterEqual(self.c.number("FREQ:STAR?"), self.low)

    def test_a_small_range_is_made_wider(self):
        self.range(2e6, 9e6)
        self.c.write("FREQ:STAR 8999900")
        self.assertEqual(len(self.c.errors()), 1)
        start, stop = map(float, self.c.ask("FREQ:STAR?;STOP?").split(";"))
        self.assertGreaterEqual(abs(stop - start), 400)
        self.range(2e6, 9e6)
        self.c.write("FREQ:SPAN 100")
        self.assertEqual(len(self.c.errors()), 1)
        self.assertEqual(self.c.number("FREQ:SPAN?"), 400)


class Sweeps(ProgramCase):
    def test_single_sweeps_are_counted(self):
        for header in ("INIT", "INITiate", ":INIT:IMM", "initiate:immediate"):
            self.c.write(header)
            self.assertEqual(self.c.ask("*OPC?"), "1")
            self.assertEqual(self.c.ask("SWE:COUN?"), "1", header)
        self.fine()

    def test_continuous_sweeps(self):
        for on, off in (("ON", "OFF"), ("1", "0"), ("7", "0.4")):
            self.c.write(f"INIT:CONT {on}")
            self.assertEqual(self.c.ask("INITiate:CONTinuous?"), "1")
            self.c.wait_for("SENSe:SWEep:COUNt?", lambda answer: int(answer) >= 4)
            self.assertEqual(self.c.ask("*OPC?"), "1", "*OPC? does not wait for continuous sweeps")
            self.assertEqual(int(self.c.ask("STAT:OPER:COND?")) & 8, 8)
            seconds = self.c.number("SENS:SWE:TIME?")
            self.assertGreater(seconds, 0)
            self.assertLess(seconds, 60)
            self.c.write(f"INIT:CONT {off}")
            self.assertEqual(self.c.ask("INIT:CONT?"), "0")
            self.c.wait_for("STAT:OPER:COND?", lambda answer: answer == "0")
            count = self.c.ask("SWE:COUN?")
            time.sleep(0.3)
            self.assertEqual(self.c.ask("SWE:COUN?"), count)
            self.assertEqual(len(self.c.numbers("CALC:DATA?")), 400)
        self.fine()

    def test_abort(self):
        self.c.write("INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 1)
        self.c.write("ABORt")
        self.assertEqual(self.c.ask("STAT:OPER:COND?;:INIT:CONT?"), "0;0")
        self.c.write("ABOR")
        self.c.sweep()
        self.fine()

    def test_a_second_start_is_ignored(self):
        self.c.write("INIT:CONT ON")
        self.complains("INIT", -213)
        self.assertEqual(self.c.ask("INIT:CONT?"), "1")
        self.c.write("ABOR")
        self.c.write("INIT;INIT;*WAI")
        self.assertEqual(self.c.errors(), [-213])
        self.assertEqual(self.c.ask("SWE:COUN?"), "1")

    def test_time_between_two_starts(self):
        self.c.sweep()
        time.sleep(0.5)
        self.c.sweep()
        self.assertGreaterEqual(self.c.number("SWE:TIME?"), 0.5, "9.91E+37 (not known yet) is fine")

    def test_a_new_range_counts_while_it_sweeps(self):
        self.c.write("INIT:CONT ON")
        self.range(6e6, 8e6)
        # Before the first sweep of the new range there is no curve, and the query gets no answer.
        self.c.wait_for("CALC:FREQ?;*IDN?", lambda answer: answer.startswith("6.0E+06,6.005E+06,"))
        self.c.write("ABOR")
        self.assertLessEqual(set(self.c.errors()), {-230, -350})

    def test_speed(self):
        self.assertEqual(self.c.ask("SWE:SPE?"), "STAN")
        for long, short in (("SLOW", "SLOW"), ("VSLow", "VSL"), ("VSL", "VSL"), ("STANdard", "STAN"), ("STAN", "STAN")):
            if board() == "LPT":
                self.c.write(f"SENSe:SWEep:SPEed {long}")
                self.assertEqual(self.c.ask("SENS:SWE:SPE?"), short)
                self.c.sweep()
                self.fine()
            else:
                self.complains(f"SWE:SPE {long}", -221)
                self.assertEqual(self.c.ask("SWE:SPE?"), "STAN")
        if board() == "LPT":
            self.c.write("SWE:SPE SLOW;*RST")
            self.assertEqual(self.c.ask("SWE:SPE?"), "STAN")
            self.complains("SWE:SPE FAST", -224)

    def test_reset(self):
        self.range(6e6, 8e6)
        self.c.write("DISP:SCAL DBV;:AVER ON;:AVER:COUN 5;:INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 1)
        self.c.write("CORR:COLL THR")
        self.c.write("*RST")
        self.assertEqual(self.c.ask("FREQ:STAR?;STOP?;:DISP:SCAL?;:SWE:SPE?;:AVER?;:CORR?;:INIT:CONT?;:OUTP?"),
                         f"{self.low};{self.high};LIN;STAN;0;0;0;0")
        self.c.wait_for("STAT:OPER:COND?", lambda answer: answer == "0")
        self.fine()
