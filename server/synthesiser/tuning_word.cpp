// SPDX-License-Identifier: MIT
#include "server/synthesiser/tuning_word.h"

#include <QCoreApplication>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace calvorn {

namespace {

// 2^32 times a frequency in microhertz needs up to 96 bits.
__extension__ using Wide = unsigned __int128;

constexpr std::int64_t kMicro = 1'000'000;
constexpr std::int64_t kHighestHz = 2'000'000'000'000;
constexpr double kHighestOffsetHz = 1e12;

[[noreturn]] void refuse(std::int64_t hertz, std::uint64_t systemClock)
{
    throw FrequencyError(QCoreApplication::translate("Frequency", "The frequency %1 Hz cannot be generated with a "
                                                                  "system clock of %2 Hz.")
                             .arg(hertz)
                             .arg(systemClock)
                             .toStdString());
}

} // namespace

std::uint32_t tuningWord(std::int64_t hertz, double offsetHz, std::uint64_t systemClock)
{
    if (systemClock == 0 || std::abs(hertz) > kHighestHz || !(std::fabs(offsetHz) <= kHighestOffsetHz))
        refuse(hertz, systemClock);

    const std::int64_t microhertz = hertz * kMicro + std::llround(offsetHz * static_cast<double>(kMicro));
    if (microhertz < 0)
        refuse(hertz, systemClock);

    const Wide divisor = static_cast<Wide>(systemClock) * static_cast<Wide>(kMicro);
    const Wide word = ((static_cast<Wide>(microhertz) << 32) + divisor / 2) / divisor;
    if (word > std::numeric_limits<std::uint32_t>::max())
        refuse(hertz, systemClock);
    return static_cast<std::uint32_t>(word);
}

} // namespace calvorn
