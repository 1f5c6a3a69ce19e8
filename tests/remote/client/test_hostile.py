# SPDX-License-Identifier: MIT
"""Misbehaving clients: the program keeps serving the others, and its memory stays bounded."""

import random
import socket
import struct
import time

from harness import ProgramCase, received

MEGABYTE = 1_000_000


class Hostile(ProgramCase):
    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.c.sweep()
        self.before = self.program.memory()

    def tearDown(self):
        self.assertIsNone(self.program.process.poll(), self.program.said())
        self.c.write("*CLS")
        self.assertIn("Calvorn", self.c.ask("*IDN?"))
        self.c.sweep()
        self.assertEqual(len(self.c.numbers("CALC:DATA?")), 400)
        self.fine()
        # All client slots must be free again.
        end = time.monotonic() + 20
        while True:
            others = [self.program.raw() for _ in range(3)]
            try:
                answers = []
                for other in others:
                    other.sendall(b"*ESE?\n")
                    answers.append(received(other, 0.2)[0])
            except OSError:
                answers = []
            for other in others:
                other.close()
            if answers == [b"0\n"] * 3:
                break
            self.assertLess(time.monotonic(), end, answers)
            time.sleep(0.1)

    def bounded(self, limit=30 * MEGABYTE):
        grown = self.program.memory() - self.before
        self.assertLess(grown, limit)

    def test_dies_in_the_middle_of_a_line(self):
        for text in (b"FREQ:STAR 3 M", b"*IDN?", b"CALC:DATA?\nCALC:DA", b'MMEM:STOR:SWE "/tmp/'):
            for linger in (False, True):
                connection = self.program.raw()
                connection.sendall(text)
                if linger:  # reset instead of an orderly close
                    connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                connection.close()
        self.assertEqual(self.c.ask("FREQ:STAR?"), "6500000")

    def test_dies_while_it_waits_for_a_sweep(self):
        for _ in range(5):
            connection = self.program.raw()
            connection.sendall(b"INIT;*OPC?\n")
            connection.close()
        for _ in range(3):  # messages from the other clients may still arrive
            time.sleep(0.3)
            self.c.wait_for("STAT:OPER:COND?", lambda answer: answer == "0")

    def test_says_nothing(self):
        silent = [self.program.raw() for _ in range(3)]
        self.c.sweep(5)
        self.assertEqual(received(silent[0], 0.2), (b"", False))
        for connection in silent:
            connection.close()

    def test_comes_and_goes(self):
        for _ in range(300):
            self.program.raw().close()
        self.bounded()

    def test_reads_nothing(self):
        with self.program.raw() as connection:
            connection.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 65536)
            connection.settimeout(5)
            end, highest, dropped = time.monotonic() + 60, 0, False
            while time.monotonic() < end and not dropped:
                try:
                    connection.sendall(b"CALC:DATA?;:CALC:FREQ?;:CALC:DATA?\n" * 20)
                except TimeoutError:
                    break
                except ConnectionError:
                    dropped = True
                highest = max(highest, self.program.memory())
        self.assertTrue(dropped, "a client that does not read its answers must be dropped")
        self.assertLess(highest - self.before, 30 * MEGABYTE)

    def test_reads_slowly(self):
        """With less than 1 MB unread, the client stays connected and receives everything."""
        with self.program.raw() as connection:
            connection.sendall(b"CALC:FREQ?\n" * 100)
            time.sleep(1)
            data = b""
            while data.count(b"\n") < 100:
                piece = connection.recv(1000)
                self.assertTrue(piece)
                data += piece
        rows = data.decode("ascii").splitlines()
        self.assertEqual(set(rows), {self.c.ask("CALC:FREQ?")})

    def test_a_line_of_100_megabytes(self):
        with self.program.raw() as connection:
            piece, highest = b"A" * MEGABYTE, 0
            for _ in range(100):
                connection.sendall(piece)
                highest = max(highest, self.program.memory())
            self.assertIn("Calvorn", self.c.ask("*IDN?"))
            connection.sendall(b"\nSYST:ERR?\nSYST:ERR?\n")
            data = b""
            while data.count(b"\n") < 2:
                data += connection.recv(1000)
        self.assertRegex(data.decode("ascii"), r'^-363,"Input buffer overrun.*"\n0,"No error"\n$')
        self.assertLess(highest - self.before, 30 * MEGABYTE)

    def test_random_bytes(self):
        for seed in range(20):
            noise = random.Random(seed)
            data = noise.randbytes(50_000)
            if seed % 2:
                data = bytes(noise.choice(b"*:;?,. \"'#()@ABCFREQSTAR0129eE+-\n\r\t") for _ in range(20_000))
            try:
                with self.program.raw() as connection:
                    connection.sendall(data + b"\n")
                    received(connection, 0.05)
            except ConnectionError:
                pass
        self.bounded()
        self.c.write("*RST;:TRAC:DEL 1;DEL 2;DEL 3;DEL 4")
        self.range(6.5e6, 7.7e6)

    def test_errors_without_end(self):
        with self.program.raw() as connection:
            for _ in range(100):
                connection.sendall(b"FOO\n" * 1000)
            connection.sendall(b"*IDN?\n")
            self.assertIn(b"Calvorn", connection.recv(1000))
        self.bounded()
