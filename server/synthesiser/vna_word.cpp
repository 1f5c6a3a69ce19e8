// SPDX-License-Identifier: MIT
#include "server/synthesiser/vna_word.h"

#include "server/synthesiser/dds_clock.h"
#include "server/synthesiser/tuning_word.h"

#include <QCoreApplication>

#include <cstdlib>
#include <limits>

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
        throw FrequencyError(QCoreApplication::translate("Frequency", "The sweep up to %1 Hz cannot be generated with "
                                                                      "a system clock of %2 Hz.")
                                 .arg(words.descending ? startHz : startHz + span)
                                 .arg(systemClockHz)
                                 .toStdString());
    }
    return words;
}

} // namespace calvorn
