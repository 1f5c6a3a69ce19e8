# SPDX-License-Identifier: MIT
"""Invalid messages: each causes the right error number and changes nothing."""

import re

from harness import ProgramCase, received

STATE = ("FREQ:STAR?;STOP?;:SWE:SPE?;:INIT:CONT?;:AVER?;:AVER:COUN?;:CORR?;:CALC:UNIT?;:FORM?;:DISP:SCAL?;RLEV?;BOTT?;"
         ":TRAC:CAT?;:SOUR:FREQ?;:OUTP?;:CALC:LIM:STAT?;*ESE?;*SRE?;:STAT:OPER:ENAB?;PTR?;NTR?"
         ";:STAT:QUES:ENAB?;PTR?;NTR?")

WRONG = {
    -113: ("FOO", "FREQ", "FREQ:FOO 3", "FREQU:STAR 3 MHZ", "FREQ:STA 3 MHZ", "FREQUENCYS:STAR 3 MHZ", "FOO:STAR 3",
           "*FOO", "*IDN", "*RST?", "*CLS?", "*WAI?", "SYST:ERR", "SWE:POIN 400", "FREQ:STEP 3", "INIT?", "ABOR?",
           "AVER:CLE?", "CORR:COLL?", "TRAC:STOR? 1", "TRAC:DEL? 1", "TRAC:CAT", "CALC:DATA LIVE", "CALC:COUN",
           "CALC:LIM:FAIL", "CALC:LIM:REP", "CALC:LIM:LOAD?", "MEAS:LEV 3", "HCOP:DATA", "INST:SEL", "INST:CAT",
           "SYST:VERS", "SYST:HELP:HEAD", "STAT:PRES?", "STAT:OPER:COND 3", "STAT:OPER 3", "*STB 3", "*ESR 3", "*TST",
           "MMEM:LOAD:SWE?", "SWE:TIME 3", "SWE:COUN 3", "CALC:FREQ 3"),
    -114: ("CALC:MARK3:X?", "CALC:MARK0:X?", "OUTP:AUX3?", "CALC:MARK99999999999:MAX"),
    -108: ("*RST 1", "*CLS 1", "INIT 1", "ABOR 1", "*IDN? 1", "FREQ:STAR 6 MHZ,7 MHZ", "FREQ:STAR? 1,2", "AVER ON,OFF",
           "SWE:POIN? 1", "*ESE 1,2", "FREQ:STAR? MIN,MAX", "SYST:ERR? 1", "CALC:UNIT V,V", "STAT:PRES 1"),
    -109: ("FREQ:STAR", "AVER", "*ESE", "*SRE", "FORM", "CALC:UNIT", "DISP:SCAL", "OUTP", "STAT:OPER:ENAB", "SOUR:FREQ",
           "INIT:CONT", "CORR", "AVER:COUN"),
    -131: ("FREQ:STAR 7 V", "FREQ:STAR 7 S", "FREQ:STAR 7 FOO", "FREQ:STAR 7 DBM", "SOUR:FREQ 7 DB"),
    -138: ("AVER:COUN 3 HZ", "*ESE 3 HZ", "TRAC:DEL 1 V"),
    -141: ("FREQ:STAR FOO", "FREQ:STAR ON", "AVER FOO", "AVER:COUN ON", "*ESE FOO", "OUTP MAYBE", "FREQ:STAR NAN"),
    -224: ("CALC:UNIT FOO", "DISP:SCAL FOO", "FORM FOO", "FORM REAL,32", "CALC:DATA? FOO",
           "CALC:RES:KEYS? FOO", "TRAC:STOR 1,FOO"),
    -158: ('FREQ:STAR "7"', "AVER 'ON'", '*ESE "3"'),
    -222: ("*ESE 256", "*ESE -1", "*SRE 256", "STAT:OPER:ENAB 32768", "STAT:OPER:PTR -1", "STAT:QUES:NTR 65536",
           "AVER:COUN 1", "AVER:COUN 1000", "TRAC:DEL 0", "AVER:COUN 1E30"),
    -102: ("*", ":", "FREQ::STAR 3 MHZ", "FREQ:STAR 7,", '"FOO"', "FREQ:STAR ,7", "FREQ:STAR @"),
    -123: ("FREQ:STAR 1E40000",),
    -178: ("FREQ:STAR (@1)",),
}
# Several error numbers are acceptable for these.
SYNTAX = ("FREQ:STAR 7 8", "FREQ:STAR 1.2.3", "FREQ:STAR 7 MHZ MHZ", "FREQ:STAR #B12", "FREQ:STAR #HXYZ", "FREQ:STAR #",
          'MMEM:STOR:SWE "/tmp/x', "FREQ:STAR 1e", "FREQ:STAR --7", "A" * 13 + " 3", "F" * 4000, "1FREQ:STAR 3",
          "FREQ:STAR #13abc", "FREQ STAR 3", "FREQ:STAR:3", "?", "*?", "FREQ:?", "??", "FREQ:STAR ??", "\x7f",
          "FREQ:STAR #0abc", "#15hello")


class Wrong(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.state = self.c.ask(STATE)
        self.fine()

    def test_numbers_of_errors(self):
        for number, messages in WRONG.items():
            for message in messages:
                with self.subTest(message):
                    self.complains(message, number)
                    self.assertEqual(self.c.ask(STATE), self.state)

    def test_syntax(self):
        for message in SYNTAX:
            with self.subTest(message[:40]):
                self.c.visa.write_raw(message.encode() + b"\n")
                errors = self.c.errors()
                changed = self.c.ask(STATE)
                self.range(6.5e6, 7.7e6)
                self.c.write("*CLS")
                self.assertEqual(len(errors), 1, errors)
                self.assertTrue(-199 <= errors[0] <= -100, errors)
                self.assertEqual(changed, self.state)

    def test_control_characters_are_white_space(self):
        self.c.visa.write_raw(b"\x01\n\x00FREQ:STAR\x00\x1f3\x07MHZ\x08;\x0bSTOP\t9\r\x1bMHZ\r\n")
        self.fine()
        self.assertEqual(self.c.ask("FREQ:STAR?;STOP?"), "3000000;9000000")

    def test_bytes_that_are_no_text(self):
        for message in (b"\xff\xfe\n", b"FREQ:STAR \xc3\n", b"FREQ\xc3\xa4:STAR 3\n", bytes(range(128, 256)) + b"\n"):
            self.c.visa.write_raw(message)
            errors = self.c.errors()
            self.assertEqual(len(errors), 1, errors)
            self.assertTrue(-199 <= errors[0] <= -100, errors)
            self.assertEqual(self.c.ask(STATE), self.state)

    def test_nothing_after_a_fault_is_carried_out(self):
        for fault in ("FOO 2", "FREQ:STAR 1,2", "*ESE", "FREQ:STAR 7 V", "CALC:MARK3:MAX"):
            with self.subTest(fault):
                self.c.write("*RST;*CLS;:FREQ:STAR 2 MHZ;STOP 9 MHZ")
                self.c.write(f"FREQ:STAR 3 MHZ;:{fault};:FREQ:STOP 8 MHZ;:FOO".replace(":*", "*"))
                self.assertEqual(len(self.c.errors()), 1)
                self.assertEqual(self.c.ask("FREQ:STOP?"), "9000000")

    def test_what_stands_before_a_fault_is_carried_out(self):
        self.c.write("FREQ:STAR 3 MHZ;:FOO")
        self.assertEqual(self.c.errors(), [-113])
        self.assertEqual(self.c.ask("FREQ:STAR?"), "3000000")

    def test_an_execution_error_does_not_stop_the_message(self):
        self.c.write("AVER:COUN 1;:FREQ:STAR 3 MHZ")
        self.assertEqual(self.c.errors(), [-222])
        self.assertEqual(self.c.ask("FREQ:STAR?"), "3000000")

    def test_texts(self):
        for message, text in (("FOO", "Undefined header"), ("AVER:COUN 1", "Data out of range"),
                              ("FREQ:STAR", "Missing parameter"), ("CALC:UNIT FOO", "Illegal parameter value"),
                              ("*RST 1", "Parameter not allowed"), ("CALC:DATA?", "Data corrupt or stale"),
                              ("CALC:LIM:REP?", "Settings conflict"), ("FREQ:STAR 7 V", "Invalid suffix"),
                              ('MMEM:LOAD:SWE "/none/there"', "File name not found"),
                              ('MMEM:LOAD:SWE "/"', "File name error")):
            self.c.write(message)
            self.assertRegex(self.c.error()[1], rf'^"{re.escape(text)}(;.*)?"$', message)
        self.assertEqual(self.c.ask("SYSTem:ERRor:NEXT?"), '0,"No error"')

    def test_queue(self):
        self.assertEqual(self.c.ask("SYSTem:ERRor:COUNt?"), "0")
        for count in range(1, 31):
            self.c.write("FOO" if count % 2 else "AVER:COUN 1")
            self.assertEqual(self.c.ask("SYST:ERR:COUN?"), str(count))
        for _ in range(5):
            self.c.write("*RST 1")
        self.assertEqual(self.c.ask("SYST:ERR:COUN?"), "30")
        numbers = [int(self.c.ask(header).split(",")[0]) for header in ["SYST:ERR?", "SYSTem:ERRor:NEXT?"] * 15]
        self.assertEqual(numbers, [-113, -222] * 14 + [-113, -350])
        self.assertEqual(self.c.ask("SYST:ERR?;:SYST:ERR:COUN?"), '0,"No error";0')
        self.c.write("FOO")
        self.assertEqual(self.c.errors(), [-113])

    def test_a_queue_of_thirty_loses_nothing(self):
        for _ in range(30):
            self.c.write("FOO")
        self.assertEqual(self.c.errors(), [-113] * 30)

    def test_longest_message(self):
        self.c.write("AVER:COUN 5" + " " * (4096 - 11))
        self.fine()
        self.assertEqual(self.c.ask("AVER:COUN?"), "5")
        self.c.write("AVER:COUN 6" + " " * (4097 - 11))
        self.assertEqual(self.c.errors(), [-363])
        self.assertEqual(self.c.ask("AVER:COUN?"), "5")
        self.c.write("AVER:COUN 7;" * 5000 + "*IDN?")
        self.assertEqual(self.c.errors(), [-363])
        self.assertEqual(self.c.ask("AVER:COUN?"), "5")

    def test_many_commands_in_a_line(self):
        self.assertEqual(self.c.ask(";".join(["*ESE?"] * 682)), ";".join(["0"] * 682))
        self.assertEqual(self.c.ask("*ESE?;" * 682), ";".join(["0"] * 682))

    def test_a_query_that_fails_gives_no_answer(self):
        with self.program.raw() as connection:
            connection.sendall(b"CALC:DATA?\n")
            self.assertEqual(received(connection, 0.3), (b"", False))
            connection.sendall(b"*IDN?\n")
            self.assertIn(b"Calvorn", received(connection, 0.3)[0])
