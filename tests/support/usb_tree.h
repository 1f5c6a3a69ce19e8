// SPDX-License-Identifier: MIT
#pragma once

#include "platform/usb_device.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace calvorn::test {

// Imitates the Linux folders and links for USB serial ports: class/tty/<port>/device points to a folder below the USB
// device.
class UsbTree
{
public:
    enum class Depth {
        Adapter, // device/interface/port, the layout of serial adapter drivers
        OwnUsb,  // device/interface, the layout of the CDC ACM driver
    };

    QString ttyClass() const { return m_folder.filePath(QStringLiteral("class/tty")); }

    void plug(const char *port, Depth depth, const UsbDevice &device) const
    {
        const QString usb = m_folder.filePath(QStringLiteral("devices/usb1/1-2"));
        QString place = usb + QStringLiteral("/1-2:1.0");
        if (depth == Depth::Adapter)
            place += u'/' + QString::fromLatin1(port);
        makeFolder(place);
        write(usb + QStringLiteral("/idVendor"), device.vendor);
        write(usb + QStringLiteral("/idProduct"), device.product);
        write(usb + QStringLiteral("/product"), device.name);
        if (!device.serial.isEmpty())
            write(usb + QStringLiteral("/serial"), device.serial);
        connectPort(port, place);
    }

    void plugWithoutUsb(const char *port) const
    {
        const QString place = m_folder.filePath(QStringLiteral("devices/platform/serial8250"));
        makeFolder(place);
        connectPort(port, place);
    }

    void pull(const char *port) const { QFile::remove(ttyClass() + u'/' + QString::fromLatin1(port) + "/device"); }

    // Returns a second name for the port: a link, such as udev creates.
    QString linkTo(const char *port) const
    {
        const QString device = m_folder.filePath(QString::fromLatin1(port));
        write(device, {});
        const QString link = m_folder.filePath(QStringLiteral("my-board"));
        if (!QFile::link(device, link))
            qFatal("cannot make the link of the test");
        return link;
    }

private:
    static void makeFolder(const QString &path)
    {
        if (!QDir().mkpath(path))
            qFatal("cannot make %s", qPrintable(path));
    }
    static void write(const QString &path, const QString &text)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8() + '\n') < 1)
            qFatal("cannot write %s", qPrintable(path));
    }
    void connectPort(const char *port, const QString &place) const
    {
        const QString folder = ttyClass() + u'/' + QString::fromLatin1(port);
        makeFolder(folder);
        if (!QFile::link(place, folder + QStringLiteral("/device")))
            qFatal("cannot connect %s", port);
    }

    QTemporaryDir m_folder;
};

} // namespace calvorn::test
