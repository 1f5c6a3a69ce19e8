# SPDX-License-Identifier: MIT
"""Tests the generator's tuning words: single frequencies and the 400 points of 23 plans."""

import case
import page

EDGES = (0, 1, 2, 3, 999, 1_000, 65_535, 65_536, 65_537, 7_000_000, 8_980_000, 9_999_999, 10_000_000, 16_777_215,
         16_777_216, 26_843_545, 29_999_999)


class Words(case.FirmwareCase):
    """Covers all four jumper settings, and both crystals through a subclass."""

    def exact(self, hertz, word):
        """Checks that the word is at most one unit from the exact word."""
        clock = self.c.wiring.clock
        self.assertLessEqual(abs(word - page.exact_word(hertz, clock)), 1, hertz)

    def frequencies(self, wiring):
        self.c.wire(wiring)
        clock = self.c.wiring.clock
        for hertz in (*EDGES, clock // 3, clock // 2, clock - 2, clock - 1):
            if hertz < clock:
                self.accepts(f"A{hertz}")
                self.has_frequency(hertz)
                self.exact(hertz, self.c.word()[0])

    def test_single_frequencies(self):
        for wiring in page.WIRINGS:
            with self.subTest(wiring):
                self.frequencies(wiring)

    def test_example_of_the_page(self):
        self.assertEqual(page.constant(125_000_000), 0x225C17D04E)
        self.assertEqual(page.constant(30_000_000), 0x8F2A633944)
        self.assertEqual(page.constant(180_000_000), 0x17DC65DEE1)
        self.accepts("A10000000")
        self.assertEqual(self.c.word(), (0x147AE148, 0))

    def plans(self, clock):
        """Returns pairs of start and step: rising, falling, constant, and with both ends at the limits."""
        widest = (clock - 1) // (page.POINTS - 1)
        top = clock - 1
        return ((0, widest), (top, -widest), (top - 399 * widest, widest), (399 * widest, -widest), (top, 0), (0, 0),
                (1, 1), (399, -1), (8_980_000, 100), (10_000_000, -2_500), (7_000_000, 0), (top - 399, 1), (top, -1),
                (1_000, 65_537), (16_777_216, 257), (20_000_000, -50_125), (3_333_333, 33_333), (29_999_999, -7_001),
                (65_536, 255), (12_345_678, -12_345), (29_000_000, -65_536), (12_000_000, -256),
                (28_000_000, -32_768))

    def sweep_all(self, wiring, which):
        self.c.wire(wiring)
        for start, step in self.plans(self.c.wiring.clock)[which]:
            with self.subTest(wiring=wiring, start=start, step=step):
                self.assertEqual(self.c.prepare(start, step), b"B+\rD+\rP+\r")
                words = self.c.counts().words
                self.sweeps(start, step)
                for index, word in enumerate(self.c.words(words)[:page.POINTS]):
                    self.exact(start + index * step, word.tuning)

    def test_plans(self):
        self.sweep_all("AD9850", slice(None))

    def test_plans_at_30_megahertz(self):
        self.sweep_all("AD9851", slice(None))

    def test_plans_at_180_megahertz(self):
        self.sweep_all("AD9851, six times", slice(None))

    def test_plans_with_the_second_jumper_alone(self):
        self.sweep_all("AD9850, J2 closed", slice(8, 10))


class WordsOfTheOtherCrystal(Words):
    crystal = "18mhz432"
