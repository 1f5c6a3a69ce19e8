// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

namespace calvorn {

// Where the kernel shows its parallel ports. Another place is for tests.
struct ParportPlaces
{
    QString ports = QStringLiteral("/proc/sys/dev/parport");
    QString devices = QStringLiteral("/dev");
};

// One port that the kernel's driver has found.
struct ParportEntry
{
    int number; // N of /dev/parportN
    int base;   // address of the data register; 0 for a port that has none, such as one behind USB
};

// "parportN" is the name of port N in both places.
inline constexpr const char *kParportPrefix = "parport";

// "0x3BC": a base address as the documents write it. Addresses are 16 bits without a sign.
QString hexAddress(int base);

// By number. Empty when no driver is loaded or none has found a port.
QVector<ParportEntry> listParports(const ParportPlaces &places);

} // namespace calvorn
