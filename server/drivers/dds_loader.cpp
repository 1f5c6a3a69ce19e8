// SPDX-License-Identifier: MIT
#include "server/drivers/dds_loader.h"

#include "server/synthesiser/ad9951_registers.h"

namespace calvorn {

namespace {
// Five periods of the slowest clock (1 MHz), with a margin for the RC filter that some modules have on the RESET line.
constexpr std::chrono::microseconds kResetHold{10};
constexpr std::chrono::milliseconds kPllLock{10};
} // namespace

void DdsLoader::startUp(const DdsClock &clock, std::uint32_t word)
{
    m_pins.set({{LptLine::DdsClock, false},
                {LptLine::DdsUpdate, false},
                {LptLine::DdsData, false},
                {LptLine::DdsReset, true}});
    m_pins.wait(kResetHold);
    m_pins.set({{LptLine::DdsReset, false}});
    m_pins.wait(kResetHold);

    if (clock.chip == DdsChip::Ad9951) {
        shiftMsbFirst(ad9951Cfr1());
        pulseUpdate();
        shiftMsbFirst(ad9951Cfr2(clock));
        pulseUpdate();
        if (effectiveMultiplier(clock) != 1)
            m_pins.wait(kPllLock);
    } else if (m_loading == DdsLoading::Serial) {
        // Enter serial mode: one W_CLK and one FQ_UD load the wired pattern xxxxx011. A full word must follow
        // immediately, because as control bits, this pattern would start a factory test.
        pulse(LptLine::DdsClock);
        pulse(LptLine::DdsUpdate);
    }
    load(clock, word);
}

void DdsLoader::load(const DdsClock &clock, std::uint32_t word)
{
    if (clock.chip != DdsChip::Ad9951) {
        loadAd985x(ad985xWord(clock, word));
        return;
    }
    shiftMsbFirst(ad9951Ftw0(word));
    pulseUpdate();
}

void DdsLoader::powerDown(const DdsClock &clock, std::uint32_t word)
{
    if (clock.chip != DdsChip::Ad9951) {
        loadAd985x(ad985xWord(clock, word, 0, true));
        return;
    }
    load(clock, word);
    shiftMsbFirst(ad9951Cfr1(true));
    pulseUpdate();
}

void DdsLoader::loadAd985x(const Ad985xWord &word)
{
    if (m_loading == DdsLoading::Bytes) {
        writeBytes(word.bytes());
        pulse(LptLine::DdsUpdate);
        return;
    }
    shiftLsbFirst(word.serialBits(), kAd985xSerialBits);
    pulseUpdate();
}

void DdsLoader::pulse(LptLine line)
{
    m_pins.set({{line, true}});
    m_pins.set({{line, false}});
}

void DdsLoader::pulseUpdate()
{
    m_pins.set({{LptLine::DdsClock, false}, {LptLine::DdsData, false}, {LptLine::DdsUpdate, true}});
    m_pins.set({{LptLine::DdsUpdate, false}});
}

void DdsLoader::shiftLsbFirst(std::uint64_t bits, int count)
{
    for (int bit = 0; bit < count; ++bit)
        shiftBit((bits >> bit & 1U) != 0);
}

void DdsLoader::shiftMsbFirst(std::span<const std::uint8_t> bytes)
{
    for (const std::uint8_t byte : bytes) {
        for (int bit = 7; bit >= 0; --bit)
            shiftBit((byte >> bit & 1) != 0);
    }
}

void DdsLoader::shiftBit(bool bit)
{
    m_pins.set({{LptLine::DdsData, bit}, {LptLine::DdsClock, false}});
    m_pins.set({{LptLine::DdsClock, true}});
}

void DdsLoader::writeBytes(std::span<const std::uint8_t> bytes)
{
    for (const std::uint8_t byte : bytes) {
        m_pins.setBus(byte);
        pulse(LptLine::DdsClock);
    }
}

} // namespace calvorn
