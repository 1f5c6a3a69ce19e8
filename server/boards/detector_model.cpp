// SPDX-License-Identifier: MIT
#include "server/boards/detector_model.h"

#include "protocol/simulator_keys.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace calvorn {

namespace {
constexpr double kTimeConstantNs = 20'000.0;
constexpr double kNoiseVolts = 1.2e-3;
constexpr double kFullVolts = 1.0;
constexpr double kFloorVolts = 5e-3;

constexpr double kVoltsPerDb = 25e-3;     // AD8307, data sheet
constexpr double kInterceptDbm = -84.0;   // AD8307, data sheet
constexpr double kNoiseWatts = 1e-12;     // -90 dBm
constexpr double kLowestOfLogVolts = 0.0; // a single supply
constexpr double kKneeVolts = 0.02;
constexpr double kGain = 2.4;
constexpr double kOhms = 50.0;

double wattsOf(double dBm)
{
    return 1e-3 * std::pow(10.0, dBm / 10.0);
}

double logVolts(double watts)
{
    const double dBm = 10.0 * std::log10((watts + kNoiseWatts) / 1e-3);
    return std::max(kVoltsPerDb * (dBm - kInterceptDbm), kLowestOfLogVolts);
}

double diodeVolts(double watts)
{
    const double peak = std::sqrt(2.0 * kOhms * watts);
    return kGain * (std::hypot(peak, kKneeVolts) - kKneeVolts);
}
} // namespace

int convertedCount(double volts, double referenceVolts, int counts)
{
    const double scaled = volts / referenceVolts * counts;
    return static_cast<int>(std::lround(std::clamp(scaled, 0.0, counts - 1.0)));
}

DetectorKind detectorFromName(const QString &name)
{
    static constexpr std::array kKinds{DetectorKind::Linear, DetectorKind::Log, DetectorKind::Diode};
    static_assert(kKinds.size() == kSimulatedDetectors.size());
    const QString wanted = name.trimmed().toLower();
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        if (wanted == QLatin1String(kSimulatedDetectors[i]))
            return kKinds[i];
    }
    return DetectorKind::Linear;
}

double DetectorCircuit::volts(double signal) const
{
    const double watts = wattsOf(level) * signal * signal;
    switch (kind) {
    case DetectorKind::Linear:
        break;
    case DetectorKind::Log:
        return logVolts(watts);
    case DetectorKind::Diode:
        return diodeVolts(watts);
    }
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

// The sum of four uniform numbers is almost normally distributed and, unlike std::normal_distribution, yields the same
// values with every standard library.
double DetectorModel::noise()
{
    const std::uint64_t bits = m_random();
    const auto part = [bits](int index) { return static_cast<double>(bits >> (16 * index) & 0xFFFF) / 65535.0; };
    const double sum = part(0) + part(1) + part(2) + part(3) - 2.0;
    return sum * std::sqrt(3.0) * kNoiseVolts;
}

} // namespace calvorn
