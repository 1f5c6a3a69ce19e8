// SPDX-License-Identifier: MIT
#include "generator.h"

#include <utility>

namespace bench {

namespace {

constexpr unsigned WordBits = 40;
constexpr unsigned TuningBits = 32;
constexpr std::size_t MostFaults = 50;

} // namespace

bool &Generator::levelOf(Line line)
{
    return line == Line::Clock ? clock_ : line == Line::Update ? update_ : line == Line::Data ? data_ : reset_;
}

void Generator::set(Line line, bool level, std::uint64_t cycle)
{
    bool &now = levelOf(line);
    if (now == level)
        return;
    now = level;
    if (line == Line::Data) {
        if (dataChanged_ = cycle; clock_ && mode_ == Mode::Serial)
            complain(cycle, "D7 changes while W_CLK is high");
    } else if (line == Line::Reset && level) {
        resetRose_ = cycle;
    } else if (line == Line::Reset) {
        if (cycle == resetRose_)
            complain(cycle, "a RESET pulse of zero length");
        ++resets_;
        mode_ = Mode::Parallel;
        clocks_ = 0;
    } else if (level && reset_) {
        complain(cycle, "W_CLK or FQ_UD rises while RESET is high");
    } else if (line == Line::Clock && level) {
        clockRises(cycle);
    } else if (line == Line::Update && level) {
        updateRises(cycle);
    }
}

void Generator::disturb()
{
    mode_ = Mode::Unknown;
    clocks_ = 3;
    bits_ = 0x5A5A5A5A5A;
}

void Generator::clockRises(std::uint64_t cycle)
{
    if (update_)
        complain(cycle, "W_CLK rises while FQ_UD is high");
    if (mode_ == Mode::Serial && dataChanged_ == cycle)
        complain(cycle, "D7 changes together with W_CLK");
    bits_ = bits_ >> 1 | static_cast<std::uint64_t>(data_) << (WordBits - 1);
    ++clocks_;
}

void Generator::updateRises(std::uint64_t cycle)
{
    if (clock_)
        complain(cycle, "FQ_UD rises while W_CLK is high");
    if (mode_ == Mode::Serial && clocks_ == WordBits) {
        latch(cycle);
    } else if (mode_ == Mode::Serial) {
        complain(cycle, "FQ_UD after " + std::to_string(clocks_) + " bits");
    } else if (mode_ == Mode::Parallel && clocks_ == 1) {
        mode_ = Mode::Serial;
    } else if (mode_ == Mode::Parallel) {
        complain(cycle, "FQ_UD after " + std::to_string(clocks_) + " pulses of W_CLK before the serial mode");
    } else {
        complain(cycle, "FQ_UD before a pulse on RESET");
    }
    clocks_ = 0;
}

void Generator::latch(std::uint64_t cycle)
{
    const auto control = static_cast<std::uint8_t>(bits_ >> TuningBits);
    if (control & testBits_)
        complain(cycle, "W0 starts a factory test");
    if (words_.empty() || words_.back().cycle < cycle)
        words_.push_back({cycle, static_cast<std::uint32_t>(bits_), control});
}

void Generator::complain(std::uint64_t cycle, std::string what)
{
    if (faults_.size() < MostFaults)
        faults_.push_back({cycle, std::move(what)});
}

} // namespace bench
