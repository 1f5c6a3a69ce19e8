// SPDX-License-Identifier: MIT
#include "instrument/aux_hardware.h"

#include "core/runtime_error.h"
#include "instrument/acquisition_driver.h"
#include "protocol/aux_settings.h"

#include <algorithm>

namespace calvorn {

void AuxHardware::sendByte(std::uint8_t value, std::int16_t output) const
{
    try {
        setAux(value, output);
    } catch (const RuntimeError &error) {
        failed(error.message());
    }
}

void AuxHardware::sendPosition(std::uint8_t control, std::uint8_t command, Configuration &configuration) const
{
    configuration.msgResult = 0;
    try {
        if (writeI2c(control, command, static_cast<std::uint8_t>(configuration.pot2)))
            configuration.msgResult = -1;
    } catch (const RuntimeError &error) {
        failed(error.message());
    }
}

AuxHardware auxHardwareOf(const std::function<AcquisitionDriver *()> &driver, Log &log)
{
    const auto outputs = [driver] {
        AcquisitionDriver *present = driver();
        return present ? present->outputs() : nullptr;
    };
    return {[outputs](std::uint8_t value, std::int16_t output) {
                if (AuxiliaryOutputs *there = outputs())
                    there->setAux(value, output);
            },
            [outputs](std::uint8_t control, std::uint8_t command, std::uint8_t byte) {
                AuxiliaryOutputs *there = outputs();
                return there && there->writeI2c(control, command, byte);
            },
            [driver, &log](const QString &reason) {
                if (const AcquisitionDriver *present = driver())
                    log.writeLog(present->logPrefix() + reason);
            },
            [outputs] { return outputs() != nullptr; }};
}

void restoreOutputs(Configuration &configuration, const AuxHardware &hardware)
{
    for (const std::int16_t output : {std::int16_t{1}, std::int16_t{2}}) {
        const AuxSettings settings = readAuxSettings(configuration.iniPath, output);
        if (settings.enabled)
            hardware.sendByte(settings.byteFor(output == 1 ? configuration.aux1 : configuration.aux2), output);
    }
    const auto potentiometer = readPotSettings(configuration.iniPath);
    if (!potentiometer)
        return;
    configuration.pot2 = std::clamp<std::int16_t>(configuration.pot2, potentiometer->lowest, potentiometer->highest);
    hardware.sendPosition(potentiometer->control, potentiometer->command, configuration);
}

} // namespace calvorn
