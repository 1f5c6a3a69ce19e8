// SPDX-License-Identifier: MIT
#include "server/boards/detector_model.h"

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {
constexpr double kTimeConstantNs = 20'000.0;
constexpr double kNoiseVolts = 1.2e-3;
constexpr double kFullVolts = 1.0;
constexpr double kFloorVolts = 5e-3;
} // namespace

int convertedCount(double volts, double referenceVolts, int counts)
{
    const double scaled = volts / referenceVolts * counts;
    return static_cast<int>(std::lround(std::clamp(scaled, 0.0, counts - 1.0)));
}

double detectorVolts(double signal)
{
    return std::hypot(kFullVolts * signal, kFloorVolts);
}

DetectorModel::DetectorModel(std::uint64_t seed)
    : m_random(seed)
{
}

void DetectorModel::setLevel(double volts, Time now)
{
    m_start = settled(now);
    m_target = volts;
    m_since = now;
}

double DetectorModel::read(Time now)
{
    return settled(now) + noise();
}

double DetectorModel::settled(Time now) const
{
    const double age = static_cast<double>((now - m_since).count());
    return m_target + (m_start - m_target) * std::exp(-age / kTimeConstantNs);
}

// The sum of four uniform numbers is close to normal, and unlike std::normal_distribution it is the same with
// every library.
double DetectorModel::noise()
{
    const std::uint64_t bits = m_random();
    const auto part = [bits](int index) { return static_cast<double>(bits >> (16 * index) & 0xFFFF) / 65535.0; };
    const double sum = part(0) + part(1) + part(2) + part(3) - 2.0;
    return sum * std::sqrt(3.0) * kNoiseVolts;
}

} // namespace calvorn
