# SPDX-License-Identifier: MIT
"""Computes a curve's results from its frequencies in Hz and its amplitudes in dB."""

import math

HALF_POWER = 10 * math.log10(2)


def crossing(freqs, levels, level, start, step):
    """Returns where the curve first falls below the level on one side, with linear interpolation; None if never."""
    index = start
    while 0 <= index + step < len(levels):
        one, other = levels[index], levels[index + step]
        if other is None:
            return None
        if other < level:
            return freqs[index] + (freqs[index + step] - freqs[index]) * (one - level) / (one - other)
        index += step
    return None


def edges(freqs, levels, below, start=None):
    """Returns the lower and upper frequency at this many dB below the peak."""
    start = levels.index(max(levels)) if start is None else start
    level = levels[start] - below
    return crossing(freqs, levels, level, start, -1), crossing(freqs, levels, level, start, 1)


def width(pair):
    return None if None in pair else abs(pair[1] - pair[0])


def middles(freqs, levels, extreme):
    """Returns the middle frequency of each run of neighbouring samples that equal the extreme."""
    found, index = [], 0
    while index < len(levels):
        last = index
        if levels[index] == extreme:
            while last + 1 < len(levels) and levels[last + 1] == extreme:
                last += 1
            found.append((freqs[index] + freqs[last]) / 2)
        index = last + 1
    return found


def filter_results(freqs, levels):
    """Returns a filter's results except its loss, for a curve with a single peak."""
    bw3, bw6, bw20, bw60 = (edges(freqs, levels, below) for below in (HALF_POWER, 6, 20, 60))
    inside = [level for freq, level in zip(freqs, levels) if bw3[0] <= freq <= bw3[1]]
    centre = (bw3[0] + bw3[1]) / 2
    slope = lambda side: None if bw20[side] is None else 14 / abs(math.log2(bw6[side] / bw20[side]))
    return {"peak": max(levels), "bw3": width(bw3), "bw6": width(bw6), "bw60": width(bw60), "centre": centre,
            "q": centre / width(bw3), "shape": None if width(bw60) is None else width(bw60) / width(bw6),
            "ripple": max(inside) - min(inside), "slopeLow": slope(0), "slopeHigh": slope(1)}


def band_below(freqs, levels, level):
    """Returns the width of the band around the lowest sample in which the curve is below a level."""
    lowest = levels.index(min(levels))
    upside_down = [-value for value in levels]
    return width((crossing(freqs, upside_down, -level, lowest, -1), crossing(freqs, upside_down, -level, lowest, 1)))


def return_loss_of_swr(swr):
    return -20 * math.log10((swr - 1) / (swr + 1))
