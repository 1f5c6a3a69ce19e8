# SPDX-License-Identifier: MIT
"""Starts gpsim with a firmware and the bench around it, and sends commands to the bench."""

import collections
import os
import pathlib
import shutil
import socket
import subprocess
import tempfile

Crystal = collections.namedtuple("Crystal", "name hertz")
CRYSTALS = {"20mhz": Crystal("20mhz", 20_000_000), "18mhz432": Crystal("18mhz432", 18_432_000)}
BAUD = 115_200
PROCESSOR = "pic16f877"
STARTS = 20  # s
ANSWERS = 90  # s

Word = collections.namedtuple("Word", "cycle tuning control")
Byte = collections.namedtuple("Byte", "cycle value framed")
Conversion = collections.namedtuple("Conversion", "cycle adcon0 adcon1 word")
Counts = collections.namedtuple("Counts", "bytes words conversions resets overruns")
Stretches = collections.namedtuple("Stretches", "line watchdog deepest shallowest")


def firmware():
    """Returns the folder of the firmware under test."""
    default = pathlib.Path(__file__).resolve().parents[2] / "build" / "release" / "firmware"
    return pathlib.Path(os.environ.get("CALVORN_FIRMWARE", default))


def library():
    """Returns the path of the bench library that gpsim loads."""
    default = pathlib.Path(__file__).resolve().parents[2] / "build" / "release" / "tests" / "firmware"
    return pathlib.Path(os.environ.get("CALVORN_BENCH", default)) / "libcalvorn_bench.so"


class BenchError(Exception):
    """The bench has rejected a command or has exited."""


class Chip:
    """A PIC 16F877 in its circuit. In virtual time it runs only during run() and expect()."""

    def __init__(self, crystal="20mhz", program=None):
        self.crystal = CRYSTALS[crystal]
        self.hertz = self.crystal.hertz / 4  # cycles per second
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="calvorn-chip-"))
        self.program = pathlib.Path(program or firmware() / f"{PROCESSOR}-{crystal}.cod")
        for file in (self.program, library()):
            if not file.is_file():
                raise BenchError(f"There is no {file}")
        script = self.folder / "start.stc"
        script.write_text(f"processor {PROCESSOR}\nfrequency {self.crystal.hertz}\nload s '{self.program}'\n"
                          f"module library '{library()}'\nmodule load bench bench\nrun\n", encoding="ascii")
        self.log = open(self.folder / "log", "wb")
        ours, theirs = socket.socketpair()
        self.socket = ours
        self.pending = b""
        self.process = subprocess.Popen(
            ["gpsim", "-i", "-c", str(script)], stdin=subprocess.DEVNULL, stdout=self.log, stderr=subprocess.STDOUT,
            cwd=self.folder, env={**os.environ, "CALVORN_BENCH_SOCKET": str(theirs.fileno())},
            pass_fds=[theirs.fileno()])
        theirs.close()
        self.socket.settimeout(STARTS)
        try:
            self.ask(f"baud {self.hertz / BAUD}")
        except TimeoutError:
            said = self.said()
            self.process.kill()
            self.close()
            raise BenchError(f"gpsim does not start: {said}") from None
        self.socket.settimeout(ANSWERS)

    def close(self):
        self.socket.close()
        try:
            self.process.wait(10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.log.close()
        shutil.rmtree(self.folder, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def said(self):
        """Returns gpsim's output."""
        return (self.folder / "log").read_text(encoding="utf-8", errors="replace")

    def ask(self, command):
        """Sends one command to the bench and returns the text after "ok"."""
        self.socket.sendall(command.encode("ascii") + b"\n")
        while b"\n" not in self.pending:
            piece = self.socket.recv(1 << 20)
            if not piece:
                raise BenchError(f"gpsim has gone: {self.said()}")
            self.pending += piece
        line, self.pending = self.pending.split(b"\n", 1)
        status, _, rest = line.decode("ascii").partition(" ")
        if status != "ok":
            raise BenchError(f"{command}: {line.decode('ascii')}")
        return rest

    def cycles(self, seconds):
        return max(1, round(seconds * self.hertz))

    def time(self):
        return int(self.ask("time"))

    def run(self, seconds):
        self.ask(f"run {self.cycles(seconds)}")

    def expect(self, count, seconds):
        """Runs until the chip has sent `count` bytes in total, or for `seconds`; returns the number of bytes."""
        return int(self.ask(f"expect {count} {self.cycles(seconds)}"))

    def items(self, command, kind):
        rest = self.ask(command)
        return [kind(*map(int, item.split(":"))) for item in rest.split()]

    def bytes(self, first=0):
        return self.items(f"bytes {first}", Byte)

    def words(self, first=0):
        return self.items(f"words {first}", Word)

    def conversions(self, first=0):
        return self.items(f"conversions {first}", Conversion)

    def counts(self):
        return Counts(*map(int, self.ask("counts").split()))

    def faults(self):
        return [fault for fault in self.ask("faults").split(";") if fault.strip()]

    def stretches(self):
        return Stretches(*map(int, self.ask("stretches").split()))

    def line(self, *items):
        """Queues bytes, damaged bytes, levels and waits on the line to the chip; see bench/script.cpp."""
        self.ask("line " + " ".join(items))

    def send(self, data):
        self.line(*(f"b{byte:02x}" for byte in data))
