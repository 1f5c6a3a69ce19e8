// SPDX-License-Identifier: MIT
#pragma once

#include "data/limit_lines.h"
#include "display/plot/plot_model.h"

#include <QString>

#include <vector>

namespace calvorn {

// The limits as lines of a plot: one for each run of points that have the value. The first of each side has its name.
std::vector<LimitLine> limitCurves(const LimitLines &limits, const QString &upperName, const QString &lowerName);

} // namespace calvorn
