// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"

#include <QtGlobal>

#include <cmath>
#include <utility>
#include <vector>

namespace calvorn::test {

inline bool isNear(double value, double expected, double bound)
{
    if (std::abs(value - expected) <= bound)
        return true;
    qWarning("%.12g, expected %.12g within %.3g", value, expected, bound);
    return false;
}

inline DetectorLaw logLaw(double slope, double intercept)
{
    DetectorLaw law;
    law.kind = DetectorLaw::Kind::Log;
    law.slope = slope;
    law.intercept = intercept;
    return law;
}

inline DetectorLaw tableLaw(std::vector<DetectorLaw::Point> points)
{
    DetectorLaw law;
    law.kind = DetectorLaw::Kind::Table;
    law.setPoints(std::move(points));
    return law;
}

// A logarithmic detector: 25 mV for each dB above -84 dBm.
inline double logDetectorVolts(double dBm)
{
    return 0.025 * (dBm + 84.0);
}

// An inverted logarithmic detector: 25 mV less for each dB, 0 V at 20 dBm.
inline double fallingLogVolts(double dBm)
{
    return 0.025 * (20.0 - dBm);
}

// A diode followed by an amplifier of gain 2.4: square law for peaks below 20 mV, linear above.
inline double diodeVolts(double dBm)
{
    const double peak = std::sqrt(0.1 * std::pow(10.0, dBm / 10.0));
    return 2.4 * (std::sqrt(peak * peak + 0.0004) - 0.02);
}

} // namespace calvorn::test
