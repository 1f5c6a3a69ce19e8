// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// An AD9850 or AD9851 with D0 and D1 wired to + and D2 to ground, so that it can enter serial mode.
// It receives each edge with its cycle and records everything that a real chip would not tolerate.
class Generator
{
public:
    enum class Line { Clock, Update, Data, Reset };

    struct Word
    {
        std::uint64_t cycle = 0; // of the rising edge of FQ_UD
        std::uint32_t tuning = 0;
        std::uint8_t control = 0; // W0
    };

    struct Fault
    {
        std::uint64_t cycle = 0;
        std::string what;
    };

    // Sets the bits of W0 that must be 0: the lowest two for an AD9850, the second for an AD9851.
    void setTestBits(std::uint8_t mask) { testBits_ = mask; }

    void set(Line line, bool level, std::uint64_t cycle);

    // Changes the level of a line that is no longer driven, without an edge.
    void release(Line line, bool level) { levelOf(line) = level; }

    // Puts the chip into an unknown mode, as a supply failure or a floating wire may do.
    void disturb();

    const std::vector<Word> &words() const { return words_; }
    const std::vector<Fault> &faults() const { return faults_; }
    std::uint64_t resets() const { return resets_; }
    bool isSerial() const { return mode_ == Mode::Serial; }

private:
    enum class Mode { Unknown, Parallel, Serial };

    bool &levelOf(Line line);
    void clockRises(std::uint64_t cycle);
    void updateRises(std::uint64_t cycle);
    void latch(std::uint64_t cycle);
    void complain(std::uint64_t cycle, std::string what);

    Mode mode_ = Mode::Unknown;
    std::uint8_t testBits_ = 3;
    bool clock_ = false;
    bool update_ = false;
    bool data_ = false;
    bool reset_ = false;
    std::uint64_t dataChanged_ = 0;
    std::uint64_t resetRose_ = 0;
    std::uint64_t bits_ = 0; // the newest is the highest bit
    unsigned clocks_ = 0;    // since the last FQ_UD
    std::uint64_t resets_ = 0;
    std::vector<Word> words_;
    std::vector<Fault> faults_;
};

} // namespace bench
