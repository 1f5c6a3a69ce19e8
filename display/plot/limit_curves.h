// SPDX-License-Identifier: MIT
#pragma once

#include "data/limit_lines.h"
#include "display/plot/plot_model.h"

#include <QString>

#include <vector>

namespace calvorn {

// Converts limits to plot lines: one line for each run of points that have an upper (or lower) limit. Only the first
// upper and the first lower line have a name.
std::vector<LimitLine> limitCurves(const LimitLines &limits, const QString &upperName, const QString &lowerName);

} // namespace calvorn
