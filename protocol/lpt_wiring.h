// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace calvorn {

enum class PortRegister : std::uint8_t { Data, Control, Status };

// A signal pin of the 25-pin connector. Pins 18 to 25 are ground.
struct PortPin
{
    const char *name;
    int number; // on the connector
    PortRegister portRegister;
    std::uint8_t mask;
    bool inverted; // the port inverts the signal between register bit and pin
};

inline constexpr std::array<PortPin, 17> kPortPins = {{
    {"D0", 2, PortRegister::Data, 0x01, false},
    {"D1", 3, PortRegister::Data, 0x02, false},
    {"D2", 4, PortRegister::Data, 0x04, false},
    {"D3", 5, PortRegister::Data, 0x08, false},
    {"D4", 6, PortRegister::Data, 0x10, false},
    {"D5", 7, PortRegister::Data, 0x20, false},
    {"D6", 8, PortRegister::Data, 0x40, false},
    {"D7", 9, PortRegister::Data, 0x80, false},
    {"STROBE", 1, PortRegister::Control, 0x01, true},
    {"AUTOFD", 14, PortRegister::Control, 0x02, true},
    {"INIT", 16, PortRegister::Control, 0x04, false},
    {"SELECTIN", 17, PortRegister::Control, 0x08, true},
    {"ERROR", 15, PortRegister::Status, 0x08, false},
    {"SELECT", 13, PortRegister::Status, 0x10, false},
    {"PE", 12, PortRegister::Status, 0x20, false},
    {"ACK", 10, PortRegister::Status, 0x40, false},
    {"BUSY", 11, PortRegister::Status, 0x80, true},
}};

// The signal lines of the generator and detector board. Levels are always those at the chip: AdcSelect is low while
// the converter is selected; a released I2C line is high.
enum class LptLine : std::uint8_t {
    DdsClock,  // W_CLK of an AD985x, SCLK of an AD9951
    DdsUpdate, // FQ_UD, I/O UPDATE
    DdsData,   // D7, SDIO
    DdsReset,
    AdcClock,
    AdcSelect,
    I2cClock,
    I2cData,
    AuxData,
    AuxClock,
    AuxLatch,
    AdcOut,      // input
    I2cDataBack, // input
};

inline constexpr std::size_t kLptLineCount = 13;

struct LineWiring
{
    LptLine line;
    PortRegister portRegister;
    std::uint8_t mask; // 0 = not connected: an output has no effect, an input reads high
    bool inverted;     // the register bit is the inverse of the level
};

// The pin assigned to each line: one entry per LptLine, in the same order.
using LptWiring = std::array<LineWiring, kLptLineCount>;

// The wiring described in docs/hardware/lpt-board.md.
inline constexpr LptWiring kStandardLptWiring = {{
    {LptLine::DdsClock, PortRegister::Data, 0x01, false},      // D0, pin 2
    {LptLine::DdsUpdate, PortRegister::Data, 0x02, false},     // D1, pin 3
    {LptLine::DdsData, PortRegister::Data, 0x04, false},       // D2, pin 4
    {LptLine::DdsReset, PortRegister::Data, 0x08, false},      // D3, pin 5
    {LptLine::AdcClock, PortRegister::Data, 0x10, false},      // D4, pin 6
    {LptLine::AdcSelect, PortRegister::Data, 0x20, false},     // D5, pin 7
    {LptLine::I2cClock, PortRegister::Data, 0x40, false},      // D6, pin 8
    {LptLine::I2cData, PortRegister::Data, 0x80, false},       // D7, pin 9
    {LptLine::AuxData, PortRegister::Control, 0x01, true},     // STROBE, pin 1, inverted by the port
    {LptLine::AuxClock, PortRegister::Control, 0x02, true},    // AUTOFD, pin 14, inverted by the port
    {LptLine::AuxLatch, PortRegister::Control, 0x04, false},   // INIT, pin 16
    {LptLine::AdcOut, PortRegister::Status, 0x40, false},      // ACK, pin 10
    {LptLine::I2cDataBack, PortRegister::Status, 0x10, false}, // SELECT, pin 13
}};

// How words are loaded into an AD985x.
enum class DdsLoading : std::uint8_t {
    Serial, // bit by bit on DdsData
    Bytes,  // five bytes on port pins D0..D7, which AdcClock, AuxData, AuxClock and DdsData may share
};

struct BoardWiring
{
    LptWiring lines = kStandardLptWiring;
    DdsLoading loading = DdsLoading::Serial;
};

// The usual wiring for byte-wide loading. Lines that must not change during loading occupy the control register, so
// no pins remain for the auxiliary outputs and the potentiometer.
inline constexpr LptWiring kByteWideLptWiring = {{
    {LptLine::DdsClock, PortRegister::Control, 0x01, true},  // STROBE, pin 1, inverted by the port
    {LptLine::DdsUpdate, PortRegister::Control, 0x02, true}, // AUTOFD, pin 14, inverted by the port
    {LptLine::DdsData, PortRegister::Data, 0x80, false},     // D7, pin 9; used only to load an AD9951
    {LptLine::DdsReset, PortRegister::Control, 0x04, false}, // INIT, pin 16
    {LptLine::AdcClock, PortRegister::Data, 0x01, false},    // D0, pin 2
    {LptLine::AdcSelect, PortRegister::Control, 0x08, true}, // SELECTIN, pin 17, inverted by the port
    {LptLine::I2cClock, PortRegister::Data, 0x00, false},
    {LptLine::I2cData, PortRegister::Data, 0x00, false},
    {LptLine::AuxData, PortRegister::Data, 0x00, false},
    {LptLine::AuxClock, PortRegister::Data, 0x00, false},
    {LptLine::AuxLatch, PortRegister::Data, 0x00, false},
    {LptLine::AdcOut, PortRegister::Status, 0x40, false}, // ACK, pin 10
    {LptLine::I2cDataBack, PortRegister::Status, 0x00, true},
}};

} // namespace calvorn
