// SPDX-License-Identifier: MIT
#include "remote/command_traces.h"

#include "analysis/shown_curve.h"
#include "core/detector_law.h"
#include "core/scale_type.h"

#include <algorithm>

namespace calvorn {

namespace {

const Trace kNone;

const Trace &there(const Trace &trace)
{
    if (trace.isEmpty())
        throw ScpiError{kScpiDataCorruptOrStale, "this trace does not exist yet"};
    return trace;
}

const Trace &referenceInUse(const ScpiCall &call)
{
    const TraceSet &traces = call.target.traces();
    return traces.isNormalised() ? traces.reference() : kNone;
}

// Returns a scale in the client's unit.
std::int16_t scaleOfUnit(const ScpiCall &call)
{
    const std::int16_t scale = call.target.configuration().scaleType;
    if (call.client.unit == ScpiClient::Unit::Volt)
        return kScaleLinear;
    return isScale(scale) && !isLinearScale(scale) ? scale : kScaleDb1V;
}

} // namespace

TraceSet::Source sourceOf(const ScpiCall &call, int index)
{
    if (index >= call.count())
        return TraceSet::Source::Live;
    return static_cast<TraceSet::Source>(call.choice(index, {"LIVE", "AVERage", "MAXHold", "MINHold"}));
}

const Trace &liveTrace(const ScpiCall &call)
{
    return there(call.target.traces().shown(TraceSet::Source::Live));
}

const Trace &traceOf(const ScpiCall &call, int index)
{
    const TraceSet &traces = call.target.traces();
    if (index >= call.count())
        return liveTrace(call);
    if (call.parameter(index).kind == ScpiParameter::Kind::Number)
        return there(traces.stored(call.whole(index, {1.0, double{TraceSet::kStored}, 1.0}) - 1).trace);
    const int chosen = call.choice(index, {"LIVE", "AVERage", "MAXHold", "MINHold", "REFerence"});
    return there(chosen == 4 ? traces.reference() : traces.shown(static_cast<TraceSet::Source>(chosen)));
}

std::vector<double> amplitudesOf(const ScpiCall &call, const Trace &trace)
{
    const Trace &reference = &trace == &call.target.traces().reference() ? kNone : referenceInUse(call);
    if (call.client.unit != ScpiClient::Unit::DecibelMilliwatt)
        return shownAmplitudes(trace, reference, scaleOfUnit(call));
    if (!reference.isEmpty())
        throw ScpiError{kScpiSettingsConflict, "a relative curve has no dBm"};
    std::vector<double> levels(trace.volts.size());
    std::ranges::transform(trace.volts, levels.begin(),
                           [](double volts) { return Sweep::isNumber(volts) ? dBmOfVolts(volts) : Sweep::kNoNumber; });
    return levels;
}

Response responseOf(const ScpiCall &call, TraceSet::Source source)
{
    const Trace &trace = there(call.target.traces().shown(source));
    return shownResponse(trace, referenceInUse(call), call.target.configuration().scaleType);
}

} // namespace calvorn
