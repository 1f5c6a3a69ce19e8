// SPDX-License-Identifier: MIT
#include "server/drivers/serial_driver.h"

#include "server/links/byte_link.h"

#include <stdexcept>
#include <utility>

namespace calvorn {

SerialDriver::SerialDriver(LinkOpener opener, QObject *parent)
    : QObject(parent)
    , m_opener(std::move(opener))
    , m_vectors([this](const VectorPlan &plan) { emit PlanOfVectors(plan.startHz, plan.stepHz, plan.mode); },
                [this](const QList<int> &counts) { emit aVettore(counts); })
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
    return openLink();
}

void SerialDriver::ClosePort()
{
    if (m_link) {
        m_link->disconnect(this); // ignore later errors of this link
        beforeClosing();
        linkGone();
        m_link->close();
        m_link.reset();
    }
    m_port.reset();
    finishRun();
}

void SerialDriver::report(ErrorCode code, const QString &sentence)
{
    emit aErrore(numberOf(code), sentence);
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

void SerialDriver::beginRun()
{
    m_run = Run::Sweeping;
    m_vectors.beginRun();
}

void SerialDriver::beginStopping()
{
    m_run = Run::Stopping;
    m_vectors.discardWaiting();
}

void SerialDriver::finishRun()
{
    if (m_run == Run::None)
        return;
    m_run = Run::None;
    m_vectors.discardWaiting();
    runEnded();
    emit aComplete();
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
