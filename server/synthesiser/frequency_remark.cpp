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
            return FrequencyTexts::tr("%1 Hz is above half the clock of the generator: its image comes out.")
                .arg(hertz);
        const double highest = usefulMaximumHz(clock);
        if (static_cast<double>(hertz) + offsetHz <= highest)
            return {};
        return FrequencyTexts::tr("%1 Hz is above the useful maximum of the generator, %2 Hz.")
            .arg(hertz)
            .arg(std::llround(highest));
    } catch (const FrequencyError &) {
        return {};
    }
}

} // namespace calvorn
