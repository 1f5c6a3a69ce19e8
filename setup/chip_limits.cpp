// SPDX-License-Identifier: MIT
#include "setup/chip_limits.h"

#include "core/number_text.h"
#include "instrument/interface_kind.h"

#include <QCoreApplication>

#include <algorithm>

namespace calvorn {

namespace {

constexpr double kLowestClock = 1e6; // Hz

struct ChipTexts
{
    Q_DECLARE_TR_FUNCTIONS(ChipLimits)
};

QString hertz(double value)
{
    return NumberText().masked(value, kMaskHertz);
}

QStringList clockProblems(const DdsChipFacts &chip, const SetUpValues &values, double clock)
{
    QStringList problems;
    const bool multiplies = values.ddsMultiplier > 1;
    if (clock > chip.highestClock)
        problems.append(ChipTexts::tr("The system clock of the %1 must not exceed %2 Hz.")
                            .arg(QLatin1String(chip.name), hertz(chip.highestClock)));
    if (clock < kLowestClock)
        problems.append(ChipTexts::tr("The system clock must be at least %1 Hz.").arg(hertz(kLowestClock)));
    if (multiplies && chip.highestPllInput > 0.0 && values.ddsXtalFreq > chip.highestPllInput)
        problems.append(ChipTexts::tr("With the multiplier, the reference clock of the %1 must not exceed %2 Hz.")
                            .arg(QLatin1String(chip.name), hertz(chip.highestPllInput)));
    if (multiplies && chip.multiplierLow > 0 &&
        (values.ddsMultiplier < chip.multiplierLow || values.ddsMultiplier > chip.multiplierHigh))
        problems.append(ChipTexts::tr("The %1 cannot multiply its clock by %2.")
                            .arg(QLatin1String(chip.name))
                            .arg(values.ddsMultiplier));
    return problems;
}

QStringList frequencyProblems(const DdsChipFacts &chip, const SetUpValues &values, double clock)
{
    const InterfaceKind *kind = interfaceKind(values.interfaceType);
    const double useful = kind && kind->highestFrequency ? *kind->highestFrequency
                                                         : std::min(chip.highestOutput, chip.outputOfClock * clock);
    if (values.ddsMaxFreq > clock / 2)
        return {ChipTexts::tr(
            "The maximum frequency is above half the system clock: the generator would output its image.")};
    if (values.ddsMaxFreq > useful)
        return {ChipTexts::tr("Above %1 Hz the output is weak or impure.").arg(hertz(useful))};
    return {};
}

} // namespace

QString chipVerdict(const SetUpValues &values)
{
    const auto chip = std::find_if(kDdsChips.begin(), kDdsChips.end(), [&values](const DdsChipFacts &candidate) {
        return values.ddsDevice == QLatin1String(candidate.name);
    });
    if (chip == kDdsChips.end())
        return {};
    const double clock = static_cast<double>(values.ddsXtalFreq) * values.ddsMultiplier;
    const QStringList problems = clockProblems(*chip, values, clock) + frequencyProblems(*chip, values, clock);
    if (!problems.isEmpty())
        return problems.join(u'\n');
    return ChipTexts::tr("Clock and maximum frequency are within the limits of the %1.").arg(QLatin1String(chip->name));
}

} // namespace calvorn
