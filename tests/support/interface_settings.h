// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/program_folder.h"

#include <cstdint>

namespace calvorn::test {

// Returns valid settings for one interface. Its simulated board runs at full speed and measures a crystal from 8.95 to
// 9.05 MHz.
inline QByteArray crystalSettings(std::int16_t interfaceType, const QString &fault = QStringLiteral("none"))
{
    const ProgramFolder scratch({}, ProgramFolder::preparedSettings());
    scratch.set("Config", "Interface", QString::number(interfaceType));
    const QByteArray own = "Interface" + QByteArray::number(interfaceType);
    for (const char *key : {"DDS Device", "DDS Multiplier", "DDS Xtal freq", "DDS Max freq", "DDS Min freq",
                            "ADC Device", "ADC Step", "ADC Offset", "ADC Channel"})
        scratch.set("Config", key, scratch.setting(own.constData(), key));
    scratch.set("Debug", "Log", QStringLiteral("1"));
    scratch.set("Calvorn", "Start", QStringLiteral("8950000"));
    scratch.set("Calvorn", "Stop", QStringLiteral("9050000"));
    scratch.set("Simulator", "Device", QStringLiteral("crystal"));
    scratch.set("Simulator", "Pace", QStringLiteral("none"));
    scratch.set("Simulator", "Fault", fault);
    QFile file(scratch.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace calvorn::test
