// SPDX-License-Identifier: MIT
#include "server/boards/shift_latch_model.h"

namespace calvorn {

void ShiftLatchModel::drive(bool data, bool clock, bool latch)
{
    if (clock && !m_clock) {
        m_shift = static_cast<std::uint16_t>(m_shift << 1 | (data ? 1 : 0));
        ++m_clocks;
    }
    if (latch && !m_latch) {
        m_outputs = m_shift;
        ++m_latches;
    }
    m_clock = clock;
    m_latch = latch;
}

} // namespace calvorn
