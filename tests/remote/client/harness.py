# SPDX-License-Identifier: MIT
"""Starts calvorn-sweep or the window with a simulated board in a temporary folder, and controls it through PyVISA."""

import os
import pathlib
import re
import select
import shutil
import signal
import socket
import struct
import subprocess
import tempfile
import time
import unittest

import pyvisa

BOARDS = ("PIC", "LPT", "VNA")
TARGETS = ("tool", "window")
INTERFACE = {"PIC": 1, "LPT": 2, "VNA": 3}
# Frequency limits in the prepared settings, Hz.
LIMITS = {"PIC": (1_000, 40_000_000), "LPT": (1_000, 70_000_000), "VNA": (100_000, 180_000_000)}
NOTHING = 9.91e37
STARTS = 60  # s
WAIT = 15  # s

manager = pyvisa.ResourceManager("@py")


def board():
    """Returns the board under test."""
    return os.environ.get("CALVORN_BOARD", "LPT")


def target():
    """Returns the program under test: "tool" for calvorn-sweep --listen, "window" for the window."""
    return os.environ.get("CALVORN_TARGET", "tool")


def binaries():
    """Returns the folder that contains the programs."""
    default = pathlib.Path(__file__).resolve().parents[3] / "build" / "release" / "bin"
    return pathlib.Path(os.environ.get("CALVORN_BIN", default))


def prepared_settings():
    """Returns the path of the settings file that comes with the program."""
    return pathlib.Path(__file__).resolve().parents[3] / "packaging" / "Calvorn.ini"


def free_port():
    """Returns a TCP port that is currently unused."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def with_key(text, section, key, value):
    """Returns the settings with one key set."""
    head = re.search(rf"^\[{re.escape(section)}\]$", text, re.MULTILINE | re.IGNORECASE)
    if not head:
        return f"{text.rstrip()}\n[{section}]\n{key}={value}\n"
    tail = re.search(r"^\[", text[head.end():], re.MULTILINE)
    end = head.end() + tail.start() if tail else len(text)
    body = text[head.end():end]
    line = re.compile(rf"^{re.escape(key)}=.*$", re.MULTILINE | re.IGNORECASE)
    new = f"{key}={value}"
    body = line.sub(lambda _: new, body) if line.search(body) else f"\n{new}{body}"
    return text[:head.end()] + body + text[end:]


def settings_for(name, changes):
    """Returns the prepared settings with a simulated board at full speed."""
    text = prepared_settings().read_text(encoding="utf-8")
    own = re.search(rf"^\[Interface{INTERFACE[name]}\]\n((?:[^\[].*\n)*)", text, re.MULTILINE).group(1)
    for line in own.splitlines():
        key, value = line.split("=", 1)
        text = with_key(text, "Config", key, value)
    fixed = {("Config", "Interface"): INTERFACE[name], ("Config", "ADC Channel"): 3,
             ("Serial Port", "CommPort"): 100, ("Parallel Port", "LPT"): 0, ("Simulator", "Pace"): "none"}
    for (section, key), value in {**fixed, **changes}.items():
        text = with_key(text, section, key, value)
    return text


class Program:
    """A program that accepts clients until stop() is called."""

    files = ()  # copied to the folder; the first file is started
    wanted = {}  # additional environment variables

    def __init__(self, changes=None, environment=None):
        self.board = board()
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="calvorn-client-"))
        self.folder.chmod(0o711)
        self.runtime = self.folder / "run"
        self.runtime.mkdir(mode=0o700)
        for name in self.files:
            shutil.copy2(binaries() / name, self.folder / name)
        self.port = free_port()
        settings = settings_for(self.board, {**self.settings_of_target(), **(changes or {})})
        (self.folder / "Calvorn.ini").write_text(settings, encoding="utf-8")
        self.settings = settings
        self.log = open(self.folder / "log", "wb")
        own = {**os.environ, "LC_ALL": "C.UTF-8", **self.wanted, "XDG_RUNTIME_DIR": str(self.runtime),
               "XDG_CONFIG_HOME": str(self.folder), **(environment or {})}
        self.process = subprocess.Popen([str(part) for part in self.command()], cwd=self.folder, env=own,
                                        stdin=subprocess.DEVNULL, stdout=self.log, stderr=subprocess.STDOUT)
        self.wait_until_it_listens()

    def settings_of_target(self):
        return {}

    def command(self):
        raise NotImplementedError

    def wait_until_it_listens(self):
        end = time.monotonic() + STARTS
        while time.monotonic() < end:
            if self.process.poll() is not None:
                raise AssertionError(f"{self.files[0]} has ended with {self.process.returncode}: {self.said()}")
            try:
                with self.raw() as probe:
                    probe.sendall(b"*IDN?\n")
                    if probe.recv(1):
                        return
            except OSError:
                pass
            time.sleep(0.02)
        self.stop()
        raise AssertionError(f"{self.files[0]} does not listen: {self.said()}")

    def said(self):
        """Returns the program's output."""
        return (self.folder / "log").read_text(encoding="utf-8", errors="replace")

    def unix_socket(self):
        return self.runtime / f"calvorn-{self.port}.scpi"

    def memory(self):
        """Returns the resident memory, bytes."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text(encoding="ascii", errors="replace")
        return int(re.search(r"^VmRSS:\s+(\d+) kB", status, re.MULTILINE).group(1)) * 1024

    def client(self, seconds=10):
        """Connects a PyVISA client. Retries, because the slots of closed clients may take a moment to become free."""
        end = time.monotonic() + seconds
        while True:
            client = Client(self.port)
            try:
                client.ask("*IDN?")
                return client
            except OSError:
                client.close()
                if time.monotonic() > end:
                    raise
            time.sleep(0.02)

    def raw(self, host="127.0.0.1", timeout=WAIT):
        return socket.create_connection((host, self.port), timeout=timeout)

    def stop(self):
        """Terminates the program with SIGTERM and returns its exit code."""
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(WAIT)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.log.close()
        return self.process.returncode

    def remove(self):
        self.stop()
        shutil.rmtree(self.folder, ignore_errors=True)


class Tool(Program):
    """calvorn-sweep --listen."""

    files = ("calvorn-sweep", "CalvornAsync")

    def command(self):
        return self.folder / self.files[0], "--listen", self.port


class Window(Program):
    """The window, with remote control enabled in the settings."""

    files = ("Calvorn", "CalvornAsync")
    # Keep desktop settings from changing languages, sizes and dialogs.
    wanted = {"LANGUAGE": "en", "QT_QPA_PLATFORM": "xcb", "QT_QPA_PLATFORMTHEME": "", "QT_SCALE_FACTOR": "1"}

    def command(self):
        return (self.folder / self.files[0],)

    def settings_of_target(self):
        return {("Remote", "On"): 1, ("Remote", "Port"): self.port}


def program(changes=None, environment=None):
    """Starts the program under test."""
    return {"tool": Tool, "window": Window}[target()](changes, environment)


class Client:
    """One PyVISA connection."""

    def __init__(self, port):
        self.visa = manager.open_resource(f"TCPIP0::127.0.0.1::{port}::SOCKET")
        self.visa.read_termination = self.visa.write_termination = "\n"
        self.visa.timeout = WAIT * 1000

    def close(self):
        self.visa.close()

    def write(self, message):
        self.visa.write(message)

    def ask(self, message):
        return self.visa.query(message)

    def number(self, message):
        return float(self.ask(message))

    def numbers(self, message):
        """Returns a row of numbers that is sent as text; None stands for a missing number."""
        return [None if value == NOTHING else value for value in map(float, self.ask(message).split(","))]

    def block(self, message):
        return bytes(self.visa.query_binary_values(message, datatype="B", container=bytes))

    def doubles(self, message):
        return self.visa.query_binary_values(message, datatype="d", is_big_endian=True)

    def last_levels(self, is_block=False):
        """Returns the levels of the last sweep, or None if there is no sweep."""
        self.write("CALC:DATA?;*ESE?")
        first = self.visa.read_bytes(1)
        if not is_block:
            row, _, tail = (first.decode("ascii") + self.visa.read()).rpartition(";")
            if not tail.isdecimal():
                raise AssertionError(f"*ESE? answers {tail}")
            return [float(value) for value in row.split(",")] if row else None
        if first != b"#":
            self.visa.read()
            return None
        digits = int(self.visa.read_bytes(1))
        length = int(self.visa.read_bytes(digits))
        data = self.visa.read_bytes(length)
        if not self.visa.read().startswith(";"):
            raise AssertionError("the block is longer than its header says")
        return list(struct.unpack(f">{length // 8}d", data))

    def error(self):
        """Returns the number and the message of the oldest error."""
        number, text = self.ask("SYST:ERR?").split(",", 1)
        return int(number), text

    def errors(self):
        """Returns the numbers of all errors and empties the queue."""
        numbers = []
        while True:
            number = self.error()[0]
            if number == 0:
                return numbers
            numbers.append(number)
            if len(numbers) > 100:
                raise AssertionError("the error queue does not become empty")

    def sweep(self, times=1):
        for _ in range(times):
            self.write("INIT")
            if self.ask("*OPC?") != "1":
                raise AssertionError("*OPC? does not answer 1")

    def wait_for(self, message, wanted, seconds=WAIT):
        """Repeats the query until wanted() accepts the answer, and returns the answer."""
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            answer = self.ask(message)
            if wanted(answer):
                return answer
            time.sleep(0.01)
        raise AssertionError(f"{message}: still {answer}")


class ProgramCase(unittest.TestCase):
    """Tests that share a program; each starts with *RST and an empty error queue."""

    targets = TARGETS  # programs that these tests can run with
    changes = {}
    environment = {}

    @classmethod
    def setUpClass(cls):
        cls.program = program(cls.changes, cls.environment)
        cls.addClassCleanup(cls.program.remove)
        cls.low, cls.high = LIMITS[board()]

    def setUp(self):
        self.c = self.program.client()
        self.addCleanup(self.c.close)
        self.c.write("*RST;*CLS")
        self.c.write("TRAC:DEL 1;DEL 2;DEL 3;DEL 4")
        self.c.ask("*OPC?")
        self.c.write("*CLS")

    def range(self, start, stop):
        """Sets the range without an intermediate range below 400 Hz."""
        self.c.write(f"FREQ:STAR MIN;STOP {stop};STAR {start}")

    def fine(self, client=None):
        """Checks that the error queue is empty."""
        self.assertEqual((client or self.c).errors(), [])

    def complains(self, message, number):
        """Checks that the message causes exactly this error, and that the program still answers."""
        self.c.write("*CLS")
        self.c.write(message)
        found = self.c.errors()
        self.assertEqual(found, [number], message)
        self.assertEqual(self.c.ask("SYST:VERS?"), "1999.0")

    def same(self, found, wanted, delta):
        """Checks that two rows of numbers are equal within delta; None stands for a missing number."""
        self.assertEqual(len(found), len(wanted))
        for index, (one, other) in enumerate(zip(found, wanted)):
            if one is None or other is None:
                self.assertEqual(one, other, f"number {index}")
            else:
                self.assertAlmostEqual(one, other, delta=delta, msg=f"number {index}")


def received(connection, seconds):
    """Returns the data received within this time, and whether the other side has closed the connection."""
    data = b""
    end = time.monotonic() + seconds
    while (left := end - time.monotonic()) > 0:
        if not select.select([connection], [], [], left)[0]:
            break
        try:
            piece = connection.recv(65536)
        except OSError:
            return data, True
        if not piece:
            return data, True
        data += piece
    return data, False
