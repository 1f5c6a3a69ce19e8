// SPDX-License-Identifier: MIT
#include "analysis/shown_curve.h"

#include "core/common_functions.h"
#include "core/scale_type.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

Response shownResponse(const Trace &trace, const Trace &reference, std::int16_t scale)
{
    return reference.isEmpty() ? responseIn(trace, voltsOfZeroDb(scale)) : relativeResponse(trace, reference);
}

std::vector<double> shownAmplitudes(const Trace &trace, const Trace &reference, std::int16_t scale)
{
    const bool isRelative = !reference.isEmpty();
    std::vector<double> values = isRelative ? relativeTo(trace, reference).ratios : trace.volts;
    if (isLinearScale(scale))
        return values;
    const double zero = isRelative ? 1.0 : voltsOfZeroDb(scale);
    for (double &value : values)
        if (!std::isnan(value))
            value = value > 0.0 ? std::max(kFloorDb, 20.0 * std::log10(value / zero)) : kFloorDb;
    return values;
}

LimitVerdict judgeTrace(const LimitLines &limits, const Trace &trace, const std::vector<double> &amplitudes)
{
    std::vector<double> frequencies;
    frequencies.reserve(amplitudes.size());
    for (std::size_t i = 0; i < amplitudes.size(); ++i)
        frequencies.push_back(trace.frequencyAt(i));
    return judge(limits, frequencies, amplitudes);
}

std::optional<LimitUnit> shownUnit(std::int16_t scale, bool isRelative)
{
    if (isLinearScale(scale))
        return isRelative ? std::nullopt : std::optional(LimitUnit::Volt);
    return isRelative ? LimitUnit::RelativeDecibel : LimitUnit::Decibel;
}

ShownCurve::ShownCurve(Trace trace, Trace reference, std::int16_t scale, int averaged)
    : m_trace(std::move(trace))
    , m_reference(std::move(reference))
    , m_scale(scale)
    , m_averaged(averaged)
    , m_response(shownResponse(m_trace, m_reference, scale))
    , m_amplitudes(amplitudesOf(m_trace))
{
}

std::vector<double> ShownCurve::amplitudesOf(const Trace &trace) const
{
    return shownAmplitudes(trace, m_reference, m_scale);
}

LimitVerdict ShownCurve::judgedBy(const LimitLines &limits) const
{
    return judgeTrace(limits, m_trace, m_amplitudes);
}

} // namespace calvorn
