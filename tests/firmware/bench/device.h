// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// The device under test with its detector: returns the converter's counts for the generator's tuning word.
class Device
{
public:
    static constexpr double FullScale = 1023;

    // Selects a model and its parameters. Returns false if the name or the number of parameters is invalid.
    bool choose(const std::string &model, const std::vector<double> &numbers);

    // Sets the detector's time constant; 0 means that the detector follows immediately.
    void setTimeConstant(double cycles) { timeConstant_ = cycles; }

    // Sets the generator's new word, or nullopt if the generator is off.
    void setWord(std::optional<std::uint32_t> word, std::uint64_t cycle);

    double counts(std::uint64_t cycle) const;

private:
    double target() const;

    std::string model_ = "constant";
    std::vector<double> numbers_{0};
    double timeConstant_ = 0;
    std::optional<std::uint32_t> word_;
    std::uint64_t since_ = 0;
    double before_ = 0; // counts when the word changed
};

} // namespace bench
