# SPDX-License-Identifier: MIT
"""Tests the frame bytes, the sample order, and the timing of each conversion."""

import math

import case
import chip
import page

START = 8_980_000
STEP = 100
MULTIPLIER = 2_654_435_761
FOSC_32 = 0x80  # in ADCON0
REFERENCE_ON_AN3 = {1, 3, 5, 10}  # PCFG, with AN0 analogue
ACQUISITION = 20e-6  # s
PER_POINT = 60e-6  # s per point, in addition to the settling time
SMALLEST_FRAME = page.FRAME * 10 / 113_636  # s


def hashed(word):
    """Returns the counts of the bench's "hash" model for a word."""
    return (word * MULTIPLIER & 0xFFFFFFFF) >> 22


class Frames(case.FirmwareCase):
    def prepare(self, start=START, step=STEP):
        self.assertEqual(self.c.prepare(start, step), b"B+\rD+\rP+\r")

    def words(self, start, step):
        return [page.tuning_word(start + index * step, self.c.wiring.clock) for index in range(page.POINTS)]

    def test_numbers_of_the_page(self):
        self.assertEqual(page.crc(b"123456789"), 0x29B1)
        self.assertEqual(page.crc(page.plan_bytes(START, STEP)), 0x187C)
        self.assertEqual(page.crc(page.plan_bytes(10_000_000, -2_500)), 0x95FC)
        self.assertEqual(page.samples_of(bytes(3) + bytes.fromhex("FFC01556AA") * 100)[:4], [0x3FF, 1, 0x155, 0x2AA])

    def test_samples_belong_to_their_frequencies(self):
        self.c.ask("device hash")
        for start, step in ((START, STEP), (10_000_000, -2_500), (0, 313_283), (124_999_999, -313_283)):
            self.prepare(start, step)
            for frame in self.sweeps(start, step, 3):
                self.assertEqual(page.samples_of(case.bytes_of(frame)),
                                 [hashed(word) for word in self.words(start, step)])

    def test_ramp(self):
        words = self.words(START, STEP)
        self.c.ask(f"device ramp {words[0]} {words[-1]}")
        self.prepare()
        for frame in self.sweeps(START, STEP, 2):
            samples = page.samples_of(case.bytes_of(frame))
            self.assertEqual((samples[0], samples[-1]), (0, 1023))
            for index, sample in enumerate(samples):
                self.assertAlmostEqual(sample, 1023 * index / 399, delta=1.1)

    def test_packing_of_counts(self):
        """Checks that counts with different bit patterns are packed correctly."""
        self.prepare(0, 0)
        for count in (0, 1, 2, 0x155, 0x2AA, 511, 512, 513, 1022, 1023):
            self.c.ask(f"device constant {count}")
            frame = self.sweeps(0, 0)[0]
            self.assertEqual(page.samples_of(case.bytes_of(frame)), [count] * page.POINTS)

    def test_first_sync_byte_among_the_samples(self):
        # The ten bits of 662, 1010010110, begin with A5.
        self.c.ask("device constant 662")
        self.prepare()
        frame = case.bytes_of(self.sweeps(START, STEP, 2)[1])
        self.assertGreater(frame.count(0xA5), 50)

    def test_another_plan_has_another_crc(self):
        self.prepare()
        frame = case.bytes_of(self.sweeps(START, STEP)[0])
        for start, step in ((START + 1, STEP), (START, STEP + 1), (START, -STEP), (0, 0)):
            self.assertFalse(page.is_good(frame, start, step))

    def test_no_gap_with_the_usual_settling(self):
        for name in page.WIRINGS:
            with self.subTest(name):
                self.c.wire(name)
                self.prepare()
                frames = self.c.frames(4)
                starts = [byte.cycle for frame in frames for byte in frame]
                pauses = [later - earlier for earlier, later in zip(starts, starts[1:])]
                bit = min(pauses) / 10
                self.assertAlmostEqual(self.c.hertz / bit / chip.BAUD, 1, delta=0.02)
                gap = max(pauses) / bit - 10
                took = (frames[1][0].cycle - frames[0][0].cycle) / self.c.hertz
                case.note(f"{self.crystal}, {name}: {self.c.hertz / bit:.0f} baud, largest gap {gap:.2f} bits, "
                          f"{took * 1e3:.3f} ms a frame")
                self.assertLess(gap, 1)

    def conversions(self, first):
        """Returns the seconds from FQ_UD to the start of each conversion, and the conversions."""
        words = self.c.words()
        found = self.c.conversions(first)
        return [(item.cycle - words[item.word - 1].cycle) / self.c.hertz for item in found], found

    def test_settling_is_never_shorter(self):
        shortest = {}
        for microseconds in (20, 21, 22, 37, 49, 50, 51, 63, 64, 65, 79, 80, 81, 100, 127, 128, 129, 200, 255, 256, 257,
                             300, 511, 512, 513, 999, 1_000, 1_023, 1_024, 1_025, 2_047, 2_048, 2_049, 4_095, 4_096,
                             5_000, 8_191, 8_192, 9_999, 10_000):
            self.accepts(f"S{microseconds}")
            self.assertEqual(self.settling(), microseconds)
            self.prepare()
            first = self.c.counts().conversions
            count = self.c.counts().bytes
            self.c.send(b"G\r")
            self.c.run(0.002 + 20 * max(microseconds, 110) * 1e-6)
            self.c.stop()
            delays, found = self.conversions(first)
            self.assertGreaterEqual(len(delays), 10)
            self.assertGreaterEqual(min(delays) * 1e6, microseconds)
            shortest[microseconds] = min(delays) * 1e6
            # There is one conversion for each word.
            self.assertEqual([item.word for item in found], list(range(found[0].word, found[0].word + len(found))))
            self.assertGreater(self.c.counts().bytes, count)
        case.note(f"{self.crystal}: settling asked and shortest, us: " +
                  ", ".join(f"{asked} {found:.1f}" for asked, found in shortest.items()))

    def test_a_frame_takes_no_longer_than_told(self):
        """The limit is 400 times the sum of settling time and 60 us, or the transmission time if that is longer."""
        for microseconds in (20, 50, 51, 60, 100, 500, 10_000):
            self.accepts(f"S{microseconds}")
            self.prepare()
            frame = self.sweeps(START, STEP)[0]
            took = (frame[-1].cycle - frame[0].cycle) / self.c.hertz
            limit = max(SMALLEST_FRAME, page.POINTS * (microseconds * 1e-6 + PER_POINT))
            case.note(f"{self.crystal}: {microseconds} us of settling, {took * 1e3:.2f} ms a frame")
            self.assertLessEqual(took, limit * 1.01)
            self.assertGreater(took, page.POINTS * microseconds * 1e-6 * 0.98)

    def test_a_slow_detector(self):
        """With a sufficient settling time the samples reach the level, and with a short one they do not."""
        words = self.words(START, STEP)
        self.c.ask("device hash")
        self.c.ask(f"settle {self.c.cycles(40e-6)}")
        worst = {}
        for microseconds in (50, 500):
            self.accepts(f"S{microseconds}")
            self.prepare()
            samples = page.samples_of(case.bytes_of(self.sweeps(START, STEP, 2)[1]))
            worst[microseconds] = max(abs(sample - hashed(word)) for sample, word in zip(samples, words))
        self.assertLessEqual(worst[500], 1)
        self.assertGreater(worst[50], 50)
        self.assertLess(worst[50], 1023 * math.exp(-50 / 40) + 2)

    def test_converter(self):
        """Channel 0 at Fosc/32, right-justified, reference at AN3, and no conversion before the acquisition ends."""
        for microseconds in (20, 50, 300):
            self.accepts(f"S{microseconds}")
            self.prepare()
            first = self.c.counts().conversions
            self.sweeps(START, STEP)
            delays, found = self.conversions(first)
            self.assertGreaterEqual(len(found), page.POINTS)
            self.assertGreaterEqual(min(delays), ACQUISITION)
            for item in found:
                self.assertEqual(item.adcon0 & 0xC0, FOSC_32)
                self.assertEqual(item.adcon0 & 0x38, 0)
                self.assertTrue(item.adcon0 & 1)
                self.assertTrue(item.adcon1 & 0x80)
                self.assertIn(item.adcon1 & 0x0F, REFERENCE_ON_AN3)
            shortest = min(later.cycle - earlier.cycle for earlier, later in zip(found, found[1:])) / self.c.hertz
            self.assertGreater(shortest, 12 * 32 / self.c.crystal.hertz + ACQUISITION)

    def test_settling_changes_between_sweeps(self):
        self.prepare()
        for microseconds in (200, 100, 400):
            self.accepts(f"S{microseconds}")
            first = self.c.counts().conversions
            self.sweeps(START, STEP)
            delays, _ = self.conversions(first)
            self.assertGreaterEqual(min(delays) * 1e6, microseconds)
            self.assertLess(min(delays) * 1e6, microseconds + 20)


class ManyFrames(case.FirmwareCase):
    def test_numbers_from_255_to_0(self):
        """Checks the numbers and CRCs of 259 frames."""
        self.assertEqual(self.c.prepare(START, STEP), b"B+\rD+\rP+\r")
        self.sweeps(START, STEP, 259)
        # After a new G the numbers start at 0.
        self.sweeps(START, STEP)


class FramesOfTheOtherCrystal(Frames):
    crystal = "18mhz432"
