// SPDX-License-Identifier: MIT
#include "server/synthesiser/dds_clock.h"

#include <QCoreApplication>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {
constexpr double kHighestXtalHz = 1e12;

struct ClockTexts
{
    Q_DECLARE_TR_FUNCTIONS(Frequency)
};
} // namespace

std::optional<DdsChip> ddsChipFromName(const QString &name)
{
    const QString wanted = name.trimmed().toUpper();
    for (const DdsChip chip : {DdsChip::Ad9850, DdsChip::Ad9851, DdsChip::Ad9951})
        if (wanted == QLatin1String(factsOf(chip).name))
            return chip;
    return std::nullopt;
}

int effectiveMultiplier(const DdsClock &clock)
{
    const DdsChipFacts &facts = factsOf(clock.chip);
    if (facts.multiplierLow == 0)
        return std::max(clock.multiplier, 1);
    return clock.multiplier >= facts.multiplierLow && clock.multiplier <= facts.multiplierHigh ? clock.multiplier : 1;
}

void checkMultiplier(const DdsClock &clock)
{
    if (clock.multiplier == 0 || clock.multiplier == 1)
        return;
    QString possible;
    switch (clock.chip) {
    case DdsChip::Ad9850:
        possible = ClockTexts::tr("the AD9850 has no multiplier; the value must be 1");
        break;
    case DdsChip::Ad9851:
        possible = ClockTexts::tr("for an AD9851, the value must be 1 or 6");
        break;
    case DdsChip::Ad9951:
        possible = ClockTexts::tr("for an AD9951, the value must be 1 or 4 to 20");
        break;
    }
    if (clock.chip == DdsChip::Ad9850 || effectiveMultiplier(clock) != clock.multiplier)
        throw SettingError(
            QStringLiteral("[Config] DDS Multiplier=%1: %2.").arg(clock.multiplier).arg(possible).toStdString());
}

std::uint64_t systemClockHz(const DdsClock &clock)
{
    // This form of the condition also rejects NaN.
    if (!(clock.xtalHz >= 1.0 && clock.xtalHz <= kHighestXtalHz))
        throw FrequencyError(
            QCoreApplication::translate("Frequency", "The reference clock of the generator must be at least 1 Hz.")
                .toStdString());
    return static_cast<std::uint64_t>(std::llround(clock.xtalHz)) *
           static_cast<std::uint64_t>(effectiveMultiplier(clock));
}

double usefulMaximumHz(const DdsClock &clock)
{
    const DdsChipFacts &facts = factsOf(clock.chip);
    return std::min(facts.highestOutput, facts.outputOfClock * static_cast<double>(systemClockHz(clock)));
}

} // namespace calvorn
