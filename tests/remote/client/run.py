#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the tests for the board named in CALVORN_BOARD (PIC, LPT or VNA), or for all three boards in turn.

Tests calvorn-sweep or, with CALVORN_TARGET=window, the window, which needs a display (../../with-display).
Arguments are test names, such as test_range or test_range.Range.test_span; without arguments, all tests run.
"""

import os
import pathlib
import sys
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))

import harness  # noqa: E402


def each(found):
    for test in found:
        if isinstance(test, unittest.TestSuite):
            yield from each(test)
        else:
            yield test


def suite(names):
    """Returns the tests whose class supports the target, and those that could not be loaded."""
    loader = unittest.defaultTestLoader
    found = loader.loadTestsFromNames(names) if names else loader.discover(str(HERE), "test_*.py", str(HERE))
    return unittest.TestSuite(test for test in each(found)
                              if harness.target() in getattr(test, "targets", harness.TARGETS))


def main():
    chosen = os.environ.get("CALVORN_BOARD")
    boards = [chosen] if chosen else harness.BOARDS
    if not set(boards) <= set(harness.BOARDS):
        sys.exit(f"CALVORN_BOARD={chosen}: it must be one of {', '.join(harness.BOARDS)}")
    if harness.target() not in harness.TARGETS:
        sys.exit(f"CALVORN_TARGET={harness.target()}: it must be one of {', '.join(harness.TARGETS)}")
    good = True
    for board in boards:
        os.environ["CALVORN_BOARD"] = board
        print(f"== {harness.target()} {board}", file=sys.stderr, flush=True)
        began = time.monotonic()
        result = unittest.TextTestRunner(verbosity=2).run(suite(sys.argv[1:]))
        print(f"== {harness.target()} {board}: {time.monotonic() - began:.1f} s", file=sys.stderr, flush=True)
        good = good and result.wasSuccessful() and result.testsRun > 0
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
