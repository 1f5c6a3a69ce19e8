// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/lpt_wiring.h"
#include "server/links/parallel_pins.h"
#include "server/synthesiser/ad985x_word.h"
#include "server/synthesiser/dds_clock.h"

#include <cstdint>
#include <span>

namespace calvorn {

// Loads words into the generator chip over the four DDS lines. One load takes 82 port writes: two for each of 40 bits
// and two for the update pulse, or 17 if an AD985x is loaded with five bytes. The port is 100 times slower than any of
// the chips, so no waits are needed between edges.
class DdsLoader
{
public:
    // The pins must outlive this object.
    explicit DdsLoader(ParallelPins &pins, DdsLoading loading = DdsLoading::Serial)
        : m_pins(pins)
        , m_loading(loading)
    {
    }

    // Resets the chip, runs its start-up sequence and loads this tuning word. Must be called before the first load(),
    // and again when chip, crystal or multiplier change. Takes 10 ms longer if an AD9951's PLL has to lock.
    void startUp(const DdsClock &clock, std::uint32_t word);

    // Sets the output to the frequency of this tuning word.
    void load(const DdsClock &clock, std::uint32_t word);

    // Switches the output off until the next startUp(); the chip retains this tuning word.
    void powerDown(const DdsClock &clock, std::uint32_t word);

private:
    void loadAd985x(const Ad985xWord &word);
    void pulse(LptLine line);
    void pulseUpdate();
    void shiftLsbFirst(std::uint64_t bits, int count);
    void shiftMsbFirst(std::span<const std::uint8_t> bytes);
    void shiftBit(bool bit);
    void writeBytes(std::span<const std::uint8_t> bytes);

    ParallelPins &m_pins;
    DdsLoading m_loading;
};

} // namespace calvorn
