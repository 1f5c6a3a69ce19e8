// SPDX-License-Identifier: MIT
#include "server/links/serial_link.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <linux/serial.h>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace calvorn {

namespace {

// By default, an FTDI bridge delays received bytes by up to 16 ms. Other devices ignore this request.
void askForLowLatency(int descriptor)
{
    serial_struct serial{};
    if (ioctl(descriptor, TIOCGSERIAL, &serial) != 0)
        return;
    serial.flags |= ASYNC_LOW_LATENCY;
    ioctl(descriptor, TIOCSSERIAL, &serial);
}

DeviceAccess accessTo(const QString &device)
{
    if (!QFileInfo::exists(device))
        return DeviceAccess::Absent;
    return access(QFile::encodeName(device).constData(), R_OK | W_OK) == 0 ? DeviceAccess::Allowed
                                                                           : DeviceAccess::Forbidden;
}

QSerialPort::Parity parityOf(LineParity parity)
{
    switch (parity) {
    case LineParity::Even:
        return QSerialPort::EvenParity;
    case LineParity::Odd:
        return QSerialPort::OddParity;
    case LineParity::Mark:
        return QSerialPort::MarkParity;
    case LineParity::Space:
        return QSerialPort::SpaceParity;
    case LineParity::None:
        break;
    }
    return QSerialPort::NoParity;
}

QSerialPort::StopBits stopBitsOf(LineStop stop)
{
    switch (stop) {
    case LineStop::OneAndHalf:
        return QSerialPort::OneAndHalfStop;
    case LineStop::Two:
        return QSerialPort::TwoStop;
    case LineStop::One:
        break;
    }
    return QSerialPort::OneStop;
}

// Maximum number of consecutive read errors without a received byte. A device that is always ready to read but delivers
// no bytes is not a serial line.
constexpr int kMostFalseAlarms = 1'000;

} // namespace

std::string serialOpeningFailure(const QString &device, QSerialPort::SerialPortError error, DeviceAccess access)
{
    const auto sentence = [&] {
        if (access == DeviceAccess::Absent)
            return QCoreApplication::translate("SerialPort", "There is no device %1; is the cable plugged in?");
        if (access == DeviceAccess::Forbidden)
            return QCoreApplication::translate(
                "SerialPort", "You have no permission to use %1; add your user to the group dialout and log in again.");
        if (error == QSerialPort::PermissionError)
            return QCoreApplication::translate("SerialPort", "The port %1 is in use by another program.");
        return QCoreApplication::translate("SerialPort", "%1 is not a serial port.");
    };
    return sentence().arg(device).toStdString();
}

SerialLink::SerialLink(QString device, const LineSettings &settings, QObject *parent)
    : ByteLink(parent)
    , m_device(std::move(device))
{
    open(settings);
    connect(&m_port, &QSerialPort::readyRead, this, &ByteLink::bytesArrived);
    connect(&m_port, &QSerialPort::errorOccurred, this, &SerialLink::onError);
}

SerialLink::~SerialLink()
{
    close();
}

void SerialLink::open(const LineSettings &settings)
{
    m_port.setPortName(m_device);
    if (!m_port.open(QIODevice::ReadWrite))
        throw std::runtime_error(serialOpeningFailure(m_device, m_port.error(), accessTo(m_device)));
    const bool taken = m_port.setBaudRate(settings.baud) &&
                       m_port.setDataBits(static_cast<QSerialPort::DataBits>(settings.dataBits)) &&
                       m_port.setParity(parityOf(settings.parity)) && m_port.setStopBits(stopBitsOf(settings.stop)) &&
                       m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (!taken) {
        m_port.close();
        throw std::runtime_error(tr("The port %1 does not support these line settings.").arg(m_device).toStdString());
    }
    // Many boards are powered from these lines. A pseudo-terminal does not have them.
    m_port.setDataTerminalReady(true);
    m_port.setRequestToSend(true);
    m_port.clearError();
    askForLowLatency(m_port.handle());
}

void SerialLink::write(const QByteArray &bytes)
{
    if (isOpen() && m_port.write(bytes) == bytes.size())
        m_port.flush();
}

QByteArray SerialLink::read()
{
    const QByteArray bytes = isOpen() ? m_port.readAll() : QByteArray();
    if (!bytes.isEmpty())
        m_falseAlarms = 0;
    return bytes;
}

bool SerialLink::waitForBytes(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (isOpen()) {
        if (m_port.bytesAvailable() > 0 || m_port.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            return true;
        if (deadline.hasExpired())
            return false;
    }
    return false;
}

void SerialLink::discard()
{
    if (!isOpen())
        return;
    m_port.clear();
    read(); // empties Qt's buffer, unless clear() found that the port is gone
}

void SerialLink::close()
{
    m_port.disconnect(this);
    if (isOpen())
        m_port.close();
}

// Closes the port immediately: if a missing device's port remains open, Qt 6.4 keeps reporting the error and uses a
// full processor core.
void SerialLink::onError(QSerialPort::SerialPortError error)
{
    switch (error) {
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
    case QSerialPort::ResourceError:
        break;
    default:
        return;
    }
    if (!isGone() && ++m_falseAlarms < kMostFalseAlarms) {
        keepReading();
        return;
    }
    close();
    emit lost(tr("The connection to %1 was lost.").arg(m_device));
}

// Qt 6.4 also reports a read error if a read returns no bytes because waitForBytes() has already read them. Only the
// descriptor and the device file show whether the device has really disappeared.
bool SerialLink::isGone() const
{
    pollfd descriptor{m_port.handle(), 0, 0};
    return poll(&descriptor, 1, 0) < 0 || (descriptor.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0 ||
           !QFileInfo::exists(m_device);
}

// After some errors, Qt stops watching the descriptor; setting the buffer size makes it resume.
void SerialLink::keepReading()
{
    m_port.clearError();
    m_port.setReadBufferSize(m_port.readBufferSize());
}

} // namespace calvorn
