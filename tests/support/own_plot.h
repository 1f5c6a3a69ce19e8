// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QPoint>
#include <QPointF>
#include <QSizeF>

#include <algorithm>
#include <cmath>

namespace calvorn::test {

// Computes positions on the graph independently of the graph's own code. Rows 0 and 400 and the top and bottom of the
// scale are in the middle of the outermost pixels. y is in millivolts on the linear scale, which omits the top 0.2 % of
// its range; on dB scales, y is the distance below 0 dB, in thousandths of a dB.
class OwnPlot
{
public:
    OwnPlot(const Configuration &configuration, const QSizeF &size)
        : m_linear(configuration.scaleType == 0)
        , m_size(size)
    {
        const bool hasHeadroom = configuration.scaleType == 2 || configuration.scaleType == 4;
        const double stored = static_cast<double>(configuration.maxScaleVolt);
        const double volts = std::isfinite(stored) && stored > 0.0 ? stored : 1.0;
        const double decibels = std::abs(static_cast<double>(configuration.maxScaleDb)) + (hasHeadroom ? 10.0 : 0.0);
        m_top = m_linear ? 998.0 * volts : hasHeadroom ? -10000.0 : 0.0;
        m_bottom = m_linear ? -2.0 * volts : m_top + 1000.0 * std::max(1.0, decibels);
    }

    double top() const { return m_top; }
    double bottom() const { return m_bottom; }
    double height() const { return m_bottom - m_top; } // negative if y grows upwards
    double yOf(double amplitude) const { return amplitude * (m_linear ? 1000.0 : -1000.0); }

    // Logical pixels, for a screen with one device pixel per logical pixel.
    double x(double row) const { return 0.5 + row / 400.0 * (m_size.width() - 1.0); }
    double y(double y) const { return 0.5 + (y - m_top) / height() * (m_size.height() - 1.0); }
    QPoint pixel(double row, double y) const { return {static_cast<int>(x(row)), static_cast<int>(this->y(y))}; }

    double rowAt(double x) const { return (x - 0.5) / (m_size.width() - 1.0) * 400.0; }
    double yAt(double y) const { return m_top + (y - 0.5) / (m_size.height() - 1.0) * height(); }

private:
    bool m_linear;
    QSizeF m_size;
    double m_top;
    double m_bottom;
};

} // namespace calvorn::test
