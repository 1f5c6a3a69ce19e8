# SPDX-License-Identifier: MIT
"""Several clients, access control, languages, and speed."""

import os
import shutil
import signal
import socket
import stat
import subprocess
import sys
import tempfile
import threading
import time

from harness import ProgramCase, received, target

STRANGER = 65534
# Connects to a TCP address or a Unix socket, sends a query, and prints the outcome as one word.
ASK = """
import socket, sys
try:
    if sys.argv[1] == "unix":
        s = socket.socket(socket.AF_UNIX); s.settimeout(20); s.connect(sys.argv[2])
    else:
        s = socket.create_connection((sys.argv[1], int(sys.argv[2])), 20)
    s.sendall(b"*IDN?\\n")
    data = s.recv(1000)
    print("answered" if data else "closed")
except ConnectionError:
    print("closed")
except PermissionError:
    print("forbidden")
except TimeoutError:
    print("silence")
"""


class Clients(ProgramCase):
    def test_each_has_its_own_errors_status_unit_and_format(self):
        self.range(6.5e6, 7.7e6)
        self.c.sweep()
        other = self.program.client()
        self.addCleanup(other.close)
        other.write("*CLS;*ESE 3;*SRE 5;:CALC:UNIT DBM;:FORM REAL;:STAT:OPER:ENAB 9;:FOO")
        self.assertEqual(self.c.ask("SYST:ERR:COUN?;*ESE?;*SRE?;*ESR?;:CALC:UNIT?;:FORM?;:STAT:OPER:ENAB?"),
                         "0;0;0;0;DB;ASC,0;0")
        self.assertEqual(other.ask("SYST:ERR:COUN?;*ESE?;*SRE?;*ESR?;:CALC:UNIT?;:FORM?;:STAT:OPER:ENAB?"),
                         "1;3;5;32;DBM;REAL,64;9")
        self.assertEqual(len(other.doubles("CALC:DATA?")), 400)
        self.assertEqual(len(self.c.numbers("CALC:DATA?")), 400)
        self.c.write("FREQ:STAR 6.6 MHZ;:DISP:SCAL DBV")
        self.c.ask("*OPC?")
        self.assertEqual(other.ask("FREQ:STAR?;:DISP:SCAL?"), "6600000;DBV", "clients share range and scale")

    def test_reset_of_another_client_leaves_my_queue(self):
        other = self.program.client()
        self.addCleanup(other.close)
        self.c.write("FOO")
        self.c.ask("*IDN?")
        other.write("*RST;*CLS")
        other.ask("*OPC?")
        self.assertEqual(self.c.errors(), [-113])

    def test_four_at_once_and_no_fifth(self):
        clients = [self.c] + [self.program.client() for _ in range(3)]
        for client in clients[1:]:
            self.addCleanup(client.close)
        self.range(6.5e6, 7.7e6)
        for client in clients:
            self.assertIn("Calvorn", client.ask("*IDN?"))
        for _ in range(2):
            try:
                with self.program.raw() as fifth:
                    fifth.sendall(b"*IDN?\n")
                    data, closed = received(fifth, 10)
            except ConnectionError:
                data, closed = b"", True
            self.assertTrue(closed)
            self.assertNotIn(b"Calvorn,", data)
        failures, swept, emptied = [], [], []

        def work(client, number):
            try:
                client.write(f"*CLS;:FORM {'REAL' if number % 2 else 'ASC'}")
                for _ in range(40):
                    levels = None
                    for _ in range(100):
                        client.write("INIT")
                        if client.ask("*OPC?") != "1":
                            raise AssertionError("*OPC?")
                        levels = client.last_levels(is_block=number % 2 == 1)
                        if levels is not None:
                            break
                        emptied.append(number)
                    if len(levels) != 400 or max(levels) > 0 or max(levels) < -5:
                        raise AssertionError(f"{len(levels)} levels")
                    swept.append(number)
                if set(client.errors()) - {-213, -230, -350}:
                    raise AssertionError("errors")
            except Exception as problem:  # pylint: disable=broad-except
                failures.append((number, repr(problem)))

        self.c.sweep()
        threads = [threading.Thread(target=work, args=pair) for pair in zip(clients, range(4))]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join(120)
        self.assertEqual(failures, [])
        self.assertEqual(sorted(swept), sorted([0, 1, 2, 3] * 40))
        if target() == "tool":  # the window empties its table when another client starts a sweep
            self.assertEqual(emptied, [])
        clients[3].close()
        another = self.program.client()
        self.addCleanup(another.close)
        self.assertIn("Calvorn", another.ask("*IDN?"))

    def test_who_comes_while_four_leave_gets_in(self):
        self.c.close()
        for _ in range(10):
            four = [self.program.client().visa for _ in range(4)]
            # Make the program see the four clients disconnect and the fifth connect at the same moment.
            self.program.process.send_signal(signal.SIGSTOP)
            try:
                for client in four:
                    client.close()
                fifth = self.program.raw()
            finally:
                self.program.process.send_signal(signal.SIGCONT)
            with fifth:
                fifth.sendall(b"*IDN?\n")
                self.assertIn(b"Calvorn", fifth.recv(1000))

    def test_ten_thousand_queries(self):
        self.c.write("FREQ:STAR 6.5 MHZ")
        before = self.program.memory()
        began = time.monotonic()
        for number in range(5000):
            if self.c.ask("FREQ:STAR?") != "6500000" or self.c.ask("*ESE?") != "0":
                self.fail(f"query {number}")
        seconds = time.monotonic() - began
        self.assertLess(self.program.memory() - before, 20_000_000)
        print(f"\n10,000 queries: {seconds:.2f} s", file=sys.stderr)
        self.fine()


class Doors(ProgramCase):
    def unix(self):
        connection = socket.socket(socket.AF_UNIX)
        connection.settimeout(30)
        connection.connect(str(self.program.unix_socket()))
        return connection

    def test_unix_socket(self):
        path = self.program.unix_socket()
        self.assertTrue(stat.S_ISSOCK(path.stat().st_mode))
        self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o600)
        with self.unix() as connection:
            connection.sendall(b"*IDN?;:FREQ:STAR?\nFOO\nSYST:ERR:COUN?\n")
            data = b""
            while data.count(b"\n") < 2:
                data += connection.recv(1000)
        self.assertIn(b",Calvorn,0,", data)
        self.assertTrue(data.endswith(b"\n1\n"))

    def test_ipv6(self):
        with self.program.raw("::1") as connection:
            connection.sendall(b"*IDN?\n")
            self.assertIn(b"Calvorn", connection.recv(1000))

    def test_no_other_address(self):
        found = set()
        for table in ("/proc/net/tcp", "/proc/net/tcp6"):
            with open(table, encoding="ascii") as file:
                for line in list(file)[1:]:
                    address, state = line.split()[1], line.split()[3]
                    host, port = address.split(":")
                    if int(port, 16) == self.program.port and state == "0A":
                        found.add(host)
        self.assertEqual(found, {"0100007F", "00000000000000000000000001000000"})

    def ask_as(self, where, **who):
        done = subprocess.run(["/usr/bin/python3", "-c", ASK, *where], capture_output=True, text=True, cwd="/",
                              timeout=60, check=True, **who)
        return done.stdout.strip()

    def test_who_gets_in(self):
        port, path = str(self.program.port), self.program.unix_socket()
        doors = (("127.0.0.1", port), ("::1", port), ("unix", str(path)))
        for door in doors:
            self.assertEqual(self.ask_as(door), "answered", door)
        if os.geteuid() == 0:
            stranger = {"user": STRANGER, "group": STRANGER, "extra_groups": []}
            for door in doors[:2]:
                self.assertEqual(self.ask_as(door, **stranger), "closed", door)
            self.assertEqual(self.ask_as(doors[2], **stranger), "forbidden")
            # Refused even if the file permissions allow access.
            self.program.runtime.chmod(0o755)
            path.chmod(0o666)
            self.assertEqual(self.ask_as(doors[2], **stranger), "closed")
            self.program.runtime.chmod(0o700)
            path.chmod(0o600)
            for _ in range(10):
                self.assertEqual(self.ask_as(doors[0], **stranger), "closed")
        self.assertIn("Calvorn", self.c.ask("*IDN?"))


class End(ProgramCase):
    targets = ("tool",)

    def test_terminate(self):
        self.c.write("INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 1)
        self.assertEqual(self.program.stop(), 0)
        self.assertFalse(self.program.unix_socket().exists())


class Languages:
    """Answers use a decimal point in every language."""

    class Case(ProgramCase):
        language = ""

        @classmethod
        def setUpClass(cls):
            cls.environment = {"LC_ALL": f"{cls.language}.UTF-8", "LANG": f"{cls.language}.UTF-8",
                               "LANGUAGE": cls.language}
            # The system may lack the locale: compile one for the program.
            folder = tempfile.mkdtemp(prefix="calvorn-locale-")
            cls.addClassCleanup(shutil.rmtree, folder)
            subprocess.run(["localedef", "-f", "UTF-8", "-i", cls.language, f"{folder}/{cls.language}.UTF-8"],
                           check=True, capture_output=True)
            cls.environment["LOCPATH"] = folder
            super().setUpClass()

        def test_numbers(self):
            self.range("6.5 MHZ", "7.7e6")
            self.c.write("DISP:SCAL DBV;:INIT;*WAI")
            for query in ("CALC:DATA?", "CALC:FREQ?", "CALC:RES? FILT", "CALC:COUN?"):
                values = self.c.numbers(query)
                self.assertGreater(len(values), 10, query)
                self.assertIn(".", self.c.ask(query))
            self.assertEqual(len(self.c.numbers("CALC:DATA?")), 400)
            self.assertEqual(self.c.ask("FREQ:STAR?;STOP?"), "6500000;7700000")
            self.c.write("DISP:SCAL LIN;RLEV 0.25")
            self.assertAlmostEqual(self.c.number("DISP:RLEV?"), 0.25, delta=1e-6)
            for query in ("CALC:BWID? 3.5", "MEAS:LEV?", "CALC:MARK1:Y?"):
                self.assertRegex(self.c.ask(query), r"^-?\d\.\d+E[+-]\d+$")
            path = self.program.folder / "limits.csv"
            path.write_text("frequency/Hz,upper/V,lower/V\n6900000,1.5,0.25\n7300000.5,1.5,0.25\n", encoding="utf-8")
            self.c.write(f'CALC:LIM:LOAD "{path}";STAT ON')
            self.assertEqual(len(self.c.ask("CALC:LIM:REP?").split(",")), 7)
            self.fine()
            self.c.write("AVER:COUN 1")
            self.assertTrue(self.c.error()[1].startswith('"Data out of range'), "SCPI texts are not translated")


class German(Languages.Case):
    language = "de_DE"


class Italian(Languages.Case):
    language = "it_IT"
