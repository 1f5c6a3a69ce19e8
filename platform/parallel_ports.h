// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

namespace calvorn {

// Where the kernel lists its parallel ports. Tests use other places.
struct ParportPlaces
{
    QString ports = QStringLiteral("/proc/sys/dev/parport");
    QString devices = QStringLiteral("/dev");
};

// A port found by the kernel's driver.
struct ParportEntry
{
    int number; // N of /dev/parportN
    int base;   // address of the data register; 0 for a port without one, for example behind USB
};

// Port N is called "parportN" in both places.
inline constexpr const char *kParportPrefix = "parport";

// Formats a base address as in the documents: "0x3BC". Addresses are unsigned 16-bit numbers.
QString hexAddress(int base);

// Lists the ports by number. Empty if no driver is loaded or no driver has found a port.
QVector<ParportEntry> listParports(const ParportPlaces &places);

} // namespace calvorn
