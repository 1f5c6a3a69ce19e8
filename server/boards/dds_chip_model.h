// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace calvorn {

// Levels at the generator chip's pins.
struct DdsLines
{
    bool clock = false;  // W_CLK, SCLK
    bool update = false; // FQ_UD, I/O UPDATE
    bool data = false;   // D7, SDIO
    bool reset = false;
    std::uint8_t bus = 0x03; // D0..D6 of an AD985x; serial-loading boards wire D0 and D1 high, the others low

    bool operator==(const DdsLines &) const = default;
};

// The chip's output after its reconstruction filter.
struct DdsOutput
{
    double hertz = 0.0;     // 0..half the system clock; for words above half the range, the image
    double amplitude = 0.0; // 1 at the lowest frequencies, falling as sin(x)/x; 0 if the output is off
};

// Returns the output for a tuning word at this system clock (Hz).
DdsOutput ddsOutput(std::uint32_t word, double systemClockHz);

// Errors that a driver must never make, because a real chip would not report them.
enum class DdsViolation : std::uint32_t {
    WrongBitCount = 1,    // update after loading too few or too many bits
    FactoryBit = 2,       // a 1 in an AD9850's factory test bits
    ForbiddenControl = 4, // control bit D1 of an AD985x
    LostSync = 8,         // AD9951: update in the middle of a transfer, unknown register or read
    Unsupported = 16,     // AD9951: valid setting that this model does not support (LSB first)
};

// A generator chip as observed at its pins.
class DdsChipModel
{
public:
    virtual ~DdsChipModel() = default;

    // Sets the line levels; the clock and update lines act on their rising edges.
    void drive(const DdsLines &lines);

    const DdsOutput &output() const { return m_output; }

    // Returns all violations since the model was created, as a combination of DdsViolation flags. violated() checks for
    // one of them.
    std::uint32_t violations() const { return m_violations; }
    bool violated(DdsViolation violation) const;

    // Number of rising edges on the update line since the model was created.
    std::uint64_t updates() const { return m_updates; }

protected:
    virtual void onReset() = 0;
    virtual void onClock(const DdsLines &lines) = 0;
    virtual void onUpdate() = 0;

    void flag(DdsViolation violation);

    // Sets the output for this word at this system clock (Hz). enabled: false if the chip is powered down.
    void generate(std::uint32_t word, double systemClockHz, bool enabled);

private:
    DdsLines m_lines;
    DdsOutput m_output;
    std::uint32_t m_violations = 0;
    std::uint64_t m_updates = 0;
};

} // namespace calvorn
