// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/dds_chip_model.h"
#include "server/synthesiser/dds_clock.h"

#include <array>
#include <cstdint>

namespace calvorn {

// An AD9850 or AD9851. Loads five bytes at a time from the bus until a W_CLK and an FQ_UD pulse with xxxxx011 on the
// bus switch the chip to serial mode; drivers do this right after the reset if the board is wired for serial loading.
class Ad985xModel : public DdsChipModel
{
public:
    // chip: Ad9850 or Ad9851. referenceHz: the clock at the chip's pin.
    Ad985xModel(DdsChip chip, double referenceHz);

    // True in serial mode, in which the chip is loaded with bits instead of bytes.
    bool isSerial() const { return m_serial; }
    // The active tuning word, 0 after a reset. output() returns its frequency, folded at half the clock.
    std::uint32_t word() const { return m_word; }

protected:
    void onReset() override;
    void onClock(const DdsLines &lines) override;
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
    std::uint32_t m_word = 0;
};

} // namespace calvorn
