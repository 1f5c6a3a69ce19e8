# SPDX-License-Identifier: MIT
"""Clients and a user share the same window."""

import random
import re
import threading
import time

from harness import ProgramCase
from person import LONG, Manager, Person, until

SECONDS = 10  # minimum duration of simultaneous work
ROUNDS = 2  # minimum number of rounds by the user
TRIES = 4  # the user's attempts, to allow for loaded machines
MEGABYTE = 1_000_000
# Pixels in the newly opened window, from its upper left corner; negative values count from the opposite edge.
START_BOX = (-103, 86)
GRAPH_LEFT, GRAPH_RIGHT, GRAPH_MIDDLE = 62, 594, 300
# Mnemonic in the Scale menu, and the scale. Clients set other scales.
SCALES = (("g", "DB10V"), ("o", "DBVH"), ("a", "DB10VH"))
PREFERENCES = "^Preferences"
REFUSED = '"Execution error;Preferences is open"'


class WindowCase(ProgramCase):
    targets = ("window",)

    @classmethod
    def setUpClass(cls):
        manager = Manager()
        cls.addClassCleanup(manager.stop)
        super().setUpClass()
        cls.person = Person()

    def setUp(self):
        super().setUp()
        self.range(6.5e6, 7.7e6)
        self.person.activate()

    def types_start(self, text):
        self.person.click(*START_BOX, times=2)
        self.person.write(text)

    def opens(self, menu, entry, title):
        """Opens a dialog with the mnemonics of menu and entry. Retries, because running hardware disables the menus."""
        for _ in range(20):
            self.person.keys(f"alt+{menu}", entry)
            try:
                return self.person.appears(title, 3)
            except AssertionError:
                self.person.keys("Escape", "Escape")
        return self.person.appears(title)

    def closes(self, dialog, title):
        self.person.activate(dialog)
        self.person.keys("Escape")
        self.person.vanishes(title)
        self.person.activate()


class Stage:
    """The state that the user shares with the clients."""

    def __init__(self):
        self.dialog = ("closed", 0)  # "closed", "opening", "open" or "closing"; and the number of changes
        self.may_sweep = threading.Event()
        self.may_sweep.set()
        self.ends = threading.Event()
        self.scales = set()  # scales that a client has seen

    def turn(self, state):
        self.dialog = (state, self.dialog[1] + 1)


class Worker(threading.Thread):
    """A client that works until the stage ends."""

    usual_errors = {-213, -230}  # another client's sweep is running or has just emptied the table

    def __init__(self, client, stage, number):
        super().__init__(daemon=True)
        self.client = client
        self.stage = stage
        self.random = random.Random(number)
        self.steps = self.refused = self.accepted = self.rows = self.curves = 0
        self.failure = None

    def run(self):
        try:
            self.client.write("CALC:UNIT V")
            while not self.stage.ends.is_set():
                before = self.stage.dialog
                self.step()
                self.client.write(f"DISP:BOTT {self.random.randint(-90, -40)}")
                self.judge(before)
                self.steps += 1
        except Exception as problem:  # pylint: disable=broad-except
            self.failure = repr(problem)

    def step(self):
        raise NotImplementedError

    def judge(self, before):
        """Checks the errors caused by a step. Its last command must be rejected while a dialog is open."""
        errors = []
        while (error := self.client.error())[0] != 0:
            errors.append(error)
        after = self.stage.dialog
        refusals = [text for number, text in errors if number == -200]
        if before == after == ("open", after[1]):
            self.check(len(refusals) > 0, "the command was not refused although a dialog is open")
            self.refused += 1
        if before == after == ("closed", after[1]):
            self.check(not refusals, refusals)
            self.accepted += 1
        self.check(set(refusals) <= {REFUSED}, refusals)
        self.check({number for number, _ in errors} <= self.usual_errors | {-200}, errors)

    def check(self, good, what):
        if not good:
            raise AssertionError(what)

    def sweeps(self):
        if self.stage.may_sweep.is_set() or self.stage.dialog[0] == "open":
            self.client.write("INIT")
            self.check(self.client.ask("*OPC?") == "1", "*OPC?")

    def levels(self, is_block):
        levels = self.client.last_levels(is_block)
        if levels is None:
            return
        self.check(len(levels) == 400, f"{len(levels)} levels")
        self.check(0 <= min(levels) and 0.5 < max(levels) < 1.5, f"{min(levels)} to {max(levels)} V")
        self.curves += 1


class Sweeper(Worker):
    def step(self):
        self.sweeps()
        self.levels(is_block=False)
        row = self.client.ask("FREQ:STAR?;STOP?;STEP?;:SWE:POIN?").split(";")
        self.check(len(row) == 4 and row[3] == "400", row)
        start, stop = float(row[0]), float(row[1])
        self.check(6.3e6 <= start <= 6.7e6 and 7.7e6 <= stop <= 7.8e6, row)


class Reader(Worker):
    """Reads blocks and pictures."""

    def run(self):
        self.client.write("FORM REAL")
        super().run()

    def step(self):
        self.sweeps()
        for _ in range(5):
            self.levels(is_block=True)
        if self.steps % 10 == 0:
            picture = self.client.block("HCOP:DATA?")
            self.check(picture.startswith(b"\x89PNG") and picture[-8:-4] == b"IEND", "no picture")


class Changer(Worker):
    """Changes scales, markers, range and traces."""

    def step(self):
        # Read each scale in the message that replaces it.
        self.stage.scales.add(self.client.ask(f"DISP:SCAL?;SCAL {self.random.choice(('LIN', 'DBV'))}"))
        self.client.write(f"FREQ:STOP {self.random.choice((7.7, 7.75, 7.8))} MHZ")
        self.client.write("CALC:MARK2:MAX")
        frequency = self.client.number("CALC:MARK2:X?")
        self.check(6.3e6 <= frequency <= 7.8e6, frequency)
        self.client.write(f"AVER {self.random.randint(0, 1)};:TRAC:STOR 2;DEL 2")
        self.check(self.client.ask("AVER?;:TRAC:CAT?")[1] == ";", "AVER?")
        answer = self.client.ask("CALC:RES? FILT;*ESE?").split(";")
        self.check(answer[-1] == "0" and len(answer) <= 2, answer)
        for value in answer[0].split(",") if len(answer) == 2 else ():
            float(value)


class Watcher(Worker):
    """Watches for changes made by the user."""

    start_freq = stop_freq = marker = 0.0
    sweeping = False

    def step(self):
        answer = self.client.ask("FREQ:STAR?;STOP?;:CALC:MARK1:X?;:DISP:SCAL?;:STAT:OPER:COND?;:INIT:CONT?").split(";")
        self.check(len(answer) == 6 and answer[5] == "0", answer)
        self.start_freq, self.stop_freq, self.marker = map(float, answer[:3])
        self.stage.scales.add(answer[3])
        self.sweeping = answer[4] != "0"
        self.rows += 1


class Together(WindowCase):
    def test_four_clients_and_a_person(self):
        clients = [self.c] + [self.program.client() for _ in range(3)]
        for client in clients[1:]:
            self.addCleanup(client.close)
        self.c.sweep()
        self.c.block("HCOP:DATA?")
        self.closes(self.opens("s", "p", PREFERENCES), PREFERENCES)
        memory = self.program.memory()
        self.stage = Stage()
        self.workers = [kind(client, self.stage, number)
                        for number, (kind, client) in enumerate(zip((Sweeper, Reader, Changer, Watcher), clients))]
        self.watcher = self.workers[3]
        for worker in self.workers:
            worker.start()
        try:
            self.person_goes_on()
        finally:
            self.stage.may_sweep.set()
            self.stage.ends.set()
            for worker in self.workers:
                worker.join(LONG)
        self.assertEqual([worker.failure for worker in self.workers], [None] * 4)
        self.assertFalse(any(worker.is_alive() for worker in self.workers))
        self.assertGreater(self.workers[0].curves, 5)
        self.assertGreater(self.workers[1].curves, 25)
        self.assertIsNone(self.program.process.poll(), self.program.said())
        for client in clients:
            self.assertIn(",Calvorn,", client.ask("*IDN?"))
            client.write("FORM ASC;*CLS")
        self.still_obeys_the_person()
        self.assertLess(self.program.memory() - memory, 40 * MEGABYTE)

    def person_goes_on(self):
        end, number = time.monotonic() + SECONDS, 0
        while time.monotonic() < end or number < ROUNDS:
            self.walks_through_the_menus()
            self.chooses_a_scale(*SCALES[number % len(SCALES)])
            self.enters_a_frequency(6_400_000 + 10_000 * (number % 20))
            self.moves_the_cursor(100 + 40 * (number % 5))
            self.opens_the_preferences()
            number += 1

    def seen(self, wanted, what, seconds=LONG):
        """Waits for the condition, and checks that no client fails in the meantime."""
        def look():
            failures = [worker.failure for worker in self.workers if worker.failure]
            self.assertEqual(failures, [])
            return wanted()

        return until(look, what, seconds)

    def tries(self, act, wanted, what):
        """Performs the action. If nothing happens, closes any open menu or dialog and tries again."""
        for _ in range(TRIES - 1):
            act()
            try:
                return self.seen(wanted, what, LONG / TRIES)
            except AssertionError:
                self.person.keys("Escape", "Escape")
        act()
        return self.seen(wanted, what, LONG / TRIES)

    def all_get_on(self, counter):
        before = [getattr(worker, counter) for worker in self.workers]
        self.seen(lambda: all(getattr(worker, counter) >= count + 2 for worker, count in zip(self.workers, before)),
                  f"{counter} of all clients")

    def walks_through_the_menus(self):
        self.person.keys("alt+f", "Right", "Right", "Right", "Right", "Down")
        self.all_get_on("accepted")
        self.person.keys("Escape", "Escape")

    def chooses_a_scale(self, letter, scale):
        self.stage.scales.clear()
        self.tries(lambda: self.person.keys("alt+c", letter), lambda: scale in self.stage.scales, f"the scale {scale}")

    def enters_a_frequency(self, hertz):
        def enters():
            self.types_start(str(hertz))
            self.person.keys("Return")

        self.tries(enters, lambda: self.watcher.start_freq == hertz, f"{hertz} Hz")
        self.person.keys("Tab")

    def moves_the_cursor(self, row):
        x = GRAPH_LEFT + (GRAPH_RIGHT - GRAPH_LEFT) * row // 400
        for step in range(-40, 1, 10):
            self.person.move(x + step, GRAPH_MIDDLE + step)
        self.person.click(x, GRAPH_MIDDLE)

        def is_there():
            start, stop, marker = self.watcher.start_freq, self.watcher.stop_freq, self.watcher.marker
            return abs((marker - start) / (stop - start) * 400 - row) < 8

        self.seen(is_there, f"M1 at sample {row}")

    def opens_the_preferences(self):
        self.stage.may_sweep.clear()
        self.stage.turn("opening")
        dialog = self.opens("s", "p", PREFERENCES)
        self.stage.turn("open")
        self.all_get_on("refused")
        self.stage.turn("closing")
        self.closes(dialog, PREFERENCES)
        self.stage.turn("closed")
        self.stage.may_sweep.set()
        self.all_get_on("accepted")

    def still_obeys_the_person(self):
        self.c.write("ABOR;:AVER OFF;:CALC:MARK2:X MIN;:FREQ:STOP 7.7 MHZ")
        self.c.wait_for("STAT:OPER:COND?", lambda answer: answer == "0")
        self.person.keys("alt+c", "l")
        self.c.wait_for("DISP:SCAL?", lambda answer: answer == "LIN")
        self.types_start("6500000")
        self.person.keys("Return", "F5")
        self.c.wait_for("INIT:CONT?", lambda answer: answer == "1")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 3)
        self.person.keys("F5")
        self.c.wait_for("INIT:CONT?;:STAT:OPER:COND?", lambda answer: answer == "0;0")
        self.assertEqual(self.c.ask("FREQ:STAR?;STOP?;:DISP:SCAL?"), "6500000;7700000;LIN")
        self.assertEqual(self.c.numbers("CALC:FREQ?"), [6.5e6 + 3000 * index for index in range(400)])
        self.fine()


class OneClient(WindowCase):
    def test_sweeps_of_a_client_leave_the_keyboard_to_the_person(self):
        for part, rest, command in (("66", "00000", "INIT"), ("6", "610000", "INIT:CONT ON"), ("662", "0000", "ABOR")):
            with self.subTest(command):
                self.types_start(part)
                self.c.write(command)
                self.c.ask("*OPC?")
                self.person.write(rest)
                self.person.keys("Return")
                self.c.wait_for("FREQ:STAR?", lambda answer, wanted=part + rest: answer == wanted)
        self.fine()

    def test_what_is_typed_stays_when_a_client_changes_something(self):
        for number, command in enumerate(("FREQ:STOP 7.8 MHZ", "FREQ:STAR 6.6 MHZ", "FREQ:SPAN 1 MHZ", "DISP:SCAL DBV",
                                          "CALC:MARK1:X MIN", "*RST")):
            with self.subTest(command):
                self.types_start("69")
                self.c.write(command)
                self.c.ask("*OPC?")
                self.person.write(f"0000{number}")
                self.person.keys("Return")
                self.c.wait_for("FREQ:STAR?", lambda answer, wanted=f"690000{number}": answer == wanted)
        self.fine()

    def test_an_open_menu_opens_no_dialog_while_a_client_sweeps(self):
        self.opens_and_closes("Generator calibration", "g")
        self.person.keys("alt+s")
        self.c.write("INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 3)
        self.person.keys("g")
        self.person.keys("Escape", "Escape")
        # An open dialog would block this key.
        self.person.keys("alt+c", "g")
        self.c.wait_for("DISP:SCAL?", lambda answer: answer == "DB10V")
        self.assertEqual(self.person.find("^Generator calibration"), "")
        self.assertEqual(self.c.ask("INIT:CONT?"), "1")
        self.c.write("ABOR")
        self.opens_and_closes("Generator calibration", "g")
        self.fine()

    def opens_and_closes(self, title, entry):
        """Checks that while the dialog is open, queries are answered and commands rejected."""
        dialog = self.opens("s", entry, f"^{title}")
        self.assertEqual(self.c.ask("FREQ:STAR?"), "6500000")
        for command in ("INIT", "FREQ:STOP 7 MHZ", "DISP:SCAL DBV", "*RST", "OUTP ON", "CALC:MARK1:X MIN", "AVER ON"):
            self.c.write(command)
            self.assertEqual(self.c.error(), (-200, f'"Execution error;{title} is open"'), command)
        self.assertEqual(self.c.ask("FREQ:STOP?;:DISP:SCAL?;:OUTP?;:AVER?;:STAT:OPER:COND?")[:8], "7700000;")
        self.closes(dialog, f"^{title}")
        self.c.write("FREQ:STOP 7.7 MHZ")
        self.fine()

    def test_every_dialog_comes_first(self):
        for title, entry in (("Configuration", "c"), ("Detector calibration", "d"), ("Level calibration", "l"),
                             ("Preferences", "p")):
            with self.subTest(title):
                self.opens_and_closes(title, entry)


class Closing(WindowCase):
    def test_the_window_closes_while_a_client_sweeps(self):
        self.c.write("DISP:SCAL DBV;:INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 3)
        self.person.keys("ctrl+q")
        self.assertEqual(self.program.process.wait(LONG), 0, self.program.said())
        self.assertFalse(self.program.unix_socket().exists())
        text = (self.program.folder / "Calvorn.ini").read_text(encoding="utf-8")
        for line in ("Start=6500000", "Stop=7700000", "Scale=1", f"Port={self.program.port}"):
            self.assertTrue(re.search(rf"^{line}$", text, re.MULTILINE), f"{line}: {text}")
