// SPDX-License-Identifier: MIT
#include "instrument/frequency_plan.h"

#include "core/checked_arithmetic.h"
#include "core/number_text.h"

#include <QCoreApplication>

namespace calvorn {

namespace {

QString startNotice()
{
    return QCoreApplication::translate("FrequencyPlan", "Start frequency will be set to ");
}

QString stopNotice()
{
    return QCoreApplication::translate("FrequencyPlan", "Stop frequency will be set to ");
}

QString inHertz(std::int32_t frequency)
{
    return NumberText().masked(frequency, kMaskHertz) + QStringLiteral(" Hz");
}

} // namespace

std::int32_t sweepRange(const Configuration &configuration)
{
    return checkedMagnitude(checkedSubtract(configuration.startFreq, configuration.stopFreq));
}

bool correctRange(Configuration &c)
{
    c.startNotice.clear();
    c.stopNotice.clear();
    if (sweepRange(c) >= kMinSweepRange)
        return false;
    if (c.startFreq > c.stopFreq) {
        if (checkedSubtract(c.startFreq, kMinSweepRange) < 1) {
            c.startFreq = kMinSweepRange + 1;
            c.stopFreq = 1;
            c.startNotice = startNotice() + inHertz(c.startFreq);
            c.stopNotice = stopNotice() + QStringLiteral("1 Hz");
        } else {
            c.stopFreq = c.startFreq - kMinSweepRange;
            c.stopNotice = stopNotice() + inHertz(c.stopFreq);
        }
    } else if (checkedAdd(c.stopFreq, kMinSweepRange) > c.ddsMaxFreq) {
        c.stopFreq = c.ddsMaxFreq;
        c.startFreq = checkedSubtract(c.ddsMaxFreq, kMinSweepRange);
        c.startNotice = startNotice() + inHertz(c.startFreq);
        c.stopNotice = stopNotice() + inHertz(c.stopFreq);
    } else {
        c.stopFreq = checkedAdd(c.startFreq, kMinSweepRange);
        c.stopNotice = stopNotice() + inHertz(c.stopFreq);
    }
    return true;
}

std::int32_t stepOfRange(std::int32_t startFreq, std::int32_t stopFreq)
{
    return roundToInteger<std::int32_t>(checkedSubtract(stopFreq, startFreq) / static_cast<double>(kSweepPoints));
}

} // namespace calvorn
