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
    std::optional<double> value;        // in SI units or dB
    Missing missing = Missing::Nothing; // the reason why there is no value
};

// All results of one kind, in the order of resultKeys().
using Results = std::vector<Result>;

enum class ResultKind { Filter, Notch, Crystal, Match };

inline constexpr double kDefaultFixtureOhms = 50.0;

// peak (dB), peakFreq, loss, bw3, bw6, bw60, centre, q, shape, ripple, slopeLow, slopeHigh.
//
// The -3 dB points are at half the peak power; -6, -20 and -60 dB are exact. loss: -peak, for a relative response only.
// centre: midway between the -3 dB points. q: centre / bw3. shape: bw60 / bw6. ripple: highest minus lowest sample
// between the -3 dB points. slopeLow, slopeHigh: 14 dB divided by the number of octaves between the -6 dB and -20 dB
// points on that side; positive.
Results filterResults(const Response &response);

// depth (dB), notchFreq, bw3. The highest sample is taken as the level outside the notch. depth is the difference
// between this level and the lowest sample; bw3 is the distance between the half-power points on both sides of it.
Results notchResults(const Response &response);

// fs, fp, rm, lm, cm, c0, q of a crystal between a source and a load of `ohms` each (greater than 0). The response must
// be relative to the fixture with the crystal replaced by a short.
//
// fs: peak frequency. fp: frequency of the minimum above fs, after which the curve must rise again; if the dip reaches
// the detector's floor, the middle of the part below the floor. With the loss a at fs and the half-power bandwidth B:
// rm = 2 ohms (10^(a/20) - 1), lm = (2 ohms + rm) / (2 pi B), cm = 1 / ((2 pi fs)^2 lm), c0 = cm / ((fp/fs)^2 - 1),
// q = 2 pi fs lm / rm. A single-sample peak or minimum is refined with a parabola in dB through the sample and its
// neighbours.
Results crystalResults(const Response &response, double ohms);

// returnLoss (dB), rho, swr, freq, bw15, bw20, measured with a bridge and relative to an open or a short: return loss,
// reflection coefficient and SWR at the lowest sample, its frequency, and the bandwidths around it for an SWR of up to
// 1.5 and 2.
Results matchResults(const Response &response);

// ohms: used only for a crystal.
Results resultsOf(ResultKind kind, const Response &response, double ohms = kDefaultFixtureOhms);

// Returns the keys for one kind of result, in order.
std::span<const char *const> resultKeys(ResultKind kind);

} // namespace calvorn
