#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs firmware tests. The arguments are test names, for example test_words or test_words.Words.test_plans;
the default is all tests."""

import pathlib
import sys
import time
import unittest

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))


def main():
    loader = unittest.defaultTestLoader
    names = sys.argv[1:]
    suite = loader.loadTestsFromNames(names) if names else loader.discover(str(HERE), "test_*.py", str(HERE))
    began = time.monotonic()
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    print(f"== {time.monotonic() - began:.1f} s", file=sys.stderr, flush=True)
    return 0 if result.wasSuccessful() and result.testsRun > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
