# SPDX-License-Identifier: MIT
"""Sends the same commands to the chip and to the acquisition server's simulated board."""

import os
import pathlib
import subprocess

import page
from case import FirmwareCase

COMMANDS = 10_000
SEED = 1


def record():
    """Yields the simulated board's session: bytes sent, bytes received, tuning word or None."""
    default = pathlib.Path(__file__).resolve().parents[2] / "build" / "release" / "tests" / "pic_session"
    program = os.environ.get("CALVORN_PIC_SESSION", default)
    text = subprocess.run([program, str(SEED), str(COMMANDS)], check=True, capture_output=True, text=True).stdout
    for line in text.splitlines():
        sent, answer, word = line.split()
        yield (bytes.fromhex(sent), b"" if answer == "-" else bytes.fromhex(answer),
               None if word == "-" else int(word, 16))


class Agreement(FirmwareCase):
    def sweep(self, answer):
        """Sweeps one complete frame and stops; returns whether the bytes equal `answer`."""
        first = self.c.counts().bytes
        self.c.send(b"G\r")
        self.c.expect(first + 3 + page.FRAME, 4.1)
        found = self.c.heard(first)[:3 + page.FRAME]
        return found + self.c.stop()[-3:] == answer

    def test_ten_thousand_commands(self):
        """Compares the answers byte for byte, except for the name and the version in the answer to ?."""
        self.c.ask("device hash")
        asked = swept = 0
        for number, (sent, answer, word) in enumerate(record(), 1):
            where = f"command {number}: {sent!r}"
            if len(answer) > page.FRAME:
                self.assertTrue(self.sweep(answer), where)
                swept += 1
                continue
            found = self.c.tell(sent)
            if answer.startswith(b"?+"):
                self.assertEqual(found.split(b" ")[2:], answer.split(b" ")[2:], where)
                asked += 1
            else:
                self.assertEqual(found, answer, where)
            if word is not None:
                self.assertEqual(self.c.words(self.c.counts().words - 1)[0].tuning, word, where)
        self.assertEqual(number, COMMANDS)
        self.assertGreater(asked, 100)
        self.assertGreater(swept, 100)
