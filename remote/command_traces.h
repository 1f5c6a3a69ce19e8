// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/response.h"
#include "remote/scpi_command.h"

#include <vector>

namespace calvorn {

// Helpers for commands that read traces. Each throws a ScpiError if the trace does not exist.

// Returns the source that the parameter names, or the live one if the parameter is missing.
TraceSet::Source sourceOf(const ScpiCall &call, int index);

// Returns the trace that the parameter names, or the live one if the parameter is missing. The parameter can also name
// a stored trace or the reference.
const Trace &traceOf(const ScpiCall &call, int index);
const Trace &liveTrace(const ScpiCall &call);

// Returns the amplitudes in the client's unit, relative to the reference if curves are relative; NaN in gaps.
std::vector<double> amplitudesOf(const ScpiCall &call, const Trace &trace);

// Returns the response from which results are computed.
Response responseOf(const ScpiCall &call, TraceSet::Source source);

} // namespace calvorn
