// SPDX-License-Identifier: MIT
#include "server/boards/dds_chip_model.h"

#include <cmath>
#include <numbers>

namespace calvorn {

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
    // The word as a part of a turn; beyond half a turn the output runs backwards, which is the image.
    const double turns = std::ldexp(static_cast<double>(word), -32);
    const double folded = turns > 0.5 ? 1.0 - turns : turns;
    if (!enabled || word == 0) {
        m_output = {0.0, 0.0};
        return;
    }
    const double x = std::numbers::pi * folded;
    m_output = {folded * systemClockHz, std::sin(x) / x};
}

} // namespace calvorn
