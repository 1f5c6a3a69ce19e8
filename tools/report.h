// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/results.h"
#include "analysis/shown_curve.h"
#include "analysis/sweep_response.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace calvorn {

class SingleSweep;

// The output of calvorn-sweep: lines terminated by a line feed, in the current language and locale.

// Returns peak and -3 dB points, a blank line and the plot.
QString responseText(const SingleSweep &sweep, const ShownCurve &curve);

// Returns a line with caption and value for each result; if a value is missing, the reason replaces it.
QString resultsText(const Results &results);

// verdict: hasVerdict() must be true.
QString verdictText(const LimitVerdict &verdict, const ShownCurve &curve);

// Returns a JSON object that is identical in every language and locale.
QByteArray reportAsJson(ResultKind kind, const Results &results, const ShownCurve &curve,
                        const std::optional<LimitVerdict> &verdict);

} // namespace calvorn
