// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/response.h"

#include <optional>
#include <span>
#include <vector>

namespace calvorn {

enum class ResultUnit { Hertz, Decibel, DecibelPerOctave, Ohm, Henry, Farad, One };

struct Result
{
    const char *key;
    ResultUnit unit;
    std::optional<double> value;        // in SI units and dB
    Missing missing = Missing::Nothing; // why there is no value
};

// The results of one kind, always all of them and in the order of resultKeys().
using Results = std::vector<Result>;

enum class ResultKind { Filter, Notch, Crystal, Match };

inline constexpr double kDefaultFixtureOhms = 50.0;

// peak (dB), peakFreq, loss, bw3, bw6, bw60, centre, q, shape, ripple, slopeLow, slopeHigh.
//
// The -3 dB points have half the power of the peak; -6, -20 and -60 dB are exact. loss: -peak, only of a relative
// response. centre: the middle of the -3 dB points. q: centre / bw3. shape: bw60 / bw6. ripple: highest less lowest
// sample between the -3 dB points. slopeLow, slopeHigh: 14 dB by the octaves between the -6 dB and the -20 dB point of
// that side; positive.
Results filterResults(const Response &response);

// depth (dB), notchFreq, bw3. The level outside is the highest of the sweep; depth counts from there down to the
// lowest sample, and bw3 lies between the points to either side of the notch at half that power.
Results notchResults(const Response &response);

// fs, fp, rm, lm, cm, c0, q of a crystal between a source and a load of `ohms` each (above 0); relative to the fixture
// with a short in place of the crystal.
//
// fs: frequency of the peak. fp: frequency of the minimum above it, after which the curve must rise again; where the
// dip goes below the detector's floor, the middle of what is hidden. With the loss a at fs and the bandwidth B at half
// power: rm = 2 ohms (10^(a/20) - 1), lm = (2 ohms + rm) / (2 pi B), cm = 1 / ((2 pi fs)^2 lm), c0 = cm / ((fp/fs)^2 -
// 1), q = 2 pi fs lm / rm. Peak and minimum that are one sample wide are refined by a parabola in dB through it and its
// neighbours.
Results crystalResults(const Response &response, double ohms);

// returnLoss (dB), rho, swr, freq, bw15, bw20 with a bridge, relative to an open or a short: return loss, reflection
// coefficient and SWR at the lowest sample, its frequency, and the bandwidths around it for SWR up to 1.5 and 2.
Results matchResults(const Response &response);

// ohms: only of a crystal.
Results resultsOf(ResultKind kind, const Response &response, double ohms = kDefaultFixtureOhms);

// The keys of a kind in their order.
std::span<const char *const> resultKeys(ResultKind kind);

} // namespace calvorn
