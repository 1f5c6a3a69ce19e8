// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// Levels at the pins of a generator chip on this board.
struct DdsLines
{
    bool clock = false;  // W_CLK, SCLK
    bool update = false; // FQ_UD, I/O UPDATE
    bool data = false;   // D7, SDIO
    bool reset = false;
    std::uint8_t bus = 0x03; // D0..D6 of an AD985x; wired for serial loading: D0 and D1 high, the others low

    bool operator==(const DdsLines &) const = default;
};

// What leaves the chip through its reconstruction filter.
struct DdsOutput
{
    double hertz = 0.0;     // 0..half the system clock: a word above the middle comes out as its image
    double amplitude = 0.0; // 1 at the lowest frequencies, falling as sin(x)/x; 0 when there is no output
};

// The output for a tuning word at this system clock (Hz).
DdsOutput ddsOutput(std::uint32_t word, double systemClockHz);

// What a driver must never do, and what a real chip would not report.
enum class DdsViolation : std::uint32_t {
    WrongBitCount = 1,    // update with an incomplete load, or one that is too long
    FactoryBit = 2,       // a 1 in the factory test bits of an AD9850
    ForbiddenControl = 4, // control bit D1 of an AD985x
    LostSync = 8,         // AD9951: update, unknown register or read in the middle of things
    Unsupported = 16,     // AD9951: a legal setting that this model does not follow (LSB first)
};

// A generator chip, seen from its pins.
class DdsChipModel
{
public:
    virtual ~DdsChipModel() = default;

    // New levels of the lines; the clock and update lines act on their rising edges.
    void drive(const DdsLines &lines);

    const DdsOutput &output() const { return m_output; }

    // What has been done to the chip that a real one would not forgive, since it was made: an "or" of DdsViolation, and
    // one of them.
    std::uint32_t violations() const { return m_violations; }
    bool violated(DdsViolation violation) const;

    // Rising edges of the update line since the start.
    std::uint64_t updates() const { return m_updates; }

protected:
    virtual void onReset() = 0;
    virtual void onClock(const DdsLines &lines) = 0;
    virtual void onUpdate() = 0;

    void flag(DdsViolation violation);

    // From now on the output is that of this word at this system clock (Hz). enabled: not powered down.
    void generate(std::uint32_t word, double systemClockHz, bool enabled);

private:
    DdsLines m_lines;
    DdsOutput m_output;
    std::uint32_t m_violations = 0;
    std::uint64_t m_updates = 0;
};

} // namespace calvorn
