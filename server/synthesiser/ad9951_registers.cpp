// SPDX-License-Identifier: MIT
#include "server/synthesiser/ad9951_registers.h"

namespace calvorn {

namespace {
constexpr std::uint8_t kWriteCfr1 = 0x00;
constexpr std::uint8_t kWriteCfr2 = 0x01;
constexpr std::uint8_t kWriteFtw0 = 0x04;
constexpr std::uint8_t kCfr1SdioInputOnly = 0x02; // CFR1<9>, in the third byte
constexpr std::uint8_t kCfr1DacPowerDown = 0x20;  // CFR1<5>, in the fourth byte
constexpr unsigned kCfr2HighVco = 0x04;
constexpr std::uint64_t kHighVcoAboveHz = 250'000'000;
} // namespace

std::array<std::uint8_t, 5> ad9951Cfr1(bool powerDown)
{
    return {kWriteCfr1, 0, 0, kCfr1SdioInputOnly, powerDown ? kCfr1DacPowerDown : std::uint8_t{0}};
}

std::array<std::uint8_t, 4> ad9951Cfr2(const DdsClock &clock)
{
    const int multiplier = effectiveMultiplier(clock);
    if (multiplier == 1)
        return {kWriteCfr2, 0, 0, 0};
    const unsigned vco = systemClockHz(clock) > kHighVcoAboveHz ? kCfr2HighVco : 0U;
    return {kWriteCfr2, 0, 0, static_cast<std::uint8_t>(static_cast<unsigned>(multiplier) << 3 | vco)};
}

std::array<std::uint8_t, 5> ad9951Ftw0(std::uint32_t frequency)
{
    return {kWriteFtw0, static_cast<std::uint8_t>(frequency >> 24), static_cast<std::uint8_t>(frequency >> 16),
            static_cast<std::uint8_t>(frequency >> 8), static_cast<std::uint8_t>(frequency)};
}

} // namespace calvorn
