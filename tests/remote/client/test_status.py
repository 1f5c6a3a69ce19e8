# SPDX-License-Identifier: MIT
"""Status registers."""

import time

from harness import ProgramCase

SWEEPING, COMPLETE, EXECUTION, COMMAND, POWER_ON = 8, 1, 16, 32, 128
ERRORS, EVENT, SERVICE, OPERATION = 4, 32, 64, 128


class Status(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.write("STAT:PRES;*ESE 0;*SRE 0;*CLS")

    def ask(self, message):
        return int(self.c.ask(message))

    def test_enable_registers(self):
        for header, top in (("*ESE", 255), ("STATus:OPERation:ENABle", 32767), ("STAT:OPER:PTRansition", 32767),
                            ("STAT:OPER:NTR", 32767), ("STATus:QUEStionable:ENABle", 32767), ("STAT:QUES:PTR", 32767),
                            ("STAT:QUES:NTRansition", 32767)):
            for value in (0, 1, 8, top):
                self.c.write(f"{header} {value}")
                self.assertEqual(self.ask(f"{header}?"), value, header)
            self.c.write(f"{header} #HA")
            self.assertEqual(self.ask(f"{header}?"), 10, header)
        self.c.write("*SRE 44")
        self.assertEqual(self.ask("*SRE?"), 44)
        self.c.write("*SRE 255")
        self.assertEqual(self.ask("*SRE?"), 191, "bit 6 cannot be set")
        self.c.write("STATus:PRESet")
        self.assertEqual(self.c.ask("STAT:OPER:ENAB?;PTR?;NTR?;:STAT:QUES:ENAB?;PTR?;NTR?"), "0;32767;0;0;32767;0")
        self.assertEqual(self.c.ask("*ESE?;*SRE?"), "10;191")
        self.fine()

    def test_standard_events(self):
        self.assertEqual(self.ask("*ESR?"), 0)
        self.c.write("FOO")
        self.assertEqual(self.ask("*ESR?"), COMMAND)
        self.assertEqual(self.ask("*ESR?"), 0)
        self.c.write("AVER:COUN 1")
        self.assertEqual(self.ask("*ESR?"), EXECUTION)
        self.c.write("FOO;*CLS")
        self.c.write("*CLS")
        self.assertEqual(self.c.ask("*ESR?;:SYST:ERR:COUN?;*STB?"), "0;0;0")

    def test_a_new_client_sees_power_on(self):
        other = self.program.client()
        self.addCleanup(other.close)
        self.assertEqual(int(other.ask("*ESR?")) & POWER_ON, POWER_ON)
        self.assertEqual(int(other.ask("*ESR?")), 0)

    def test_status_byte(self):
        self.assertEqual(self.ask("*STB?"), 0)
        self.c.write("FOO")
        self.assertEqual(self.ask("*STB?"), ERRORS)
        self.c.write("*ESE 32")
        self.assertEqual(self.ask("*STB?"), ERRORS | EVENT)
        self.c.write("*SRE 32")
        self.assertEqual(self.ask("*STB?"), ERRORS | EVENT | SERVICE)
        self.assertEqual(self.ask("*STB?"), ERRORS | EVENT | SERVICE, "reading must not clear the byte")
        self.ask("*ESR?")
        self.assertEqual(self.ask("*STB?"), ERRORS)
        self.c.write("*SRE 4")
        self.assertEqual(self.ask("*STB?"), ERRORS | SERVICE)
        self.c.errors()
        self.assertEqual(self.ask("*STB?"), 0)

    def test_operation_while_sweeping(self):
        self.assertEqual(self.ask("STATus:OPERation:CONDition?"), 0)
        self.c.write("STAT:OPER:ENAB 8")
        self.c.write("INIT:CONT ON")
        self.assertEqual(self.ask("STAT:OPER:COND?"), SWEEPING)
        self.assertEqual(self.ask("*STB?"), OPERATION)
        self.c.write("*SRE 128")
        self.assertEqual(self.ask("*STB?"), OPERATION | SERVICE)
        self.assertEqual(self.ask("STATus:OPERation:EVENt?"), SWEEPING)
        self.assertEqual(self.ask("STAT:OPER?"), 0)
        self.assertEqual(self.ask("*STB?"), 0)
        self.c.write("ABOR")
        self.assertEqual(self.c.ask("STAT:OPER:COND?;EVEN?"), "0;0")
        self.c.write("STAT:OPER:PTR 0;NTR 8")
        self.c.sweep()
        self.assertEqual(self.ask("STAT:OPER?"), SWEEPING, "the end must set the event")
        self.c.write("STAT:OPER:NTR 0")
        self.c.sweep()
        self.assertEqual(self.ask("STAT:OPER?"), 0)
        self.c.write("STAT:PRES")
        self.c.sweep()
        self.c.write("*CLS")
        self.assertEqual(self.ask("STAT:OPER?"), 0)

    def test_questionable(self):
        self.assertEqual(self.c.ask("STATus:QUEStionable:CONDition?;EVENt?;:STAT:QUES?"), "0;0;0")

    def test_operation_complete(self):
        self.c.write("INIT;*OPC")
        end = self.c.wait_for("*ESR?", lambda answer: int(answer) & COMPLETE)
        self.assertEqual(int(end), COMPLETE)
        self.assertEqual(self.ask("SWE:COUN?"), 1)
        self.c.write("*OPC")
        self.assertEqual(self.ask("*ESR?"), COMPLETE)
        self.assertEqual(self.c.ask("*OPC?;*OPC?"), "1;1")

    def test_wait(self):
        self.assertEqual(self.c.ask("INIT;*WAI;:SWE:COUN?"), "1")
        self.assertEqual(self.c.ask("INIT;*OPC?;:SWE:COUN?"), "1;1")
        self.c.write("*WAI")
        self.assertEqual(self.c.ask("*WAI;*OPC?"), "1")

    def test_no_sweep_runs_when_it_has_ended(self):
        for _ in range(30):
            self.c.write("INIT")
            self.assertEqual(self.c.ask("*OPC?"), "1")
            self.assertEqual(self.ask("STAT:OPER:COND?"), 0)
            self.assertEqual(self.c.ask("INIT;*WAI;:STAT:OPER:COND?"), "0")
            self.ask("*ESR?")
            self.assertEqual(self.c.ask("INIT;*OPC;*WAI;*ESR?"), str(COMPLETE))

    def test_a_new_range_is_not_swept_by_itself(self):
        self.c.sweep()
        self.range(2e6, 4e6)
        time.sleep(0.3)
        self.complains("CALC:DATA?", -230)

    def test_the_generator_is_free_when_a_sweep_has_ended(self):
        for _ in range(20):
            self.c.sweep()
            self.c.write("OUTP ON;:OUTP OFF")
            self.fine()

    def test_nothing_waits_for_continuous_sweeps(self):
        self.c.write("INIT:CONT ON")
        self.c.visa.timeout = 10_000
        self.assertEqual(self.c.ask("*OPC?"), "1")
        self.assertEqual(self.c.ask("*WAI;:INIT:CONT?"), "1")
        self.c.write("*OPC")
        self.assertEqual(self.ask("*ESR?") & COMPLETE, COMPLETE)
        self.c.write("ABOR")

    def test_clear_forgets_a_pending_operation_complete(self):
        self.c.write("INIT;*OPC;*CLS")
        self.c.ask("*OPC?")
        self.assertEqual(self.ask("*ESR?"), 0)
