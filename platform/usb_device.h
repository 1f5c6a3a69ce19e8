// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace calvorn {

// The USB device that a serial port belongs to, as described by sysfs.
struct UsbDevice
{
    QString vendor;  // idVendor, four hexadecimal digits
    QString product; // idProduct, four hexadecimal digits
    QString serial;  // empty for a device without a serial number
    QString name;    // manufacturer and product in readable form, possibly empty
};

// Returns the USB device behind a serial port such as /dev/ttyUSB0, or behind a link to one; nullopt if the port is not
// a USB port or does not exist. ttyClass: the sysfs folder that lists the serial ports.
std::optional<UsbDevice> usbDeviceOf(const QString &deviceFile,
                                     const QString &ttyClass = QStringLiteral("/sys/class/tty"));

// The file name for accessRule(). Its number is below 73, because udev evaluates the "uaccess" tag in rules file 73.
inline constexpr const char *kAccessRuleName = "60-calvorn-board.rules";

// Returns a udev rule that gives the user at the computer access to the serial port of this device only. Without a
// serial number, the rule matches every device of this product, as stated in the rule's comment.
QByteArray accessRule(const UsbDevice &device);

} // namespace calvorn
