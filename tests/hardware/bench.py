# SPDX-License-Identifier: MIT
"""Runs the scripts in hardware/pic-board on modified copies of its files."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPTS = ROOT / "hardware/pic-board"
NETLIST = SCRIPTS / "pic-board.netlist"
PAGE = ROOT / "docs/hardware/pic-board.md"
GUIDE = ROOT / "docs/hardware/pic-newcomer.md"
SCHEMATIC = ROOT / "docs/hardware/pic-board.svg"


def changed(text, *changes):
    """Applies changes, each a pair (old, new). The old text must occur exactly once."""
    for old, new in changes:
        if text.count(old) != 1:
            raise AssertionError(f"{text.count(old)} times, not once: {old!r}")
        text = text.replace(old, new)
    return text


class Bench(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def copy(self, original, *changes):
        path = self.folder / original.name
        path.write_text(changed(original.read_text(encoding="utf-8"), *changes), encoding="utf-8")
        return path

    def run_script(self, name, *arguments):
        return subprocess.run([sys.executable, "-B", str(SCRIPTS / name), *map(str, arguments)], capture_output=True,
                              text=True, encoding="utf-8", timeout=60, check=False)

    def assert_fine(self, result):
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def assert_refused(self, result, *reasons):
        """Checks that the script exited with 1 and printed exactly these reasons."""
        self.assertEqual(result.returncode, 1, result.stdout)
        said = [line.split(": ", 1)[1] for line in result.stderr.splitlines()]
        self.assertEqual(sorted(said), sorted(reasons))
