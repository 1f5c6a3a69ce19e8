// SPDX-License-Identifier: MIT
#include "platform/usb_device.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace calvorn {

namespace {

// The levels to search: serial port, USB interface, USB device. The hub above the device also has an idVendor.
constexpr int kLevels = 3;

QString attribute(const QString &folder, const char *name)
{
    QFile file(folder + u'/' + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(256)).trimmed() : QString();
}

bool isHexadecimal(const QString &text)
{
    return text.size() == 4 && std::all_of(text.begin(), text.end(), [](QChar c) {
               return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f');
           });
}

// Returns a value for use between quotation marks in a udev rule, where '?' matches any single character.
QByteArray asPattern(const QString &text)
{
    QByteArray pattern;
    for (const char c : text.toUtf8()) {
        const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
                             c == '_' || c == '.' || c == ':' || c == ' ' || c == '/';
        pattern += isPlain ? c : '?';
    }
    return pattern;
}

// Returns a name reported by the device as text for a one-line comment.
QByteArray asComment(QString text)
{
    for (QChar &c : text)
        if (!c.isPrint())
            c = u' ';
    return text.simplified().toUtf8();
}

} // namespace

std::optional<UsbDevice> usbDeviceOf(const QString &deviceFile, const QString &ttyClass)
{
    const QString target = QFileInfo(deviceFile).canonicalFilePath();
    const QString port = QFileInfo(target.isEmpty() ? deviceFile : target).fileName();
    QString folder =
        port.isEmpty() ? QString() : QFileInfo(ttyClass + u'/' + port + QStringLiteral("/device")).canonicalFilePath();
    for (int level = 0; level < kLevels && !folder.isEmpty(); ++level) {
        const UsbDevice device{attribute(folder, "idVendor"), attribute(folder, "idProduct"),
                               attribute(folder, "serial"),
                               (attribute(folder, "manufacturer") + u' ' + attribute(folder, "product")).trimmed()};
        if (isHexadecimal(device.vendor) && isHexadecimal(device.product))
            return device;
        folder = QFileInfo(folder).path();
    }
    return {};
}

QByteArray accessRule(const UsbDevice &device)
{
    QByteArray match = "SUBSYSTEM==\"tty\", ATTRS{idVendor}==\"" + device.vendor.toLatin1() +
                       "\", ATTRS{idProduct}==\"" + device.product.toLatin1() + '"';
    QByteArray which = "one board";
    if (device.serial.isEmpty())
        which = "one kind of board; this one has no serial number that could tell it from others";
    else
        match += ", ATTRS{serial}==\"" + asPattern(device.serial) + '"';
    const QByteArray file = kAccessRuleName;
    return "# Gives the serial port of " + which +
           "\n# to the user who sits at the computer. Install it, then plug the board in again:\n#\n" +
           "#     sudo cp " + file + " /etc/udev/rules.d/\n#\n# Device: " + asComment(device.name) + '\n' + match +
           ", TAG+=\"uaccess\"\n";
}

} // namespace calvorn
