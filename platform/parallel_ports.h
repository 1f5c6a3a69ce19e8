// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

namespace calvorn {

// The folders in which the kernel lists its parallel ports. Tests use other folders.
struct ParportPlaces
{
    QString ports = QStringLiteral("/proc/sys/dev/parport");
    QString devices = QStringLiteral("/dev");
};

// A port detected by the kernel driver.
struct ParportEntry
{
    int number; // the N in /dev/parportN
    int base;   // data register address; 0 for a port without one, such as a USB adapter
};

// Port N is called "parportN" in both folders.
inline constexpr const char *kParportPrefix = "parport";

// Formats a base address as in the documentation: "0x3BC". Addresses are unsigned 16-bit numbers.
QString hexAddress(int base);

// Returns the ports in numerical order; empty if no driver is loaded or no port was detected.
QVector<ParportEntry> listParports(const ParportPlaces &places);

} // namespace calvorn
