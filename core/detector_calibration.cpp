// SPDX-License-Identifier: MIT
#include "core/detector_calibration.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

double DetectorCalibration::countOf(double volts) const
{
    if (!(step > 0.0F))
        return 0.0;
    const double count = (law.detectorVolts(volts) - static_cast<double>(offset)) / static_cast<double>(step);
    return std::max(std::nearbyint(count), 0.0);
}

double DetectorCalibration::floor() const
{
    if (!(step > 0.0F))
        return 0.0;
    const double half = static_cast<double>(step) / 2.0;
    if (law.isRising())
        return law.inputVolts(std::max(static_cast<double>(offset), 0.0) + half);
    return law.inputVolts(detectorVolts(highestCount) - half);
}

DetectorCalibration detectorOf(const Configuration &configuration)
{
    const bool is8Bit = configuration.adcDevice == QLatin1String(kAdc8Bit);
    return {configuration.adcStep, configuration.adcOffset, configuration.detectorLaw,
            is8Bit ? kHighestCount8Bit : kHighestCount10Bit};
}

} // namespace calvorn
