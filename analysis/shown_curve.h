// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/limit_check.h"
#include "analysis/response.h"
#include "analysis/trace.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace calvorn {

// Returns the unit of amplitudes on a scale, or nullopt if no limit unit matches (for a voltage ratio, for example).
std::optional<LimitUnit> shownUnit(std::int16_t scale, bool isRelative);

// Returns the response for computing results: relative to the reference, or to the scale's 0 dB if there is none.
Response shownResponse(const Trace &trace, const Trace &reference, std::int16_t scale);

// Returns amplitudes in the scale's unit or, if relative, in dB or as a ratio; in sample order, with NaN for gaps.
std::vector<double> shownAmplitudes(const Trace &trace, const Trace &reference, std::int16_t scale);

// amplitudes: one for each sample of the trace, in the limits' unit.
LimitVerdict judgeTrace(const LimitLines &limits, const Trace &trace, const std::vector<double> &amplitudes);

// A sweep, or the mean of several, as shown in the results, the plot and pictures.
class ShownCurve
{
public:
    // reference: the trace that the curve is relative to, or empty.
    ShownCurve(Trace trace, Trace reference, std::int16_t scale, int averaged);

    const Trace &trace() const { return m_trace; }
    const Trace &reference() const { return m_reference; }
    std::int16_t scale() const { return m_scale; }
    bool isRelative() const { return !m_reference.isEmpty(); }
    bool isAveraged() const { return m_averaged > 1; }
    int averaged() const { return m_averaged; } // sweeps

    // The curve in dB, for results.
    const Response &response() const { return m_response; }

    // See shownAmplitudes().
    const std::vector<double> &amplitudes() const { return m_amplitudes; }
    // Returns the amplitudes of another trace shown with this curve.
    std::vector<double> amplitudesOf(const Trace &trace) const;

    LimitVerdict judgedBy(const LimitLines &limits) const;

private:
    Trace m_trace;
    Trace m_reference;
    std::int16_t m_scale;
    int m_averaged;
    Response m_response;
    std::vector<double> m_amplitudes;
};

} // namespace calvorn
