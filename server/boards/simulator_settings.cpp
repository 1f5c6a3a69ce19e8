// SPDX-License-Identifier: MIT
#include "server/boards/simulator_settings.h"

#include "platform/profile_file.h"

#include <array>

namespace calvorn {

namespace {

QString simulatorOrConfig(const QString &path, const char *key, const char *configKey)
{
    const QString own = readProfileString(path, QStringLiteral("Simulator"), QString::fromLatin1(key));
    return own.isEmpty() ? readProfileString(path, QStringLiteral("Config"), QString::fromLatin1(configKey)) : own;
}

} // namespace

SimulatorFault simulatorFaultFromName(const QString &name)
{
    struct Named
    {
        const char *name;
        SimulatorFault fault;
    };
    static constexpr auto kFaults = std::to_array<Named>({
        {"drop", SimulatorFault::Drop},
        {"corrupt", SimulatorFault::Corrupt},
        {"add", SimulatorFault::Add},
        {"refuse", SimulatorFault::Refuse},
        {"silence", SimulatorFault::Silence},
        {"half", SimulatorFault::Half},
        {"unplug", SimulatorFault::Unplug},
        {"chatter", SimulatorFault::Chatter},
        {"garbage", SimulatorFault::Garbage},
    });
    const QString wanted = name.trimmed().toLower();
    for (const Named &known : kFaults) {
        if (wanted == QLatin1String(known.name))
            return known.fault;
    }
    return SimulatorFault::None;
}

SimulatorSettings readSimulatorSettings(const QString &path)
{
    const QString section = QStringLiteral("Simulator");
    SimulatorSettings settings;
    settings.device = deviceFromName(readProfileString(path, section, QStringLiteral("Device")));
    settings.paced =
        readProfileString(path, section, QStringLiteral("Pace")).compare(QLatin1String("none"), Qt::CaseInsensitive) !=
        0;

    bool ok = false;
    const qulonglong seed = readProfileString(path, section, QStringLiteral("Seed")).toULongLong(&ok);
    if (ok)
        settings.seed = seed;

    settings.fault = simulatorFaultFromName(readProfileString(path, section, QStringLiteral("Fault")));
    settings.chip = ddsChipFromName(simulatorOrConfig(path, "Chip", "DDS Device")).value_or(settings.chip);
    settings.adc = serialAdcFromName(simulatorOrConfig(path, "ADC", "ADC Device")).value_or(settings.adc);
    const double clock = simulatorOrConfig(path, "Clock", "DDS Xtal freq").toDouble(&ok);
    if (ok && clock >= 1.0 && clock <= kHighestSimulatedClockHz)
        settings.clockHz = clock;
    return settings;
}

} // namespace calvorn
