// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// What is being measured, and its detector: counts of the converter for the word that the generator has.
class Device
{
public:
    static constexpr double FullScale = 1023;

    // The name of the model and its numbers; false if there is no such model.
    bool choose(const std::string &model, const std::vector<double> &numbers);

    // The detector follows a new level with this time constant.
    void setTimeConstant(double cycles) { timeConstant_ = cycles; }

    // The generator has another word, or none when it is off.
    void setWord(std::optional<std::uint32_t> word, std::uint64_t cycle);

    double counts(std::uint64_t cycle) const;

private:
    double target() const;

    std::string model_ = "constant";
    std::vector<double> numbers_{0};
    double timeConstant_ = 0;
    std::optional<std::uint32_t> word_;
    std::uint64_t since_ = 0;
    double before_ = 0; // counts when the word came
};

} // namespace bench
