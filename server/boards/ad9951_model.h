// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/dds_chip_model.h"

#include <array>
#include <cstdint>

namespace calvorn {

// AD9951 with CS tied low: an instruction byte, then exactly the register's bytes, MSB first; the buffers become
// active with I/O UPDATE. One clock too many or too few and the rest is taken for something else, as in the part.
class Ad9951Model : public DdsChipModel
{
public:
    // referenceHz: the clock at the chip's pin, before the multiplier.
    explicit Ad9951Model(double referenceHz);

    // The active value of a register, 0 for an address that the chip does not have.
    std::uint32_t active(std::uint8_t address) const;

    // 4..20, or 1 when the PLL is bypassed.
    int multiplier() const;

protected:
    void onReset() override;
    void onClock(const DdsLines &lines) override;
    void onUpdate() override;

private:
    static constexpr std::size_t kRegisters = 6;

    void takeInstruction(std::uint8_t instruction);

    double m_referenceHz;
    std::array<std::uint32_t, kRegisters> m_buffers{};
    std::array<std::uint32_t, kRegisters> m_active{};
    std::size_t m_address = 0;
    int m_bitsLeft = 8; // of the instruction or of the register
    bool m_inRegister = false;
    std::uint32_t m_shift = 0;
};

} // namespace calvorn
