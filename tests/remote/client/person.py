# SPDX-License-Identifier: MIT
"""Simulates a user at the window: sends keys and clicks through xdotool, under a window manager."""

import pathlib
import re
import subprocess
import tempfile
import time

MAIN = r"^Brenik - Calvorn"
ACTIVATION = 3  # s
LONG = 60  # s; a loaded machine


def run(*words):
    """Runs xdotool and returns its output. Ignores its exit code: xdotool fails if it finds nothing."""
    done = subprocess.run(["xdotool", *map(str, words)], capture_output=True, text=True, timeout=LONG, check=False)
    return done.stdout.strip()


def until(wanted, what, seconds=LONG):
    """Calls wanted() until it returns a true value, and returns this value."""
    end = time.monotonic() + seconds
    while True:
        found = wanted()
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError(f"{what}: not within {seconds} s")
        time.sleep(0.02)


class Manager:
    """Runs openbox: without a window manager, windows cannot be activated."""

    def __init__(self):
        # Wait until openbox is ready: a window opened earlier would vanish briefly while it gets a
        # frame.
        with tempfile.TemporaryDirectory() as folder:
            sign = pathlib.Path(folder) / "up"
            self.process = subprocess.Popen(["openbox", "--startup", f"touch {sign}"], stdin=subprocess.DEVNULL,
                                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            until(sign.exists, "a window manager")

    def stop(self):
        self.process.terminate()
        self.process.wait(LONG)


class Person:
    def __init__(self):
        self.window = self.appears(MAIN)
        self.activate()

    @staticmethod
    def find(title):
        """Returns the last visible window with a matching title, or an empty string."""
        found = run("search", "--onlyvisible", "--name", title).split()
        return found[-1] if found else ""

    def appears(self, title, seconds=LONG):
        return until(lambda: self.find(title), f"the window {title}", seconds)

    @staticmethod
    def titles():
        """Returns the titles of all visible windows, for failure messages."""
        return [run("getwindowname", window) for window in run("search", "--onlyvisible", "--name", ".").split()]

    def vanishes(self, title):
        until(lambda: not self.find(title), f"the end of the window {title}")

    def activate(self, window=None):
        """Activates the window, so that it receives keys."""
        window = window or self.window

        def is_active():
            return run("getactivewindow") == window

        # The window manager ignores requests while it moves the focus to another window.
        for _ in range(LONG // ACTIVATION):
            if is_active():
                return
            run("windowactivate", window)
            try:
                until(is_active, "the active window", ACTIVATION)
            except AssertionError:
                continue
        raise AssertionError(f"{window} does not become the active window")

    @staticmethod
    def keys(*keys):
        run("key", "--delay", 20, *keys)

    @staticmethod
    def write(text):
        run("type", "--delay", 20, text)

    def size(self):
        """Returns the width and height of the window without its frame."""
        shown = dict(re.findall(r"^(\w+)=(-?\d+)$", run("getwindowgeometry", "--shell", self.window), re.MULTILINE))
        return int(shown["WIDTH"]), int(shown["HEIGHT"])

    def click(self, x, y, times=1):
        """Clicks at a position in pixels from the upper left corner; negative values count from the opposite edge."""
        self.move(x, y)
        run("click", "--repeat", times, "--delay", 60, 1)

    def move(self, x, y):
        width, height = self.size()
        run("mousemove", "--window", self.window, x if x >= 0 else width + x, y if y >= 0 else height + y)
