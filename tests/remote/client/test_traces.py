# SPDX-License-Identifier: MIT
"""Curves: units, formats, average, reference, stored traces."""

import math

from harness import ProgramCase, board

VOLTS_PER_COUNT = 0.00244
# The level of a 1 V RMS sine at 50 ohms.
DBM_OF_A_VOLT = 10 * math.log10(1 / 50 / 0.001)


def decibels(volts):
    return [20 * math.log10(value) if value and value > 0 else None for value in volts]


class Curves(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.write("DISP:SCAL DBV")
        self.c.sweep()

    def test_units(self):
        self.c.write("CALC:UNIT V")
        self.assertEqual(self.c.ask("CALCulate:UNIT?"), "V")
        volts = self.c.numbers("CALC:DATA?")
        self.same(volts, [count * VOLTS_PER_COUNT for count in self.c.numbers("CALCulate:COUNts?")], 1e-6)
        self.c.write("CALCulate:UNIT dbm")
        self.assertEqual(self.c.ask("CALC:UNIT?"), "DBM")
        self.same(self.c.numbers("CALC:DATA? LIVE"), [value + DBM_OF_A_VOLT for value in decibels(volts)], 1e-3)
        self.c.write("CALC:UNIT DB")
        self.same(self.c.numbers("CALCulate:DATA? LIVE"), decibels(volts), 1e-6)
        self.c.write("DISP:SCAL DB10V")
        self.same(self.c.numbers("CALC:DATA?"), [value - 20 for value in decibels(volts)], 1e-6)
        self.c.write("CALC:UNIT DBM")
        self.same(self.c.numbers("CALC:DATA?"), [value + DBM_OF_A_VOLT for value in decibels(volts)], 1e-3)
        self.fine()

    def test_blocks_equal_text(self):
        self.assertEqual(self.c.ask("FORM?").split(",")[0], "ASC")
        for query in ("CALC:DATA?", "CALC:FREQ?", "CALC:COUN?", "CALC:DATA? LIVE"):
            text = [float(value) for value in self.c.ask(query).split(",")]
            for form in ("REAL,64", "REAL"):
                self.c.write(f"FORMat:DATA {form}")
                self.assertEqual(self.c.ask("FORMat?"), "REAL,64")
                self.assertEqual(self.c.doubles(query), text)
            self.c.write("FORM ASCii")
            self.assertEqual(len(text), 400)
        self.fine()

    def test_the_answer_restores_the_format(self):
        for form in ("REAL", "ASC"):
            self.c.write(f"FORM {form}")
            answer = self.c.ask("FORM?")
            self.c.write(f"FORM {'ASC' if form == 'REAL' else 'REAL'}")
            self.c.write(f"FORM {answer}")
            self.assertEqual(self.c.ask("FORM?"), answer)
        self.fine()

    def test_block_header(self):
        self.c.write("FORM REAL,64;:CALC:DATA?")
        self.assertEqual(self.c.visa.read_bytes(6 + 3200 + 1)[:6], b"#43200")

    def test_blocks_and_text_in_one_answer(self):
        self.c.write("FORM REAL,64;*IDN?;:CALC:FREQ?;*ESE?")
        name = b""
        while not name.endswith(b";"):
            name += self.c.visa.read_bytes(1)
        self.assertEqual(name.count(b","), 3)
        self.assertEqual(self.c.visa.read_bytes(6 + 3200 + 3)[-3:], b";0\n")

    def test_a_new_range_needs_a_new_sweep(self):
        self.c.wait_for("STAT:OPER:COND?", lambda answer: answer == "0")
        self.range(6e6, 8e6)
        self.complains("CALC:DATA?", -230)
        self.complains("CALC:FREQ?", -230)
        self.complains("CALC:COUN?", -230)


class Average(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.write("CALC:UNIT V")

    def test_settings(self):
        self.assertEqual(self.c.ask("SENSe:AVERage:STATe?"), "0")
        for header in ("AVER", "SENS:AVERage:STATe", ":average"):
            self.c.write(f"{header} ON")
            self.assertEqual(self.c.ask(f"{header}?"), "1")
            self.c.write(f"{header} OFF")
            self.assertEqual(self.c.ask(f"{header}?"), "0")
        self.assertEqual([self.c.ask(f"AVER:COUN? {which}") for which in ("MIN", "MAX", "DEF")], ["2", "999", "10"])
        for text, wanted in (("2", "2"), ("999", "999"), ("16", "16"), ("MIN", "2"), ("MAXimum", "999"), ("DEF", "10")):
            self.c.write(f"SENSe:AVERage:COUNt {text}")
            self.assertEqual(self.c.ask("AVER:COUN?"), wanted)
        self.fine()

    def test_mean_of_sweeps(self):
        self.c.write("AVER:COUN 3;:AVER ON")
        sweeps, means = [], []
        for _ in range(4):
            self.c.sweep()
            sweeps.append(self.c.numbers("CALC:DATA? LIVE"))
            means.append(self.c.numbers("CALC:DATA? AVER"))
        self.same(means[0], sweeps[0], 1e-7)
        self.same(means[1], [sum(row) / 2 for row in zip(*sweeps[:2])], 1e-7)
        self.same(means[2], [sum(row) / 3 for row in zip(*sweeps[:3])], 1e-7)
        self.same(means[3], [mean + (new - mean) / 3 for mean, new in zip(means[2], sweeps[3])], 1e-7)
        self.assertNotEqual(means[3], sweeps[3], "the noise of the board differs")
        self.c.write("SENS:AVERage:CLEar")
        self.c.sweep()
        self.same(self.c.numbers("CALC:DATA? AVERage"), self.c.numbers("CALC:DATA?"), 1e-7)
        self.c.write("AVER OFF")
        self.complains("CALC:DATA? AVER", -230)

    def test_holds(self):
        for header in ("HOLD:MAX", "SENSe:HOLD:MAXimum", "hold:min", "SENS:HOLD:MINimum"):
            self.assertEqual(self.c.ask(f"{header}?"), "0")
            self.c.write(f"{header} ON")
            self.assertEqual(self.c.ask(f"{header}?"), "1")
            self.c.write(f"{header} 0")
        self.complains("CALC:DATA? MAXH", -230)
        self.c.write("HOLD:MAX ON;MIN ON")
        sweeps = []
        for _ in range(4):
            self.c.sweep()
            sweeps.append(self.c.numbers("CALC:DATA? LIVE"))
        self.same(self.c.numbers("CALC:DATA? MAXH"), [max(row) for row in zip(*sweeps)], 1e-7)
        self.same(self.c.numbers("CALC:DATA? MINHold"), [min(row) for row in zip(*sweeps)], 1e-7)
        self.assertNotEqual(self.c.ask("CALC:DATA? MAXH"), self.c.ask("CALC:DATA? MINH"), "the board has noise")
        self.c.write("AVER:CLE")
        self.c.sweep()
        self.assertEqual(self.c.ask("CALC:DATA? MAXH"), self.c.ask("CALC:DATA?"))
        self.c.write("*RST")
        self.assertEqual(self.c.ask("HOLD:MAX?;MIN?"), "0;0")
        self.fine()

    def test_results_of_the_average(self):
        self.c.write("AVER:COUN 4;:AVER ON;:CALC:UNIT DB")
        self.c.sweep(4)
        peak = self.c.numbers("CALC:RES? FILT,AVER")[0]
        self.assertAlmostEqual(peak, max(self.c.numbers("CALC:DATA? AVER")), delta=1e-6)
        self.assertGreater(self.c.number("CALC:BWID? 3,AVERage"), 400e3)
        self.fine()


class UsualSettings(ProgramCase):
    def setUp(self):  # without *RST
        self.c = self.program.client()
        self.addCleanup(self.c.close)

    def test_defaults_of_the_settings(self):
        self.assertEqual(self.c.ask("FREQ:STAR?"), self.key("Start"))
        self.assertEqual(self.c.ask("FREQ:STOP?"), self.key("Stop"))
        self.assertEqual(self.c.ask("DISP:SCAL?;BOTT?;:AVER?"), "LIN;-60;0")
        self.assertEqual(self.c.ask("AVER:COUN?"), "10")
        self.assertEqual(self.c.number("SOUR:FREQ?"), 7_000_000)

    def key(self, name):
        section = self.program.settings.split("[Calvorn]")[1]
        return next(line.split("=")[1] for line in section.splitlines() if line.startswith(f"{name}="))


class ToolLeavesSettings(ProgramCase):
    targets = ("tool",)

    def test_nothing_is_written(self):
        self.c.write("FREQ:STAR 6 MHZ;STOP 8 MHZ;:DISP:SCAL DBV;:AVER ON;:SOUR:FREQ 5 MHZ")
        self.c.sweep()
        self.assertEqual(self.program.stop(), 0)
        self.assertEqual((self.program.folder / "Calvorn.ini").read_text(encoding="utf-8"), self.program.settings)
        self.assertFalse(self.program.unix_socket().exists())


class Reference(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.9e6, 7.3e6)
        self.c.write("DISP:SCAL DBV")

    def test_a_sweep_relative_to_itself_is_flat(self):
        for header in ("CORR:COLL THR", "SENSe:CORRection:COLLect:ACQuire THRough"):
            self.c.write("CORR OFF")
            self.c.sweep()
            before = self.c.numbers("CALC:DATA?")
            self.c.write(header)
            self.assertEqual(self.c.ask("SENSe:CORRection:STATe?"), "1")
            self.same(self.c.numbers("CALC:DATA?"), [0] * 400, 1e-9)
            self.c.write("CALC:UNIT V")
            self.same(self.c.numbers("CALC:DATA?"), [1] * 400, 1e-9)
            self.c.write("CALC:UNIT DB")
            self.same(self.c.numbers("CALC:DATA? REFerence"), before, 1e-6)
            self.c.sweep()
            noise = self.c.numbers("CALC:DATA?")
            self.assertLess(max(map(abs, noise)), 0.5)
            self.c.write("CORR:STAT OFF")
            after = self.c.numbers("CALC:DATA?")
            self.same(noise, [new - old for new, old in zip(after, before)], 1e-6)
            self.c.write("CORR ON")
            self.same(self.c.numbers("CALC:DATA?"), noise, 1e-9)
            self.fine()

    def test_loss_needs_a_reference(self):
        self.c.sweep()
        keys = self.c.ask("CALC:RES:KEYS? FILT").replace('"', "").split(",")
        self.assertIsNone(self.c.numbers("CALC:RES? FILT")[keys.index("loss")])
        self.c.write("CORR:COLL THR")
        self.c.sweep()
        loss = self.c.numbers("CALC:RES? FILT")[keys.index("loss")]
        self.assertAlmostEqual(loss, -max(self.c.numbers("CALC:DATA?")), delta=1e-6)

    def test_no_sweep_no_reference(self):
        self.complains("CORR:COLL THR", -230)
        self.assertEqual(self.c.ask("CORR?"), "0")
        self.complains("CORR:COLL OPEN", -224)
        self.complains("CORR:COLL", -109)


class Kept(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)

    def test_store_and_delete(self):
        self.assertEqual(self.c.ask("TRAC:CAT?"), "0")
        self.c.write("AVER ON")
        self.c.sweep()
        first, freqs = self.c.numbers("CALC:DATA?"), self.c.numbers("CALC:FREQ?")
        self.c.write("TRACe:STORe 1")
        self.c.sweep()
        second, mean = self.c.numbers("CALC:DATA?"), self.c.numbers("CALC:DATA? AVER")
        self.c.write("TRAC:STOR 4,LIVE;STOR 2,AVERage")
        self.range(2e6, 4e6)
        self.c.sweep()
        self.assertEqual(self.c.numbers("TRACe:DATA? 1"), first)
        self.assertEqual(self.c.numbers("CALC:DATA? 4"), second)
        self.assertEqual(self.c.numbers("TRAC:DATA? 2"), mean)
        self.assertEqual(self.c.numbers("CALC:FREQ? 4"), freqs)
        self.assertEqual(self.c.ask("TRACe:CATalog?").split(",")[::2], ["1", "2", "4"])
        self.c.write("TRACe:DELete 1;DEL 2")
        self.assertEqual(self.c.ask("TRAC:CAT?").split(",")[::2], ["4"])
        self.complains("TRAC:DATA? 1", -230)
        self.complains("CALC:DATA? 1", -230)
        self.complains("CALC:FREQ? 2", -230)
        self.c.write("TRAC:DEL 4")
        self.assertEqual(self.c.ask("TRAC:CAT?"), "0")
        self.fine()

    def test_errors(self):
        self.complains("TRAC:STOR 1", -230)
        self.c.sweep()
        for message, number in (("TRAC:STOR 0", -222), ("TRAC:STOR 5", -222), ("TRAC:STOR 1,REF", -224),
                                ("TRAC:STOR 1,LIVE,2", -108), ("TRAC:STOR", -109), ("TRAC:STOR 1,MAXH", -230),
                                ("TRAC:DEL 5", -222), ("TRAC:DATA?", -109), ("TRAC:DATA? 5", -222),
                                ("CALC:DATA? REF", -230), ("CALC:DATA? MINH", -230), ("CALC:DATA? FOO", -224),
                                ("CALC:DATA? LIVE,LIVE", -108)):
            with self.subTest(message):
                self.complains(message, number)
                self.assertEqual(self.c.ask("TRAC:CAT?"), "0")


class Nothing(ProgramCase):
    """A detector without any signal."""

    changes = {("Simulator", "Detector"): "log", ("Simulator", "Level"): -100}

    def test_no_signal(self):
        self.c.write("DISP:SCAL DBV;:INIT;*WAI")
        counts = self.c.numbers("CALC:COUN?")
        rows = {}
        for unit in ("V", "DB", "DBM"):
            self.c.write(f"CALC:UNIT {unit};:FORM ASC")
            rows[unit] = [float(value) for value in self.c.ask("CALC:DATA?").split(",")]
            self.c.write("FORM REAL")
            self.assertEqual(self.c.doubles("CALC:DATA?"), rows[unit])
        if board() == "VNA":  # counts are inverted and never reach zero
            self.assertGreater(min(rows["V"]), 0)
            self.assertLess(max(rows["DB"]), -40)
            return
        self.assertGreater(counts.count(0), 300)
        for index, count in enumerate(counts):
            if count == 0:
                self.assertEqual(rows["V"][index], 0)
                self.assertLessEqual(rows["DB"][index], -60)
                # Minus infinity in SCPI.
                self.assertEqual(rows["DBM"][index], -9.9e37)
