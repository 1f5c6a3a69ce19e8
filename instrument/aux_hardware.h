// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace calvorn {

class AcquisitionDriver;
class Log;

// The auxiliary outputs of the hardware. A write that fails throws RuntimeError.
class AuxiliaryOutputs
{
public:
    virtual void setAux(std::uint8_t value, std::int16_t output) = 0; // output 1 or 2
    // Writes to the potentiometer on the I2C bus; false when it did not acknowledge.
    virtual bool writeI2c(std::uint8_t control, std::uint8_t command, std::uint8_t data) = 0;

protected:
    ~AuxiliaryOutputs() = default;
};

// What an auxiliary output does to the hardware. A write that fails throws RuntimeError; it is left to failed(), and
// not told to the user.
struct AuxHardware
{
    std::function<void(std::uint8_t value, std::int16_t output)> setAux;
    // control, command, data; false when nothing acknowledged.
    std::function<bool(std::uint8_t, std::uint8_t, std::uint8_t)> writeI2c;
    std::function<void(const QString &reason)> failed;
    // Whether there are outputs at all.
    std::function<bool()> isThere = [] { return true; };

    // Both writes, with a failure passed to failed().
    void sendByte(std::uint8_t value, std::int16_t output) const;
    // Notes in msgResult whether the potentiometer acknowledged: -1 or 0.
    void sendPosition(std::uint8_t control, std::uint8_t command, Configuration &configuration) const;
};

// The hardware behind the driver of this moment; nothing happens where that has no outputs.
AuxHardware auxHardwareOf(const std::function<AcquisitionDriver *()> &driver, Log &log);

// The stored bytes of the outputs that are enabled, and the stored position of the potentiometer where there is one, to
// freshly configured hardware. The position is clamped into its range.
void restoreOutputs(Configuration &configuration, const AuxHardware &hardware);

} // namespace calvorn
