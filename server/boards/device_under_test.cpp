// SPDX-License-Identifier: MIT
#include "server/boards/device_under_test.h"

#include "protocol/simulator_keys.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>

namespace calvorn {

namespace {

// Returns the detuning as a multiple of the bandwidth, 0 at the centre frequency.
double detuning(double hertz, double centreHz, double q)
{
    return q * (hertz / centreHz - centreHz / hertz);
}

double bandpass(double hertz)
{
    constexpr double kCentreHz = 7.1e6;
    constexpr double kWidthHz = 600e3;
    constexpr double kInsertion = 0.841395; // -1.5 dB
    const double x = detuning(hertz, kCentreHz, kCentreHz / kWidthHz);
    return kInsertion / std::sqrt(1.0 + x * x * x * x * x * x);
}

double lowpass(double hertz)
{
    constexpr double kCornerHz = 7e6;
    constexpr double kRippleSquared = 0.047129; // 10^(0.2/10) - 1
    const double x = hertz / kCornerHz;
    const double chebyshev = x * (5.0 + x * x * (16.0 * x * x - 20.0)); // T5
    return 1.0 / std::sqrt(1.0 + kRippleSquared * chebyshev * chebyshev);
}

double notch(double hertz)
{
    constexpr double kCentreHz = 7e6;
    constexpr double kQ = 20.0;
    const double x = std::fabs(detuning(hertz, kCentreHz, kQ));
    return x / std::sqrt(1.0 + x * x);
}

// The usual four-element equivalent circuit of a quartz crystal, in series between a 50 ohm source and a 50 ohm load.
double crystal(double hertz)
{
    constexpr double kSeriesHz = 9e6;
    constexpr double kMotionalFarad = 20e-15;
    constexpr double kMotionalOhm = 20.0;
    constexpr double kHolderFarad = 5e-12;
    constexpr double kLoadOhm = 100.0;
    const double omega = 2.0 * std::numbers::pi * hertz;
    const double reactance = detuning(hertz, kSeriesHz, 1.0 / (2.0 * std::numbers::pi * kSeriesHz * kMotionalFarad));
    const std::complex<double> admittance =
        1.0 / std::complex<double>(kMotionalOhm, reactance) + std::complex<double>(0.0, omega * kHolderFarad);
    return std::abs(kLoadOhm / (kLoadOhm + 1.0 / admittance));
}

double antenna(double hertz)
{
    constexpr double kOhm = 60.0;
    constexpr double kLineOhm = 50.0;
    const std::complex<double> impedance(kOhm, kOhm * detuning(hertz, 7.05e6, 12.0));
    return std::abs((impedance - kLineOhm) / (impedance + kLineOhm));
}

// Returns NaN in place of a number that cannot be parsed.
std::pair<double, double> pointOf(const QByteArray &line)
{
    constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    const QList<QByteArray> fields = line.split(',');
    bool isFrequency = false;
    bool isRatio = false;
    const double hertz = fields.value(0).trimmed().toDouble(&isFrequency);
    const double ratio = fields.value(1).trimmed().toDouble(&isRatio);
    return {isFrequency ? hertz : kNone, isRatio && fields.size() == 2 ? ratio : kNone};
}

} // namespace

DeviceKind deviceFromName(const QString &name)
{
    static constexpr std::array kKinds{DeviceKind::Bandpass, DeviceKind::Lowpass, DeviceKind::Notch,
                                       DeviceKind::Crystal,  DeviceKind::Antenna, DeviceKind::Through,
                                       DeviceKind::Curve};
    static_assert(kKinds.size() == kSimulatedDevices.size());
    const QString wanted = name.trimmed().toLower();
    for (std::size_t i = 0; i < kKinds.size(); ++i) {
        if (wanted == QLatin1String(kSimulatedDevices[i]))
            return kKinds[i];
    }
    return DeviceKind::Bandpass;
}

double responseOf(DeviceKind device, double hertz)
{
    if (hertz <= 0.0)
        return 0.0;
    switch (device) {
    case DeviceKind::Bandpass:
        return bandpass(hertz);
    case DeviceKind::Lowpass:
        return lowpass(hertz);
    case DeviceKind::Notch:
        return notch(hertz);
    case DeviceKind::Crystal:
        return crystal(hertz);
    case DeviceKind::Antenna:
        return antenna(hertz);
    case DeviceKind::Through:
        return 1.0;
    case DeviceKind::Curve:
        break;
    }
    return 0.0;
}

DeviceUnderTest DeviceUnderTest::fromFile(const QString &path)
{
    DeviceUnderTest device(DeviceKind::Curve);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return device;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const auto [hertz, ratio] = pointOf(line);
        if (!std::isfinite(hertz) || !std::isfinite(ratio))
            return DeviceKind::Curve;
        device.m_curve.emplace_back(hertz, std::clamp(ratio, 0.0, 1.0));
    }
    std::ranges::stable_sort(device.m_curve, {}, &std::pair<double, double>::first);
    return device;
}

double DeviceUnderTest::responseAt(double hertz) const
{
    if (m_kind != DeviceKind::Curve)
        return responseOf(m_kind, hertz);
    const auto above = std::ranges::lower_bound(m_curve, hertz, {}, &std::pair<double, double>::first);
    if (above == m_curve.end())
        return 0.0;
    if (above->first == hertz)
        return above->second;
    if (above == m_curve.begin())
        return 0.0;
    const auto below = std::prev(above);
    return std::lerp(below->second, above->second, (hertz - below->first) / (above->first - below->first));
}

double DeviceUnderTest::reflectionAt(double hertz) const
{
    const double response = responseAt(hertz);
    return m_kind == DeviceKind::Antenna ? response : std::sqrt(std::max(0.0, 1.0 - response * response));
}

} // namespace calvorn
