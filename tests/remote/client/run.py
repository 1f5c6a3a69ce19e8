#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the tests for the board of CALVORN_BOARD (PIC, LPT or VNA), or for all three one after the other.

Arguments are names of tests, as in test_range or test_range.Range.test_span; without them all run.
"""

import os
import pathlib
import sys
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

import harness  # noqa: E402


def suite(names):
    if names:
        return unittest.defaultTestLoader.loadTestsFromNames(names)
    return unittest.defaultTestLoader.discover(str(HERE), "test_*.py", str(HERE))


def main():
    chosen = os.environ.get("CALVORN_BOARD")
    boards = [chosen] if chosen else harness.BOARDS
    if not set(boards) <= set(harness.BOARDS):
        sys.exit(f"CALVORN_BOARD={chosen}: it must be one of {', '.join(harness.BOARDS)}")
    good = True
    for board in boards:
        os.environ["CALVORN_BOARD"] = board
        print(f"== {board}", file=sys.stderr, flush=True)
        began = time.monotonic()
        result = unittest.TextTestRunner(verbosity=2).run(suite(sys.argv[1:]))
        print(f"== {board}: {time.monotonic() - began:.1f} s", file=sys.stderr, flush=True)
        good = good and result.wasSuccessful() and result.testsRun > 0
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
