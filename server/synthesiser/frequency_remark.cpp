// SPDX-License-Identifier: MIT
#include "server/synthesiser/frequency_remark.h"

#include "server/synthesiser/tuning_word.h"

#include <QCoreApplication>

#include <cmath>

namespace calvorn {

namespace {

constexpr std::uint32_t kHalfClockWord = 0x80000000U;

struct FrequencyTexts
{
    Q_DECLARE_TR_FUNCTIONS(Frequency)
};

} // namespace

QString remarkOnFrequency(std::int64_t hertz, double offsetHz, const DdsClock &clock)
{
    try {
        if (tuningWord(hertz, offsetHz, systemClockHz(clock)) > kHalfClockWord)
            return FrequencyTexts::tr("%1 Hz is above half the generator's clock: the output is its image.").arg(hertz);
        const double highest = usefulMaximumHz(clock);
        if (static_cast<double>(hertz) + offsetHz <= highest)
            return {};
        return FrequencyTexts::tr("%1 Hz is above the generator's useful maximum of %2 Hz.")
            .arg(hertz)
            .arg(std::llround(highest));
    } catch (const FrequencyError &) {
        return {};
    }
}

} // namespace calvorn
