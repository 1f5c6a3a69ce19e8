// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <cmath>
#include <functional>

namespace calvorn::test {

// Returns the content of a file for the simulated "curve" device: voltage ratio over Hz.
inline QByteArray curveFile(const std::function<double(double hertz)> &curve, double lowest, double highest, int lines)
{
    QByteArray text("# Hz, voltage ratio\n");
    for (int i = 0; i <= lines; ++i) {
        const double hertz = std::lerp(lowest, highest, static_cast<double>(i) / lines);
        text += QByteArray::number(hertz, 'f', 3) + ',' + QByteArray::number(curve(hertz), 'g', 12) + '\n';
    }
    return text;
}

} // namespace calvorn::test
