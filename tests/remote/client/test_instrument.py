# SPDX-License-Identifier: MIT
"""Generator, level, outputs, scales, files and pictures."""

import csv
import xml.etree.ElementTree

from harness import BOARDS, ProgramCase, board

PNG = b"\x89PNG\r\n\x1a\n"


class Instrument(ProgramCase):
    def test_who_it_is(self):
        for header in ("*IDN?", "*idn?", " *IDN?"):
            parts = self.c.ask(header).split(",")
            self.assertEqual((len(parts), parts[1], parts[2]), (4, "Calvorn", "0"))
            self.assertRegex(parts[3], r"^\d+\.\d+")
        self.assertEqual(self.c.ask("SYSTem:VERSion?"), "1999.0")
        self.assertEqual(self.c.ask("*TST?"), "0")
        self.assertEqual(self.c.ask("INSTrument:CATalog?"), ",".join(f'"{name}"' for name in BOARDS))
        self.assertEqual(self.c.ask("INSTrument:SELect?"), f'"{board()}"')
        self.fine()

    def test_headers(self):
        text = self.c.block("SYSTem:HELP:HEADers?").decode("ascii")
        for header in ("*IDN", "FREQuency:STARt", "CALCulate:DATA", "OUTPut:POTentiometer", "HCOPy:DATA"):
            self.assertIn(header, text)
        self.assertEqual(self.c.ask("SYST:VERS?"), "1999.0")

    def test_generator(self):
        low, high = self.low, self.high
        for header in ("SOUR:FREQ", "SOURce:FREQuency", ":source:frequency"):
            self.c.write(f"{header} 7.1 MHZ")
            self.assertEqual(self.c.number(f"{header}?"), 7_100_000)
            self.c.write("SOUR:FREQ 8 MHZ")
        self.c.write("SOUR:FREQ MIN")
        self.assertEqual(self.c.number("SOUR:FREQ?"), low)
        self.c.write("SOUR:FREQ MAX")
        self.assertEqual(self.c.number("SOUR:FREQ?"), high)
        self.c.write("SOUR:FREQ DEF")
        self.assertTrue(low <= self.c.number("SOUR:FREQ?") <= high)
        self.complains("SOUR:FREQ 5 GHZ", -222)
        self.assertEqual(self.c.number("SOUR:FREQ?"), high)

    def test_generator_on_and_off(self):
        self.c.write("SOUR:FREQ 7.1 MHZ")
        for header in ("OUTP", "OUTPut:STATe", ":OUTP:STAT"):
            self.c.write(f"{header} ON")
            self.assertEqual(self.c.ask(f"{header}?"), "1")
            self.c.write(f"{header} OFF")
            self.assertEqual(self.c.ask(f"{header}?"), "0")
        self.c.write("OUTP 1")
        self.c.sweep()
        self.assertEqual(self.c.ask("OUTP?"), "0", "a sweep switches the signal source off")
        self.c.write("OUTP 1;*RST")
        self.assertEqual(self.c.ask("OUTP?"), "0")
        self.fine()
        self.c.write("INIT:CONT ON")
        self.complains("OUTP ON", -221)
        self.c.write("ABOR")

    def test_level(self):
        self.c.write("SOUR:FREQ 7.1 MHZ")
        if board() == "LPT":
            self.c.write("OUTP ON")
            inside = self.c.number("MEASure:LEVel?")
            self.c.write("SOUR:FREQ 1 MHZ")
            outside = self.c.number("MEAS:LEV?")
            self.assertAlmostEqual(inside, 11.5, delta=1)
            self.assertLess(outside, -20)
        else:
            self.assertAlmostEqual(self.c.number("MEASure:LEVel?"), 11.5, delta=1)
            self.c.write("OUTP ON")
            self.complains("MEAS:LEV?", -221)
        self.c.write("OUTP OFF")
        self.fine()
        self.c.write("INIT:CONT ON")
        self.complains("MEAS:LEV?", -221)
        self.c.write("ABOR")

    def test_outputs(self):
        if board() != "LPT":
            for message in ("OUTP:AUX1 3", "OUTP:AUX2 0", "OUTP:POT 9"):
                self.complains(message, -241)
            return
        for number in (1, 2):
            for text, value in (("0", "0"), ("255", "255"), ("#HA5", "165"), ("3", "3")):
                self.c.write(f"OUTP:AUX{number} {text}")
                self.assertEqual(self.c.ask(f"OUTPut:AUX{number}?"), value)
        self.c.write("OUTP:AUX1 17;AUX2 34")
        self.assertEqual(self.c.ask("OUTP:AUX?;AUX1?;AUX2?"), "17;17;34")
        for text in ("0", "255", "77"):
            self.c.write(f"OUTPut:POTentiometer {text}")
            self.assertEqual(self.c.ask("OUTP:POT?"), text)
        self.c.write("*RST")
        self.assertEqual(self.c.ask("OUTP:AUX1?;AUX2?;POT?"), "17;34;77", "outputs stay")
        self.fine()
        for message, number in (("OUTP:AUX1 256", -222), ("OUTP:AUX2 -1", -222), ("OUTP:POT 256", -222),
                                ("OUTP:AUX3 1", -114), ("OUTP:AUX1", -109), ("OUTP:AUX1 1,2", -108),
                                ("OUTP:AUX1 FOO", -141)):
            self.complains(message, number)
            self.assertEqual(self.c.ask("OUTP:AUX1?;AUX2?;POT?"), "17;34;77")


class Scales(ProgramCase):
    def test_scales(self):
        for long, short, top in (("DBV", "DBV", 0), ("DBVHead", "DBVH", 10), ("DB10V", "DB10V", 0),
                                 ("DB10VHead", "DB10VH", 10), ("dbvh", "DBVH", 10), ("DB10VH", "DB10VH", 10)):
            self.c.write(f"DISPlay:SCALe {long}")
            self.assertEqual(self.c.ask("DISP:SCAL?"), short)
            self.assertEqual(self.c.number("DISPlay:RLEVel?"), top)
        for top, scale in (("0", "DB10V"), ("10", "DB10VH"), ("MIN", "DB10V"), ("MAX", "DB10VH")):
            self.c.write(f"DISP:RLEV {top}")
            self.assertEqual(self.c.ask("DISP:SCAL?"), scale)
        self.c.write("DISP:SCAL LINear")
        self.assertEqual(self.c.ask("DISP:SCAL?"), "LIN")
        self.fine()
        self.complains("DISP:SCAL LOG", -224)
        self.assertEqual(self.c.ask("DISP:SCAL?"), "LIN")

    def test_top_in_volts(self):
        self.c.write("DISP:SCAL LIN")
        for text, wanted in (("2", 2), ("500 MV", 0.5), ("1.5 V", 1.5), ("250000 UV", 0.25)):
            self.c.write(f"DISP:RLEV {text}")
            self.assertEqual(self.c.number("DISPlay:RLEVel?"), wanted)
        self.c.write("DISP:RLEV MIN")
        self.assertEqual(self.c.ask("DISP:RLEV?"), "1.0E-03")
        ends = []
        for which in ("MIN", "DEF", "MAX"):
            self.c.write(f"DISP:RLEV {which}")
            ends.append(self.c.number("DISP:RLEV?"))
        self.assertTrue(0 < ends[0] <= ends[1] <= ends[2] == 10, ends)
        self.c.write("DISP:RLEV 1")
        self.fine()
        for message, number in (("DISP:RLEV 1E9", -222), ("DISP:RLEV 10.1", -222), ("DISP:RLEV -1", -222),
                                ("DISP:RLEV 3 HZ", -131), ("DISP:RLEV 3 DB", -131), ("DISP:RLEV", -109)):
            self.complains(message, number)
            self.assertEqual(self.c.number("DISP:RLEV?"), 1)

    def test_bottom(self):
        for text in ("-40", "-90", "-75 DB"):
            self.c.write(f"DISPlay:BOTTom {text}")
            self.assertEqual(self.c.number("DISP:BOTT?"), float(text.split()[0]))
        ends = []
        for which in ("MINimum", "DEF", "MAX"):
            self.c.write(f"DISP:BOTT {which}")
            ends.append(self.c.number("DISPlay:BOTTom?"))
        self.assertTrue(ends[0] <= ends[1] <= ends[2] < 0, ends)
        self.assertEqual(ends[0], -90)
        self.c.write("DISP:BOTT -60")
        self.fine()
        for message, number in (("DISP:BOTT 5", -222), ("DISP:BOTT -91", -222), ("DISP:BOTT -1000", -222),
                                ("DISP:BOTT 3 V", -131)):
            self.complains(message, number)
            self.assertEqual(self.c.number("DISP:BOTT?"), -60)


class Files(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.write("DISP:SCAL LIN;:CALC:UNIT V")

    def path(self, name):
        return self.program.folder / name

    def test_a_sweep_is_written_and_read(self):
        for name, quoted in (("plain.csv", '"{}"'), ("with space.csv", "'{}'"), ("grün.csv", '"{}"')):
            with self.subTest(name):
                self.range(6.5e6, 7.7e6)
                self.c.sweep()
                counts, volts = self.c.numbers("CALC:COUN?"), self.c.numbers("CALC:DATA?")
                path = self.path(name)
                self.c.visa.write_raw(f"MMEMory:STORe:SWEep {quoted.format(path)}\n".encode())
                self.fine()
                with open(path, encoding="utf-8", newline="") as file:
                    rows = list(csv.reader(file))[1:]
                self.assertEqual([float(row[1]) for row in rows], [6.5e6 + 3000 * index for index in range(400)])
                self.assertEqual([float(row[2]) for row in rows], counts)
                self.same([float(row[3]) / 1000 for row in rows], volts, 1e-3)
                self.range(2e6, 3e6)
                self.c.sweep()
                self.assertNotEqual(self.c.numbers("CALC:COUN?"), counts)
                self.c.visa.write_raw(f"MMEM:LOAD:SWE {quoted.format(path)}\n".encode())
                self.fine()
                self.assertEqual(self.c.numbers("CALC:COUN?"), counts)
                self.same(self.c.numbers("CALC:DATA?"), volts, 1e-3)
                self.assertEqual(self.c.number("FREQ:STAR?"), 6.5e6)
                self.assertEqual(self.c.numbers("CALC:FREQ?"), [6.5e6 + 3000 * index for index in range(400)])

    def test_a_sweep_after_a_file(self):
        self.c.sweep()
        path = self.path("before.csv")
        self.c.write(f'MMEM:STOR:SWE "{path}"')
        self.c.write(f'MMEM:LOAD:SWE "{path}"')
        self.c.sweep()
        self.assertEqual(self.c.ask("STAT:OPER:COND?"), "0")
        self.assertEqual(len(self.c.numbers("CALC:DATA?")), 400)
        self.fine()

    def test_quotes_in_names(self):
        self.c.sweep()
        self.c.write(f'MMEM:STOR:SWE "{self.path("a")}""b;c,d.csv"')
        self.c.write(f"MMEM:STOR:SWE '{self.path('a')}''b.csv'")
        self.fine()
        self.assertTrue(self.path('a"b;c,d.csv').is_file())
        self.assertTrue(self.path("a'b.csv").is_file())

    def test_pictures(self):
        self.c.sweep()
        for name in ("graph.png", "graph.svg"):
            self.c.write(f'MMEMory:STORe:PICTure "{self.path(name)}"')
        self.fine()
        self.assertEqual(self.path("graph.png").read_bytes()[:8], PNG)
        self.assertTrue(xml.etree.ElementTree.parse(self.path("graph.svg")).getroot().tag.endswith("svg"))
        picture = self.c.block("HCOPy:DATA?")
        self.assertEqual(picture[:8], PNG)
        self.assertEqual(picture[-8:-4], b"IEND")
        self.fine()

    def test_no_sweep_yet(self):
        path = self.path("none.csv")
        self.complains(f'MMEM:STOR:SWE "{path}"', -230)
        self.assertFalse(path.exists())

    def test_names_that_cannot_be_used(self):
        self.c.sweep()
        counts = self.c.ask("CALC:COUN?")
        garbage = self.path("garbage.csv")
        garbage.write_bytes(bytes(range(256)) * 50)
        folder, none = self.program.folder, self.path("none.csv")
        for message, number in ((f'MMEM:STOR:SWE "{folder}"', -257), (f'MMEM:STOR:PICT "{folder}"', -257),
                                (f'MMEM:LOAD:SWE "{folder}"', -257), (f'MMEM:LOAD:SWE "{none}"', -256),
                                (f'MMEM:LOAD:SWE "{garbage}"', -250), ('MMEM:STOR:SWE "relative.csv"', -257),
                                ('MMEM:LOAD:SWE "garbage.csv"', -257), ('MMEM:STOR:PICT "../relative.png"', -257),
                                (f'MMEM:STOR:PICT "{folder}/picture.bmp"', -257), ('MMEM:STOR:SWE ""', -257),
                                (f'MMEM:STOR:SWE "{folder}/nowhere/a.csv"', -250), ('MMEM:LOAD:SWE "/dev/zero"', -257),
                                ('MMEM:LOAD:SWE "/dev/null"', -257), (f'MMEM:STOR:SWE "{none}', -151),
                                (f"MMEM:STOR:SWE {none}", -102), ("MMEM:STOR:SWE", -109), ("MMEM:LOAD:SWE", -109),
                                (f'MMEM:STOR:SWE "{none}",1', -108), ("MMEM:STOR:SWE 7", -128),
                                (f'MMEM:STOR:SWE? "{none}"', -113)):
            with self.subTest(message):
                self.complains(message, number)
                self.assertFalse(none.exists())
                self.assertEqual(self.c.ask("CALC:COUN?"), counts)
        self.assertFalse(self.path("relative.csv").exists())
