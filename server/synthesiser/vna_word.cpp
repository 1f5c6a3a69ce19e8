// SPDX-License-Identifier: MIT
#include "server/synthesiser/vna_word.h"

#include "server/synthesiser/dds_clock.h"
#include "server/synthesiser/tuning_word.h"

#include <cstdlib>
#include <limits>
#include <string>

namespace calvorn {

VnaSweepWords vnaSweepWords(std::int64_t startHz, std::int64_t stepHz, int samples, double offsetHz,
                            std::uint64_t systemClockHz)
{
    const std::int64_t span = stepHz * (samples - 1);
    VnaSweepWords words;
    words.descending = stepHz < 0;
    words.start = tuningWord(words.descending ? startHz + span : startHz, offsetHz, systemClockHz);
    words.step = tuningWord(std::abs(stepHz), 0.0, systemClockHz);

    const std::uint64_t last = words.start + static_cast<std::uint64_t>(samples - 1) * words.step;
    if (last > std::numeric_limits<std::uint32_t>::max()) {
        throw FrequencyError("The sweep up to " + std::to_string(words.descending ? startHz : startHz + span) +
                             " Hz cannot be generated with a system clock of " + std::to_string(systemClockHz) +
                             " Hz.");
    }
    return words;
}

} // namespace calvorn
