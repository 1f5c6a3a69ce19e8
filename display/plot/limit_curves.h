// SPDX-License-Identifier: MIT
#pragma once

#include "data/limit_lines.h"
#include "display/plot/plot_model.h"

#include <QString>

#include <vector>

namespace calvorn {

// Converts limits to plot lines: one line for each run of points that have the limit. Only the first line of each side
// is named.
std::vector<LimitLine> limitCurves(const LimitLines &limits, const QString &upperName, const QString &lowerName);

} // namespace calvorn
