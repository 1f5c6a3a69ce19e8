// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace calvorn {

class AcquisitionDriver;
class Log;

// The hardware's auxiliary outputs. A failed write throws RuntimeError.
class AuxiliaryOutputs
{
public:
    virtual void setAux(std::uint8_t value, std::int16_t output) = 0; // output 1 or 2
    // Writes to the potentiometer on the I2C bus. Returns false if it does not acknowledge.
    virtual bool writeI2c(std::uint8_t control, std::uint8_t command, std::uint8_t data) = 0;

protected:
    ~AuxiliaryOutputs() = default;
};

// Functions that write to the auxiliary outputs. A failed write throws RuntimeError; sendByte() and sendPosition() pass
// the error to failed() instead of showing it to the user.
struct AuxHardware
{
    std::function<void(std::uint8_t value, std::int16_t output)> setAux;
    // Arguments: control, command, data. Returns false if the potentiometer does not acknowledge.
    std::function<bool(std::uint8_t, std::uint8_t, std::uint8_t)> writeI2c;
    std::function<void(const QString &reason)> failed;
    // Returns true if the hardware has auxiliary outputs.
    std::function<bool()> isThere;

    // Writes a byte; passes an error to failed().
    void sendByte(std::uint8_t value, std::int16_t output) const;
    // Writes pot2, then sets msgResult to -1 if the potentiometer acknowledged, otherwise to 0. Passes an error to
    // failed().
    void sendPosition(std::uint8_t control, std::uint8_t command, Configuration &configuration) const;
};

// Uses the driver that exists at the time of each write; does nothing if it has no outputs.
AuxHardware auxHardwareOf(const std::function<AcquisitionDriver *()> &driver, Log &log);

// Sends the stored bytes of enabled outputs and the stored position of a configured potentiometer to newly configured
// hardware. Clamps the position to the potentiometer's range.
void restoreOutputs(Configuration &configuration, const AuxHardware &hardware);

} // namespace calvorn
