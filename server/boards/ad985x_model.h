// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/dds_chip_model.h"
#include "server/synthesiser/dds_clock.h"

#include <array>
#include <cstdint>

namespace calvorn {

// AD9850 or AD9851 with D0 and D1 wired high and D2 wired low, so that a W_CLK and an FQ_UD pulse after a reset
// bring it into serial mode.
class Ad985xModel : public DdsChipModel
{
public:
    // referenceHz: the clock at the chip's pin. chip: Ad9850 or Ad9851.
    Ad985xModel(DdsChip chip, double referenceHz);

    bool isSerial() const { return m_serial; }
    std::uint32_t word() const { return m_word; }
    std::uint8_t control() const { return m_control; }

protected:
    void onReset() override;
    void onClock(bool data) override;
    void onUpdate() override;

private:
    void updateParallel();
    void updateSerial();
    void activate(std::uint8_t control, std::uint32_t word);

    DdsChip m_chip;
    double m_referenceHz;
    bool m_serial = false;
    int m_count = 0; // bits or bytes since the last update
    std::uint64_t m_shift = 0;
    std::array<std::uint8_t, 5> m_bytes{};
    std::uint8_t m_control = 0;
    std::uint32_t m_word = 0;
};

} // namespace calvorn
