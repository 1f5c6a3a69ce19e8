// SPDX-License-Identifier: MIT
#pragma once

#include "server/boards/dds_chip_model.h"

#include <array>
#include <cstdint>

namespace calvorn {

// An AD9951 with CS tied low: reads an instruction byte, then exactly the register's bytes, MSB first; I/O UPDATE
// activates the buffers. As in the real chip, a missing or extra clock pulse shifts all later bits.
class Ad9951Model : public DdsChipModel
{
public:
    // referenceHz: the clock at the chip's pin, before the multiplier.
    explicit Ad9951Model(double referenceHz);

    // Returns the active value of a register, or 0 for an address without a register.
    std::uint32_t active(std::uint8_t address) const;

    // 4..20, or 1 if the PLL is bypassed.
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
    int m_bitsLeft = 8; // bits left in the instruction or the register
    bool m_inRegister = false;
    std::uint32_t m_shift = 0;
};

} // namespace calvorn
