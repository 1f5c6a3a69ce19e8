# SPDX-License-Identifier: MIT
"""Markers, results and limits, compared with values computed here."""

import math

import curves
from harness import ProgramCase, board


class Markers(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.write("DISP:SCAL DBV")
        self.c.sweep()
        self.freqs, self.levels = self.c.numbers("CALC:FREQ?"), self.c.numbers("CALC:DATA?")

    def on(self, marker):
        """Returns the index of the sample under a marker."""
        freq = self.c.number(f"CALC:MARK{marker}:X?")
        self.assertIn(freq, self.freqs)
        index = self.freqs.index(freq)
        self.assertAlmostEqual(self.c.number(f"CALCulate:MARKer{marker}:Y?"), self.levels[index], delta=1e-9)
        return index

    def test_a_frequency(self):
        for marker in (1, 2):
            for text, index in (("6.8 MHZ", 100), ("7100000", 200), ("7.1014 MHZ", 200), ("7.1016 MHZ", 201),
                                ("6500 KHZ", 0), ("7697000", 399)):
                with self.subTest(f"M{marker} {text}"):
                    self.c.write(f"CALC:MARK{marker}:X {text}")
                    self.fine()
                    self.assertEqual(self.on(marker), index)

    def test_ends(self):
        for marker in (1, 2):
            self.c.write(f"CALC:MARK{marker}:MAX")
            self.c.write(f"CALCulate:MARKer{marker}:X MIN")
            self.assertEqual(self.on(marker), 0)
            self.c.write(f"CALC:MARK{marker}:X MAX")
            self.assertEqual(self.on(marker), 399)
        self.c.write("CALC:MARK1:X DEF")
        self.on(1)
        self.fine()

    def test_in_a_falling_sweep(self):
        self.range(7.7e6, 6.5e6)
        self.c.sweep()
        self.freqs, self.levels = self.c.numbers("CALC:FREQ?"), self.c.numbers("CALC:DATA?")
        self.c.write("CALC:MARK1:X 7.4 MHZ")
        self.fine()
        self.assertEqual(self.on(1), 100)

    def test_highest_and_lowest(self):
        self.c.write("CALC:MARK1:MAX;:CALC:MARK2:MIN")
        self.assertEqual(self.levels[self.on(1)], max(self.levels))
        self.assertEqual(self.levels[self.on(2)], min(self.levels))
        self.c.write("calculate:marker1:minimum;:CALCulate:MARKer2:MAXimum")
        self.assertEqual(self.levels[self.on(1)], min(self.levels))
        self.assertEqual(self.levels[self.on(2)], max(self.levels))
        self.fine()

    def test_without_a_number_it_is_the_first(self):
        self.c.write("CALC:MARK:MAX")
        self.assertEqual(self.c.ask("CALC:MARK:X?;:CALC:MARK:Y?"), self.c.ask("CALC:MARK1:X?;Y?"))

    def test_next_peak(self):
        self.range(1e6, 15e6)
        self.c.sweep()
        self.freqs, self.levels = self.c.numbers("CALC:FREQ?"), self.c.numbers("CALC:DATA?")
        for header, side in (("NEXT", 1), ("NEXT RIGHt", 1), ("NEXT RIGH,4", 1), ("NEXT LEFT,4", -1),
                             ("NEXT LEFT", -1)):
            with self.subTest(header):
                self.c.write("CALC:MARK1:MAX")
                peak = self.on(1)
                self.c.write(f"CALCulate:MARKer1:{header}")
                self.fine()
                found = self.on(1)
                self.assertGreater((found - peak) * side, 0)
                rise = 4 if header.endswith("4") else 3
                self.assertGreaterEqual(self.rise(found), rise - 1e-9)

    def rise(self, index):
        """Returns the height of a sample above the higher of its two neighbouring valleys."""
        valleys = []
        for step in (-1, 1):
            valley, other = self.levels[index], index + step
            while 0 <= other < 400 and self.levels[other] <= self.levels[index]:
                valley = min(valley, self.levels[other])
                other += step
            valleys.append(valley)
        return self.levels[index] - max(valleys)

    def test_errors(self):
        before = self.c.ask("CALC:MARK1:X?;:CALC:MARK2:X?")
        for message, number in (("CALC:MARK3:X?", -114), ("CALC:MARK0:MAX", -114), ("CALC:MARK1:X", -109),
                                ("CALC:MARK1:X 7 MHZ,8 MHZ", -108), ("CALC:MARK1:X 7 V", -131),
                                ("CALC:MARK1:X 100 MHZ", -222), ("CALC:MARK1:X FOO", -141),
                                ("CALC:MARK1:NEXT UP", -224),
                                ("CALC:MARK1:NEXT RIGH,3,4", -108), ("CALC:MARK1:MAX 3", -108),
                                ("CALC:MARK1:Y 3", -113),
                                ("CALC:MARK1:MAX?", -113)):
            with self.subTest(message):
                self.complains(message, number)
                self.assertEqual(self.c.ask("CALC:MARK1:X?;:CALC:MARK2:X?"), before)


class ResultCase(ProgramCase):
    KEYS = {"FILT": ["peak", "peakFreq", "loss", "bw3", "bw6", "bw60", "centre", "q", "shape", "ripple", "slopeLow",
                     "slopeHigh"],
            "NOTC": ["depth", "notchFreq", "bw3"], "CRYS": ["fs", "fp", "rm", "lm", "cm", "c0", "q"],
            "MATC": ["returnLoss", "rho", "swr", "freq", "bw15", "bw20"]}

    def results(self, kind, more=""):
        keys = self.c.ask(f"CALC:RES:KEYS? {kind}").replace('"', "").split(",")
        values = self.c.numbers(f"CALC:RES? {kind}{more}")
        self.assertEqual(len(keys), len(values))
        return dict(zip(keys, values))

    def curve(self):
        return self.c.numbers("CALC:FREQ?"), self.c.numbers("CALC:DATA?")

    def near(self, found, wanted, part=1e-6):
        for key, value in wanted.items():
            if value is None:
                self.assertIsNone(found[key], key)
            else:
                self.assertIsNotNone(found[key], key)
                self.assertAlmostEqual(found[key], value, delta=max(abs(value) * part, 1e-6), msg=key)


class Filter(ResultCase):
    def test_names(self):
        for long in ("FILTer", "NOTCh", "CRYStal", "MATCh"):
            short = long[:4].upper()
            answer = self.c.ask(f"CALCulate:RESult:KEYS? {long}")
            self.assertEqual(answer, self.c.ask(f"CALC:RES:KEYS? {short}"))
            self.assertEqual(answer.replace('"', "").split(","), self.KEYS[short])
            self.c.sweep()
            self.assertEqual(len(self.c.numbers(f"CALCulate:RESult? {long},LIVE")), len(self.KEYS[short]))
        self.fine()

    def test_filter(self):
        for start, stop in ((6.5e6, 7.7e6), (6e6, 8.2e6), (7.7e6, 6.5e6)):
            with self.subTest(start):
                self.range(start, stop)
                self.c.write("DISP:SCAL DBV;:AVER:COUN 20;:AVER ON;:AVER:CLE")
                self.c.sweep(20)
                freqs, levels = self.c.numbers("CALC:FREQ? AVER"), self.c.numbers("CALC:DATA? AVER")
                if freqs[0] > freqs[-1]:
                    freqs.reverse(), levels.reverse()
                found = self.results("FILT", ",AVER")
                self.near(found, curves.filter_results(freqs, levels))
                self.assertIsNone(found["loss"])
                self.assertTrue(any(abs(found["peakFreq"] - middle) < 1
                                    for middle in curves.middles(freqs, levels, max(levels))))
                self.assertAlmostEqual(self.c.number("CALC:BWID? 6,AVER"), found["bw6"], delta=1e-3)
                self.assertAlmostEqual(self.c.number("CALC:BWIDth? 3 DB,AVER"), found["bw3"], delta=1e-3)
                self.assertAlmostEqual(self.c.number("CALC:BWID? 10,AVER"),
                                       curves.width(curves.edges(freqs, levels, 10)), delta=1)
        self.range(6.95e6, 7.25e6)
        self.c.sweep()
        self.assertEqual(self.c.numbers("CALC:BWID? 40"), [None])
        self.assertIsNone(self.results("FILT")["bw6"])
        self.fine()

    def test_results_do_not_depend_on_scale_and_unit(self):
        self.range(6.5e6, 7.7e6)
        self.c.write("DISP:SCAL DBV")
        self.c.sweep()
        before = self.results("FILT")
        for message in ("DISP:SCAL LIN", "DISP:SCAL DB10V", "CALC:UNIT V", "CALC:UNIT DBM"):
            self.c.write(message)
            self.near(self.results("FILT"), {key: before[key] for key in ("bw3", "bw6", "centre", "q")}, 1e-9)

    def test_errors(self):
        self.complains("CALC:RES? FILT", -230)
        self.complains("CALC:BWID? 3", -230)
        self.c.sweep()
        for message, number in (("CALC:RES?", -109), ("CALC:RES? FOO", -224), ("CALC:RES:KEYS?", -109),
                                ("CALC:RES? FILT,MAXH", -224), ("CALC:RES? CRYS,LIVE,50,1", -108),
                                ("CALC:RES? FILT,AVER", -230), ("CALC:BWID?", -109), ("CALC:BWID? -3", -222),
                                ("CALC:BWID? 3 HZ", -131), ("CALC:BWID? '3'", -158), ("CALC:BWID 3", -113),
                                ("CALC:RES FILT", -113), ("CALC:BWID? FOO", -141)):
            with self.subTest(message):
                self.complains(message, number)


class Notch(ResultCase):
    changes = {("Simulator", "Device"): "notch"}

    def test_notch(self):
        self.range(5e6, 9e6)
        self.c.write("DISP:SCAL DBV")
        self.c.sweep()
        freqs, levels = self.curve()
        found = self.results("NOTC")
        self.assertAlmostEqual(found["depth"], max(levels) - min(levels), delta=1e-6)
        self.assertTrue(any(abs(found["notchFreq"] - middle) < 1
                            for middle in curves.middles(freqs, levels, min(levels))))
        below = max(levels) - curves.HALF_POWER
        self.assertAlmostEqual(found["bw3"], curves.band_below(freqs, levels, below), delta=1)
        self.assertAlmostEqual(found["notchFreq"], 7e6, delta=50e3)
        self.fine()


class AgainstACable(ResultCase):
    """Measures a device relative to a cable sweep loaded from a file."""

    changes = {("Simulator", "Device"): "through"}
    device = "crystal"
    band = (8.98e6, 9.04e6)

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        client = cls.program.client()
        cls.cable = cls.program.folder / "cable.csv"
        client.write(f"*RST;:FREQ:STAR {cls.band[0]};STOP {cls.band[1]};:DISP:SCAL LIN")
        client.sweep()
        client.write(f'MMEM:STOR:SWE "{cls.cable}"')
        cls.loss_of_cable = client.numbers("CALC:DATA?")
        errors = client.errors()
        client.close()
        if errors:
            raise AssertionError(f"no cable: {errors}")
        cable = cls.cable.read_bytes()
        cls.program.remove()
        cls.changes = {("Simulator", "Device"): cls.device}
        super().setUpClass()
        cls.cable = cls.program.folder / "cable.csv"
        cls.cable.write_bytes(cable)

    def measured(self):
        self.c.write(f"DISP:SCAL LIN;:FREQ:STAR {self.band[0]};STOP {self.band[1]}")
        self.c.write(f'MMEM:LOAD:SWE "{self.cable}"')
        self.c.write("DISP:SCAL DBV;:CORR:COLL THR")
        self.fine()
        self.c.sweep()
        return self.curve()


class Crystal(AgainstACable):
    def test_crystal(self):
        freqs, levels = self.measured()
        for fixture, text in ((50, ""), (12.5, ",LIVE,12.5"), (75, ",LIVE,75")):
            found = self.results("CRYS", text)
            self.assertNotIn(None, found.values(), str(found))
            loss = -max(levels)
            self.assertAlmostEqual(found["rm"], 2 * fixture * (10 ** (loss / 20) - 1), delta=found["rm"] * 0.02)
            self.assertAlmostEqual(found["fs"], 9e6, delta=500)
            self.assertAlmostEqual(found["fp"] - found["fs"], 18e3, delta=3e3)
            self.near(found, {"fs": 1 / (2 * math.pi * math.sqrt(found["lm"] * found["cm"])),
                              "q": 2 * math.pi * found["fs"] * found["lm"] / found["rm"]}, 1e-3)
            self.near(found, {"fp": found["fs"] * math.sqrt(1 + found["cm"] / found["c0"])}, 1e-4)
        self.fine()

    def test_errors_of_the_fixture(self):
        self.measured()
        for message in ("CALC:RES? CRYS,LIVE,0", "CALC:RES? CRYS,LIVE,-50"):
            self.complains(message, -222)


class Match(AgainstACable):
    device = "antenna"
    band = (6e6, 8e6)

    def test_match(self):
        freqs, levels = self.measured()
        found = self.results("MATC")
        loss = -min(levels)
        rho = 10 ** (-loss / 20)
        self.near(found, {"returnLoss": loss, "rho": rho, "swr": (1 + rho) / (1 - rho)})
        self.assertTrue(any(abs(found["freq"] - middle) < 1 for middle in curves.middles(freqs, levels, min(levels))))
        for key, swr in (("bw15", 1.5), ("bw20", 2)):
            self.near(found, {key: curves.band_below(freqs, levels, -curves.return_loss_of_swr(swr))}, 1e-5)
        self.assertAlmostEqual(found["freq"], 7.05e6, delta=100e3)
        self.fine()


class Limits(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.write("DISP:SCAL DBV")
        self.c.sweep()
        self.freqs, self.levels = self.c.numbers("CALC:FREQ?"), self.c.numbers("CALC:DATA?")

    def file(self, name, *lines, unit="dB"):
        path = self.program.folder / name
        path.write_text("\n".join([f"frequency/Hz,upper/{unit},lower/{unit}", *lines, ""]), encoding="utf-8")
        return path

    def expected(self, low, high, upper, lower):
        """Returns the number of samples checked, the number outside, and the worst margin, for horizontal limits."""
        inside = [level for freq, level in zip(self.freqs, self.levels) if low <= freq <= high]
        margins = [min(upper - level, level - lower) for level in inside]
        return len(inside), sum(margin < 0 for margin in margins), min(margins)

    def judge(self, upper, lower):
        path = self.file("limits.csv", f"6900000,{upper},{lower}", f"7300000,{upper},{lower}")
        self.c.write(f'CALCulate:LIMit:LOAD "{path}"')
        self.c.write("CALCulate:LIMit:STATe ON")
        self.fine()
        self.assertEqual(self.c.ask("CALC:LIM:STAT?"), "1")
        judged, outside, margin = self.expected(6.9e6, 7.3e6, upper, lower)
        report = self.c.ask("CALCulate:LIMit:REPort?").split(",")
        self.assertEqual([float(report[0]), float(report[1])], [judged, outside])
        freq, value, limit, told = map(float, report[2:6])
        self.assertAlmostEqual(told, margin, delta=1e-6)
        self.assertAlmostEqual(value, self.levels[self.freqs.index(freq)], delta=1e-6)
        self.assertEqual((limit, report[6]), (upper, "UPP") if upper - value < value - lower else (lower, "LOW"))
        self.assertEqual(self.c.ask("CALC:LIM:FAIL?"), "1" if outside else "0")

    def test_pass(self):
        self.judge(5, -30)

    def test_fail_above(self):
        self.judge(-3, -30)

    def test_fail_below(self):
        self.judge(5, -2)

    def test_the_next_sweep_is_judged(self):
        self.judge(5, -30)
        self.range(6.6e6, 7.6e6)
        self.c.sweep()
        self.assertEqual(self.c.ask("CALC:LIM:FAIL?"), "0")
        self.c.write("CALC:LIM:STAT OFF")
        self.assertEqual(self.c.ask("CALC:LIM:STAT?"), "0")
        self.c.write("CALC:LIM:STAT ON;*RST")
        self.assertEqual(self.c.ask("CALC:LIM:STAT?"), "0")

    def test_limits_of_another_unit(self):
        path = self.file("volts.csv", "6900000,1,0", "7300000,1,0", unit="V")
        self.c.write(f'CALC:LIM:LOAD "{path}";STAT ON')
        self.c.write("*CLS")
        self.complains("CALC:LIM:FAIL?", -221)
        self.c.write("DISP:SCAL LIN")
        self.assertEqual(self.c.ask("CALC:LIM:FAIL?"), "0")

    def test_files_that_cannot_be_used(self):
        self.judge(5, -30)
        good = self.c.ask("CALC:LIM:REP?")
        bad = self.file("bad.csv", "one,2,3")
        for name, number in ((bad, -250), (self.program.folder / "none.csv", -256), (self.program.folder, -257),
                             ("limits.csv", -257)):
            with self.subTest(str(name)):
                self.complains(f'CALC:LIM:LOAD "{name}"', number)
                self.assertEqual(self.c.ask("CALC:LIM:REP?"), good)
        self.complains("CALC:LIM:LOAD", -109)
        self.complains("CALC:LIM:LOAD 7", -128)


class NoLimits(ProgramCase):
    def test_without_limits(self):
        self.c.sweep()
        self.complains("CALC:LIM:STAT ON", -221)
        self.complains("CALC:LIM:FAIL?", -221)
        self.complains("CALC:LIM:REP?", -221)
        self.assertEqual(self.c.ask("CALC:LIM:STAT?"), "0")
        self.assertIn(board(), self.c.ask("INST:SEL?"))
