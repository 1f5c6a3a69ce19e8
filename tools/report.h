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

// The output of calvorn-sweep: lines that end with a line feed, in the current language and locale.

// Returns peak and -3 dB points, an empty line and the plot.
QString responseText(const SingleSweep &sweep, const ShownCurve &curve);

// Returns a line with caption and value for each result; the reason replaces a missing value.
QString resultsText(const Results &results);

// The verdict must not be empty (hasVerdict()).
QString verdictText(const LimitVerdict &verdict, const ShownCurve &curve);

// Returns one JSON object, identical in every language and locale.
QByteArray reportAsJson(ResultKind kind, const Results &results, const ShownCurve &curve,
                        const std::optional<LimitVerdict> &verdict);

} // namespace calvorn
