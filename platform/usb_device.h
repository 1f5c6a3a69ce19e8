// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace calvorn {

// The USB device that a serial port belongs to, in the words of sysfs.
struct UsbDevice
{
    QString vendor;  // idVendor, four hexadecimal digits
    QString product; // idProduct, four hexadecimal digits
    QString serial;  // empty for a device without a serial number
    QString name;    // manufacturer and product for people, possibly empty
};

// Returns the USB device of a serial port such as /dev/ttyUSB0, or of a link to one. Nothing for ports that are not on
// USB or not there. ttyClass: the folder of sysfs that lists the serial ports.
std::optional<UsbDevice> usbDeviceOf(const QString &deviceFile,
                                     const QString &ttyClass = QStringLiteral("/sys/class/tty"));

// The name of a file for accessRule(). The number is below 73, where udev evaluates the tag "uaccess".
inline constexpr const char *kAccessRuleName = "60-calvorn-board.rules";

// Returns a rule for udev that gives the serial port of this device, and of no other, to the user at the seat. Without
// a serial number the rule matches every device of the same product, and says so.
QByteArray accessRule(const UsbDevice &device);

} // namespace calvorn
