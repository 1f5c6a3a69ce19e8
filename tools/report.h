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

// What calvorn-sweep prints: lines that end with a line feed, in the current language and locale.

// Peak and -3 dB points, an empty line and the plot.
QString responseText(const SingleSweep &sweep, const ShownCurve &curve);

// A caption and a value in each line; where there is none, the reason.
QString resultsText(const Results &results);

// verdict: has one.
QString verdictText(const LimitVerdict &verdict, const ShownCurve &curve);

// One object, the same in every language and locale.
QByteArray reportAsJson(ResultKind kind, const Results &results, const ShownCurve &curve,
                        const std::optional<LimitVerdict> &verdict);

} // namespace calvorn
