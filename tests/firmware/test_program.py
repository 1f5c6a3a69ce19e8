# SPDX-License-Identifier: MIT
"""Sweeps with the simulated chip through calvorn-sweep or through the window, depending on CALVORN_TARGET."""

import re

import host
import page

START = 6_600_000
STOP = 7_598_000
RESONANCE = 7_040_000
WIDTH = 120_000
SWEEPS = 200


class Sweeps(host.HostCase):
    def test_curve_in_the_right_rows(self):
        self.begin()
        counts_at = self.band(RESONANCE, WIDTH)
        for start, stop in ((START, STOP), (1_000_000, 15_000_000), (7_000_000, 7_079_800)):
            self.span(start, stop)
            self.sweep()
            self.stands(counts_at)
        self.assertEqual(self.chip.faults(), [])

    def test_falling_sweep(self):
        self.begin()
        counts_at = self.band(RESONANCE, WIDTH)
        self.c.write("FREQ:CENT 7.1 MHZ;SPAN -1.2 MHZ")
        self.sweep()
        self.stands(counts_at)
        frequencies = self.c.numbers("CALC:FREQ?")
        self.assertGreater(frequencies[0], frequencies[-1])

    def test_many_sweeps(self):
        """Runs 200 sweeps in a row: each frame from the board becomes one sweep in the program."""
        self.begin()
        counts_at = self.band(RESONANCE, WIDTH)
        self.span(START, STOP)
        words = self.chip.counts().words
        self.c.write("INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= SWEEPS, 60)
        self.c.write("INIT:CONT OFF")
        self.c.wait_for("STAT:OPER:COND?", lambda answer: int(answer) & 8 == 0)
        sent = (self.chip.counts().words - words) // page.POINTS
        shown = int(self.c.ask("SWE:COUN?"))
        self.stands(counts_at)
        self.assertEqual(self.c.errors(), [])
        self.assertEqual(self.chip.faults(), [])
        # The last frame has no successor, and another may have started before the ! arrived.
        self.assertLessEqual(sent - shown, 3)
        print(f"-- {shown} sweeps of {sent} frames, lag {self.chip.lag() * 1e3:.1f} ms", flush=True)

    def test_device_that_changes(self):
        """Each sweep shows the current device."""
        self.begin()
        self.span(START, STOP)
        for hertz in (6_700_000, 7_000_000, 7_500_000):
            counts_at = self.band(hertz, WIDTH)
            self.sweep()
            self.stands(counts_at)


class Faults(host.HostCase):
    """The port or the board fails and recovers; see docs/hardware/errors.md."""

    def start(self):
        self.begin()
        self.counts_at = self.band(RESONANCE, WIDTH)
        self.span(START, STOP)
        self.sweep()
        self.c.write("INIT:CONT ON")
        self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 3)

    def ends_with(self, sentence):
        """Waits until the sweep stops and checks the error. The window shows it only in its log, not to clients."""
        found = self.fails()
        if host.harness.target() == "tool":
            self.assertTrue(any(re.search(sentence, text) for _, text in found), found)
            self.assertTrue(all(-300 < number <= -200 for number, _ in found), found)

    def works(self):
        self.c.write("INIT:CONT OFF")
        self.c.wait_for("STAT:OPER:COND?", lambda answer: int(answer) & 8 == 0)
        self.sweep()
        self.stands(self.counts_at)

    def test_unplugged_and_back(self):
        self.start()
        for _ in range(3):
            self.chip.unplug()
            self.ends_with("The connection to .* was lost")
            self.c.write("INIT:CONT OFF;*CLS;:INIT")
            self.ends_with(str(self.chip.link))
            self.chip.plug()
            self.works()
            self.c.write("INIT:CONT ON")
            self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 3)

    def test_reset_in_a_sweep(self):
        for kind in ("mclr", "watchdog", "brownout"):
            with self.subTest(kind):
                if not hasattr(self, "c"):
                    self.start()
                else:
                    self.c.write("INIT:CONT ON")
                    self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= 3)
                self.chip.ask(f"reset {kind}")
                self.ends_with("The board no longer delivers valid sweeps")
                self.works()

    def test_reset_between_sweeps(self):
        self.begin()
        counts_at = self.band(RESONANCE, WIDTH)
        self.span(START, STOP)
        for kind in ("mclr", "power", "watchdog", "brownout"):
            self.sweep()
            self.chip.ask(f"reset {kind}")
            self.sweep()
            self.stands(counts_at)

    def test_damaged_frames_are_never_shown(self):
        """Flips a bit in every 1,500th byte, and so in about every third frame: only the good frames are shown."""
        self.start()
        self.chip.ask("damage 1500")
        shown = int(self.c.ask("SWE:COUN?"))
        words = self.chip.counts().words
        for more in range(10, 60, 10):
            self.c.wait_for("SWE:COUN?", lambda answer: int(answer) >= shown + more, 20)
            self.stands(self.counts_at)
        shown = int(self.c.ask("SWE:COUN?")) - shown
        sent = (self.chip.counts().words - words) // page.POINTS
        self.assertGreater(sent - shown, sent * 0.2)
        self.assertLess(sent - shown, sent * 0.7)
        self.chip.ask("damage 0")
        self.works()


class Absent(host.HostCase):
    """Only for calvorn-sweep, because the window opens a message box first."""

    def test_not_there_at_the_start(self):
        self.begin(plugged=False)
        counts_at = self.band(RESONANCE, WIDTH)
        self.span(START, STOP)
        self.c.write("*CLS;INIT")
        self.assertTrue(any(str(self.chip.link) in text for _, text in self.fails()))
        self.chip.plug()
        self.sweep()
        self.stands(counts_at)


class SweepsOfTheOtherCrystal(Sweeps):
    crystal = "18mhz432"


class Identity(host.HostCase):
    def test_board_is_asked_once(self):
        """The program sends ! and then ? once, and the chip answers both."""
        self.begin()
        self.span(START, STOP)
        self.sweep()
        said = bytes(byte.value for byte in self.chip.bytes())
        self.assertTrue(said.startswith(b"!+\r"))
        self.assertEqual(said.count(b"?+CALVORN-PIC "), 1)
        self.assertIn(f"{page.WIRINGS['AD9850'].chip} {page.WIRINGS['AD9850'].clock} {page.SETTLING}".encode(), said)
