// SPDX-License-Identifier: MIT
#include "tools/shown_curve.h"

#include "core/common_functions.h"
#include "core/scale_type.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

namespace {

double zeroDecibels(std::int16_t scale)
{
    return scaleRefersTo10V(scale) ? 10.0 : 1.0;
}

} // namespace

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
    , m_response(isRelative() ? relativeResponse(m_trace, m_reference) : responseIn(m_trace, zeroDecibels(scale)))
    , m_amplitudes(amplitudesOf(m_trace))
{
}

std::vector<double> ShownCurve::amplitudesOf(const Trace &trace) const
{
    std::vector<double> values = isRelative() ? relativeTo(trace, m_reference).ratios : trace.volts;
    if (isLinearScale(m_scale))
        return values;
    const double zero = isRelative() ? 1.0 : zeroDecibels(m_scale);
    for (double &value : values)
        if (!std::isnan(value))
            value = value > 0.0 ? std::max(kFloorDb, 20.0 * std::log10(value / zero)) : kFloorDb;
    return values;
}

LimitVerdict ShownCurve::judgedBy(const LimitLines &limits) const
{
    std::vector<double> frequencies;
    frequencies.reserve(m_amplitudes.size());
    for (std::size_t i = 0; i < m_amplitudes.size(); ++i)
        frequencies.push_back(m_trace.frequencyAt(i));
    return judge(limits, frequencies, m_amplitudes);
}

} // namespace calvorn
