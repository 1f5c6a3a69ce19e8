// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/shown_curve.h"
#include "analysis/trace.h"
#include "data/limit_lines.h"

#include <QString>

#include <optional>
#include <vector>

namespace calvorn {

class SingleSweep;

// What calvorn-sweep reads beside the sweep itself.
struct Companions
{
    Trace reference; // empty: none
    std::vector<Trace> traces;
    std::optional<LimitLines> limits;
};

// Writes the curve with the traces and the limits. RuntimeError(File) where it cannot.
void savePicture(const QString &path, const SingleSweep &sweep, const ShownCurve &curve, const Companions &companions);

} // namespace calvorn
