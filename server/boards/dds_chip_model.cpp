// SPDX-License-Identifier: MIT
#include "server/boards/dds_chip_model.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace calvorn {

DdsOutput ddsOutput(std::uint32_t word, double systemClockHz)
{
    if (word == 0)
        return {};
    // The word is a fraction of a turn; above half a turn, the output runs backwards, which is the image.
    const double turns = std::ldexp(static_cast<double>(word), -32);
    const double folded = std::min(turns, 1.0 - turns);
    const double x = std::numbers::pi * folded;
    return {folded * systemClockHz, std::sin(x) / x};
}

void DdsChipModel::drive(const DdsLines &lines)
{
    const DdsLines before = m_lines;
    m_lines = lines;
    if (lines.reset) {
        if (!before.reset)
            onReset();
        return;
    }
    if (lines.clock && !before.clock)
        onClock(lines);
    if (lines.update && !before.update) {
        ++m_updates;
        onUpdate();
    }
}

bool DdsChipModel::violated(DdsViolation violation) const
{
    return (m_violations & static_cast<std::uint32_t>(violation)) != 0;
}

void DdsChipModel::flag(DdsViolation violation)
{
    m_violations |= static_cast<std::uint32_t>(violation);
}

void DdsChipModel::generate(std::uint32_t word, double systemClockHz, bool enabled)
{
    m_output = enabled ? ddsOutput(word, systemClockHz) : DdsOutput{};
}

} // namespace calvorn
