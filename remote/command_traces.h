// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/response.h"
#include "remote/scpi_command.h"

#include <vector>

namespace calvorn {

// What several commands take from the traces. All throw a ScpiError where there is no such trace.

// The source that a parameter names; the live one where there is no such parameter.
TraceSet::Source sourceOf(const ScpiCall &call, int index);

// The trace that a parameter names, stored ones and the reference included.
const Trace &traceOf(const ScpiCall &call, int index);
const Trace &liveTrace(const ScpiCall &call);

// In the unit of the client, relative to the reference where the traces are; not a number in a gap.
std::vector<double> amplitudesOf(const ScpiCall &call, const Trace &trace);

// What results are computed from.
Response responseOf(const ScpiCall &call, TraceSet::Source source);

} // namespace calvorn
