// SPDX-License-Identifier: MIT
#include "core/detector_calibration.h"

#include "protocol/vna_instrument.h"

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
        return law.inputVolts(std::max(detectorVolts(lowestCount), 0.0) + half);
    return law.inputVolts(detectorVolts(highestCount) - half);
}

const DetectorLaw &lawInForce(const Configuration &configuration)
{
    static const DetectorLaw kLinear;
    const bool isLevel = configuration.interfaceType != kInterfaceVna ||
                         configuration.measuringMode == numberOf(VnaMode::ReturnLoss) ||
                         configuration.measuringMode == numberOf(VnaMode::Device);
    return isLevel ? configuration.detectorLaw : kLinear;
}

DetectorCalibration detectorOf(const Configuration &configuration)
{
    DetectorCalibration detector{configuration.adcStep, configuration.adcOffset, lawInForce(configuration)};
    if (configuration.interfaceType == kInterfaceLpt && configuration.adcDevice == QLatin1String(kAdc8Bit))
        detector.highestCount = kHighestCount8Bit;
    if (configuration.interfaceType == kInterfaceVna && configuration.measuringMode == numberOf(VnaMode::Device)) {
        detector.lowestCount = 1;
        detector.highestCount = kVnaFullScale;
    }
    return detector;
}

} // namespace calvorn
