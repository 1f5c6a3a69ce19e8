// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "tests/support/interface_settings.h"

#include <QByteArray>

#include <cmath>
#include <functional>

namespace calvorn::test {

// Volts per count, the resolution of a curve in a file.
inline constexpr double kFineStep = 1e-6;

// Returns settings for the detector that makeSweepFile() assumes.
inline QByteArray fineSettings()
{
    const QByteArray settings = crystalSettings(kInterfaceLpt);
    if (!settings.contains("ADC Step=0.00244"))
        qFatal("the settings have another detector");
    return QByteArray(settings).replace("ADC Step=0.00244", "ADC Step=0.000001").replace("Scale=0", "Scale=1");
}

// Returns a linear-scale sweep file with 400 samples of a curve, in volts over Hz.
inline QByteArray makeSweepFile(int start, int step, const std::function<double(double hertz)> &curve)
{
    QByteArray csv("\"Sample N\",\"Frequency\",\"DAC sample\",\"milliVolt\"\r\n");
    for (int row = 1; row <= kSweepPoints; ++row) {
        const int hertz = start + (row - 1) * step;
        const double volts = curve(hertz);
        const auto count = std::llround(volts / kFineStep);
        // The program stores the step in single precision.
        const double shown = static_cast<double>(count) * static_cast<double>(static_cast<float>(kFineStep));
        csv += QByteArray::number(row) + ',' + QByteArray::number(hertz) + ',' + QByteArray::number(count) + ',' +
               QByteArray::number(std::llround(shown * 1000.0)) + "\r\n";
    }
    return csv;
}

} // namespace calvorn::test
