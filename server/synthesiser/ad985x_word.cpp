// SPDX-License-Identifier: MIT
#include "server/synthesiser/ad985x_word.h"

namespace calvorn {

namespace {
constexpr std::uint8_t kTimesSix = 0x01;
constexpr std::uint8_t kPowerDown = 0x04;
constexpr std::uint8_t kAd9850Allowed = 0xFC;
constexpr std::uint8_t kAd9851Allowed = 0xFD;
} // namespace

std::array<std::uint8_t, 5> Ad985xWord::bytes() const
{
    return {control, static_cast<std::uint8_t>(frequency >> 24), static_cast<std::uint8_t>(frequency >> 16),
            static_cast<std::uint8_t>(frequency >> 8), static_cast<std::uint8_t>(frequency)};
}

std::uint64_t Ad985xWord::serialBits() const
{
    return static_cast<std::uint64_t>(control) << 32 | frequency;
}

Ad985xWord ad985xWord(const DdsClock &clock, std::uint32_t frequency, std::uint8_t phase, bool powerDown)
{
    unsigned control = static_cast<unsigned>(phase & 0x1F) << 3;
    if (powerDown)
        control |= kPowerDown;
    if (clock.multiplier == 6)
        control |= kTimesSix;
    control &= clock.chip == DdsChip::Ad9851 ? kAd9851Allowed : kAd9850Allowed;
    return {static_cast<std::uint8_t>(control), frequency};
}

} // namespace calvorn
