// SPDX-License-Identifier: MIT
#include "device.h"

#include <algorithm>
#include <cmath>

namespace bench {

namespace {

constexpr std::uint32_t Multiplier = 2654435761U;

} // namespace

bool Device::choose(const std::string &model, const std::vector<double> &numbers)
{
    const std::size_t wanted = model == "constant" ? 1 : model == "hash" ? 0 : model == "ramp" ? 2 : 3;
    if ((wanted == 3 && model != "band" && model != "clock") || numbers.size() != wanted)
        return false;
    model_ = model;
    numbers_ = numbers;
    return true;
}

void Device::setWord(std::optional<std::uint32_t> word, std::uint64_t cycle)
{
    before_ = counts(cycle);
    word_ = word;
    since_ = cycle;
}

double Device::counts(std::uint64_t cycle) const
{
    const auto passed = static_cast<double>(cycle - since_);
    if (model_ == "clock") // rises with time; numbers: initial counts, cycles per count, period in cycles
        return std::min(FullScale, numbers_[0] + std::floor(std::fmod(passed, numbers_[2]) / numbers_[1]));
    if (timeConstant_ <= 0)
        return target();
    return target() + (before_ - target()) * std::exp(-passed / timeConstant_);
}

double Device::target() const
{
    if (model_ == "constant")
        return numbers_[0];
    if (!word_)
        return 0;
    const double word = *word_;
    if (model_ == "hash")
        return *word_ * Multiplier >> 22;
    if (model_ == "ramp")
        return std::clamp((word - numbers_[0]) / (numbers_[1] - numbers_[0]), 0.0, 1.0) * FullScale;
    const double offset = 2 * (word - numbers_[0]) / numbers_[1]; // model "band"; numbers: centre, width, peak
    return numbers_[2] / std::sqrt(1 + offset * offset);
}

} // namespace bench
