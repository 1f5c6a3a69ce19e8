// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/limit_check.h"
#include "analysis/response.h"
#include "analysis/trace.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace calvorn {

// The unit of amplitudes on a scale; nothing where limits have none such, as for a ratio of volts.
std::optional<LimitUnit> shownUnit(std::int16_t scale, bool isRelative);

// What results are computed from: relative to the reference, or to 0 dB of the scale where the reference is empty.
Response shownResponse(const Trace &trace, const Trace &reference, std::int16_t scale);

// In the units of the scale, or relative: dB or a ratio. In the order of the samples; not a number in a gap.
std::vector<double> shownAmplitudes(const Trace &trace, const Trace &reference, std::int16_t scale);

// amplitudes: of the samples of the trace, in the unit of the limits.
LimitVerdict judgeTrace(const LimitLines &limits, const Trace &trace, const std::vector<double> &amplitudes);

// A sweep or the mean of several, as results, plot and picture show it.
class ShownCurve
{
public:
    // reference: empty, or what the curve is relative to.
    ShownCurve(Trace trace, Trace reference, std::int16_t scale, int averaged);

    const Trace &trace() const { return m_trace; }
    const Trace &reference() const { return m_reference; }
    std::int16_t scale() const { return m_scale; }
    bool isRelative() const { return !m_reference.isEmpty(); }
    bool isAveraged() const { return m_averaged > 1; }
    int averaged() const { return m_averaged; } // sweeps

    // In dB, for results.
    const Response &response() const { return m_response; }

    // In the units of the scale, or relative: dB or a ratio. In the order of the samples; not a number in a gap.
    const std::vector<double> &amplitudes() const { return m_amplitudes; }
    // The same of another trace that is shown beside it.
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
