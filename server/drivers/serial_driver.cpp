// SPDX-License-Identifier: MIT
#include "server/drivers/serial_driver.h"

#include "server/links/byte_link.h"

#include <stdexcept>
#include <utility>

namespace calvorn {

SerialDriver::SerialDriver(LinkOpener opener, QObject *parent)
    : QObject(parent)
    , m_opener(std::move(opener))
{
}

SerialDriver::~SerialDriver()
{
    if (m_link)
        m_link->disconnect(this);
}

bool SerialDriver::OpenPort(short port, const QString &settings)
{
    ClosePort();
    m_port = Port{port, settings};
    if (!openLink())
        m_port.reset();
    return m_port.has_value();
}

void SerialDriver::ClosePort()
{
    if (m_link) {
        m_link->disconnect(this); // what happens to the link from here on is nobody's error
        beforeClosing();
        linkGone();
        m_link->close();
        m_link.reset();
    }
    m_port.reset();
    finishRun();
}

void SerialDriver::VectorsTaken(short count)
{
    if (const auto vector = m_gate.taken(count))
        emit aVettore(*vector);
}

void SerialDriver::report(ErrorCode code, const QString &sentence)
{
    emit aErrore(static_cast<short>(code), sentence);
}

void SerialDriver::remark(const QString &sentence)
{
    qInfo("%s", qPrintable(sentence));
    report(ErrorCode::Ignorable, sentence);
}

bool SerialDriver::isOpen() const
{
    return m_link && m_link->isOpen();
}

bool SerialDriver::ensureOpen()
{
    if (isOpen())
        return true;
    if (m_port)
        return openLink();
    report(ErrorCode::Port, tr("The serial port is not open."));
    return false;
}

void SerialDriver::finishRun()
{
    if (m_run == Run::None)
        return;
    m_run = Run::None;
    m_gate.discardWaiting();
    runEnded();
    emit aComplete();
}

void SerialDriver::deliver(QList<int> vector)
{
    if (const auto now = m_gate.offer(std::move(vector)))
        emit aVettore(*now);
}

bool SerialDriver::openLink()
{
    linkGone();
    try {
        const LineSettings line = parseLineSettings(m_port->settings);
        m_link = m_opener(m_port->number, line);
        connect(m_link.get(), &ByteLink::lost, this, &SerialDriver::onLost);
        linkOpened(line);
    } catch (const std::runtime_error &error) {
        report(ErrorCode::Port, QString::fromUtf8(error.what()));
        return false;
    }
    return true;
}

void SerialDriver::onLost(const QString &reason)
{
    linkGone();
    report(ErrorCode::Port, reason);
    finishRun();
}

} // namespace calvorn
