// SPDX-License-Identifier: MIT
#include "display/plot/limit_curves.h"

#include "display/plot/trace_styles.h"

#include <optional>
#include <utility>

namespace calvorn {

namespace {

void addSide(std::vector<LimitLine> &lines, const LimitLines &limits, std::optional<double> LimitPoint::*side,
             const QString &name)
{
    LimitLine line{name, kLimitStyle, {}};
    const auto endLine = [&] {
        if (!line.points.empty())
            lines.push_back(std::exchange(line, {QString(), kLimitStyle, {}}));
    };
    for (const LimitPoint &point : limits.points()) {
        if (point.*side)
            line.points.push_back({point.frequency, *(point.*side)});
        else
            endLine();
    }
    endLine();
}

} // namespace

std::vector<LimitLine> limitCurves(const LimitLines &limits, const QString &upperName, const QString &lowerName)
{
    std::vector<LimitLine> lines;
    addSide(lines, limits, &LimitPoint::upper, upperName);
    addSide(lines, limits, &LimitPoint::lower, lowerName);
    return lines;
}

} // namespace calvorn
