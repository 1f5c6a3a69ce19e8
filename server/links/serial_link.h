// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/byte_link.h"
#include "server/links/line_settings.h"

#include <QSerialPort>

#include <string>

namespace calvorn {

// The user's access rights to a device file.
enum class DeviceAccess { Absent, Forbidden, Allowed };

// Returns a message for the user that says why the device could not be opened and what to do about it.
std::string serialOpeningFailure(const QString &device, QSerialPort::SerialPortError error, DeviceAccess access);

// A serial port on this computer, opened exclusively and without flow control. The link is lost if the descriptor
// reports a hang-up or the device file disappears; other errors do not close it unless they keep recurring.
class SerialLink final : public ByteLink
{
    Q_OBJECT

public:
    // Opens the device file. Throws std::runtime_error with a message for the user: no such device, no permission, in
    // use by another program, not a serial port, or a parameter that the device does not support.
    SerialLink(QString device, const LineSettings &settings, QObject *parent = nullptr);
    ~SerialLink() override;

    bool isOpen() const override { return m_port.isOpen(); }
    void write(const QByteArray &bytes) override;
    QByteArray read() override;
    bool waitForBytes(int milliseconds) override;
    void discard() override;
    void close() override;

private:
    void open(const LineSettings &settings);
    void onError(QSerialPort::SerialPortError error);
    bool isGone() const;
    void keepReading();

    QString m_device;
    QSerialPort m_port;
    int m_falseAlarms = 0;
};

} // namespace calvorn
