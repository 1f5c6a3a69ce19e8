// SPDX-License-Identifier: MIT
#include "server/boards/simulator_settings.h"

#include "protocol/simulator_keys.h"

#include <array>

namespace calvorn {

namespace {

constexpr double kLowestSimulatedDbm = -100.0;
constexpr double kHighestSimulatedDbm = 40.0;

QString ownOrConfigured(const QString &path, const SettingKey &own, const SettingKey &configured)
{
    const QString text = readText(path, own);
    return text.isEmpty() ? readTextOrDefault(path, configured) : text;
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
        {"stale", SimulatorFault::Stale},
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
    SimulatorSettings settings;
    settings.device = deviceFromName(readTextOrDefault(path, kSimulatedDevice));
    if (settings.device.kind() == DeviceKind::Curve)
        settings.device = DeviceUnderTest::fromFile(readText(path, kSimulatedCurve));
    settings.paced = readTextOrDefault(path, kSimulatorPace).compare(QLatin1String("none"), Qt::CaseInsensitive) != 0;

    bool ok = false;
    const qulonglong seed = readTextOrDefault(path, kSimulatorSeed).toULongLong(&ok);
    if (ok)
        settings.seed = seed;

    settings.fault = simulatorFaultFromName(readTextOrDefault(path, kSimulatorFault));
    settings.detector.kind = detectorFromName(readTextOrDefault(path, kSimulatedDetector));
    const double level = readTextOrDefault(path, kSimulatedLevel).toDouble(&ok);
    if (ok && level >= kLowestSimulatedDbm && level <= kHighestSimulatedDbm)
        settings.detector.level = level;
    settings.chip = ddsChipFromName(ownOrConfigured(path, kSimulatedChip, kDdsDevice)).value_or(settings.chip);
    settings.adc = serialAdcFromName(ownOrConfigured(path, kSimulatedAdc, kAdcDevice)).value_or(settings.adc);
    const double clock = ownOrConfigured(path, kSimulatedClock, kDdsXtalFreq).toDouble(&ok);
    if (ok && clock >= 1.0 && clock <= kHighestSimulatedClockHz)
        settings.clockHz = clock;
    return settings;
}

} // namespace calvorn
