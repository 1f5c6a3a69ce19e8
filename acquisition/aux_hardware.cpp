// SPDX-License-Identifier: MIT
#include "acquisition/aux_hardware.h"

#include "acquisition/lpt_driver.h"
#include "core/runtime_error.h"
#include "platform/aux_settings.h"

#include <algorithm>
#include <utility>

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

AuxHardware auxHardwareOf(std::function<AcquisitionDriver *()> driver, Log &log)
{
    const auto lpt = [driver = std::move(driver)] { return qobject_cast<LptDriver *>(driver()); };
    return {[lpt](std::uint8_t value, std::int16_t output) {
                if (LptDriver *port = lpt())
                    port->setAux(value, output);
            },
            [lpt](std::uint8_t control, std::uint8_t command, std::uint8_t byte) {
                LptDriver *port = lpt();
                return port && port->writeI2c(control, command, byte);
            },
            [lpt, &log](const QString &reason) {
                if (const LptDriver *port = lpt())
                    log.writeLog(port->logPrefix() + reason);
            }};
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
