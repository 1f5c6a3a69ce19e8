// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// An AD9850 or AD9851 whose D0 and D1 are wired to + and D2 to ground, so that it can enter the serial mode.
// It takes edges with the cycle at which they come, and notes everything that a real chip would not forgive.
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

    // An AD9850 must never see the two lowest bits of W0, an AD9851 never the second.
    void setTestBits(std::uint8_t mask) { testBits_ = mask; }

    void set(Line line, bool level, std::uint64_t cycle);

    // A line that is no longer driven.
    void release(Line line, bool level) { levelOf(line) = level; }

    // What a supply that comes and goes, or a floating wire, may do: the chip is in no known mode.
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
    std::uint64_t bits_ = 0; // the newest at the top
    unsigned clocks_ = 0;    // since the last FQ_UD
    std::uint64_t resets_ = 0;
    std::vector<Word> words_;
    std::vector<Fault> faults_;
};

} // namespace bench
