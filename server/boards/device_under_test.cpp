// SPDX-License-Identifier: MIT
#include "server/boards/device_under_test.h"

#include <cmath>
#include <complex>
#include <numbers>

namespace calvorn {

namespace {

// 0 dB at the centre, x = the detuning in bandwidths.
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

// The usual four-element equivalent of a quartz, in series between 50 ohms and 50 ohms.
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

} // namespace

DeviceKind deviceFromName(const QString &name)
{
    const QString wanted = name.trimmed().toLower();
    if (wanted == QLatin1String("lowpass"))
        return DeviceKind::Lowpass;
    if (wanted == QLatin1String("notch"))
        return DeviceKind::Notch;
    if (wanted == QLatin1String("crystal"))
        return DeviceKind::Crystal;
    if (wanted == QLatin1String("through"))
        return DeviceKind::Through;
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
    case DeviceKind::Through:
        return 1.0;
    }
    return 0.0;
}

} // namespace calvorn
