// SPDX-License-Identifier: MIT
#pragma once

#include "server/links/byte_link.h"
#include "server/links/line_settings.h"

#include <QSerialPort>

#include <string>

namespace calvorn {

// The access that this user has to a device file.
enum class DeviceAccess { Absent, Forbidden, Allowed };

// Returns one sentence for the user: why a device could not be opened, and what to do.
std::string serialOpeningFailure(const QString &device, QSerialPort::SerialPortError error, DeviceAccess access);

// A serial device of the system, opened exclusively, without flow control. The link is lost when the descriptor reports
// a hang-up or the device file is gone; other errors do not close it, unless they repeat without end.
class SerialLink final : public ByteLink
{
    Q_OBJECT

public:
    // Opens the device file. Throws std::runtime_error with one sentence for the user: no such device, no permission,
    // in use by another program, not a serial port, or a parameter that the device does not support.
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
