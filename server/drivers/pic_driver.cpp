// SPDX-License-Identifier: MIT
#include "server/drivers/pic_driver.h"

#include "server/links/byte_link.h"
#include "server/links/line_settings.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace calvorn {

namespace {

constexpr qint64 kOperationMs = 2400; // of one operation, which the program waits 3 s for
constexpr qint64 kAnswerMs = 500;
constexpr qint64 kFreeMs = 1200;  // ten thousand bytes at 115,200 baud take 0.87 s
constexpr qint64 kSilenceMs = 30; // more than an FTDI bridge holds bytes back
constexpr int kStopMs = 400;
constexpr int kFrameBits = kPicFrameBytes * 10;
const QByteArray kAbort("!");
const QByteArray kAborted("!+\r");

} // namespace

PicDriver::PicDriver(LinkOpener opener, QObject *parent)
    : QObject(parent)
    , m_opener(std::move(opener))
{
    m_late.setSingleShot(true);
    m_silence.setSingleShot(true);
    m_silence.setInterval(static_cast<int>(kSilenceMs));
    connect(&m_late, &QTimer::timeout, this, &PicDriver::onLate);
    connect(&m_silence, &QTimer::timeout, this, &PicDriver::finishRun);
}

PicDriver::~PicDriver()
{
    if (m_link)
        m_link->disconnect(this);
}

void PicDriver::StopSweep(short /*reason*/)
{
    if (m_run != Run::Sweeping)
        return;
    m_run = Run::Stopping;
    m_gate.discardWaiting();
    m_tail.clear();
    m_late.start(kStopMs);
    m_link->write(kAbort);
}

void PicDriver::RunSweep()
{
    if (m_run == Run::Sweeping)
        return;
    if (m_run == Run::Stopping)
        finishRun();
    m_deadline.setRemainingTime(kOperationMs);
    if (!isReady() || !command("G\r")) {
        if (isOpen())
            report(ErrorCode::Board, tr("The board does not start the sweep."));
        emit aComplete();
        return;
    }
    m_run = Run::Sweeping;
    m_decoder.reset();
    m_decoder.take(std::exchange(m_beyond, QByteArray()));
    m_late.start(m_sweepMs);
    QTimer::singleShot(0, this, &PicDriver::takeSweeps); // what came together with the answer
}

bool PicDriver::PrepareSweep(int start, int step)
{
    if (m_run != Run::None)
        return false;
    m_gate.discardWaiting();
    m_plan.reset();
    m_deadline.setRemainingTime(kOperationMs);
    if (!isReady())
        return false;
    m_plan = Plan{start, step};
    if (!sendPlan())
        m_plan.reset();
    return m_plan.has_value();
}

bool PicDriver::OpenPort(short port, const QString &settings)
{
    ClosePort();
    m_port = Port{port, settings};
    if (!openLink())
        m_port.reset();
    return m_port.has_value();
}

void PicDriver::ClosePort()
{
    if (m_run != Run::None) {
        if (isOpen())
            m_link->write(kAbort);
        finishRun();
    }
    m_port.reset();
    m_plan.reset();
    if (!m_link)
        return;
    m_link->disconnect(this);
    m_link->close();
    m_link.reset();
}

bool PicDriver::SendFrequency(const QString &text, int frequency)
{
    if (m_run != Run::None)
        return false;
    const bool isReset = text == QLatin1String("*");
    if (!isReset && text != QLatin1String("A") && text != QLatin1String("B") && text != QLatin1String("D")) {
        report(ErrorCode::Setting, tr("The board has no command \"%1\".").arg(text));
        return false;
    }
    m_deadline.setRemainingTime(kOperationMs);
    return isReady() && command(text.toLatin1() + (isReset ? QByteArray() : QByteArray::number(frequency)) + '\r');
}

void PicDriver::VectorTaken()
{
    if (const auto vector = m_gate.taken())
        emit aVettore(*vector);
}

void PicDriver::report(ErrorCode code, const QString &sentence)
{
    emit aErrore(static_cast<short>(code), sentence);
}

bool PicDriver::isOpen() const
{
    return m_link && m_link->isOpen();
}

// Never called from within a signal of the former link.
bool PicDriver::openLink()
{
    try {
        m_sweepMs = 1000 + 3 * 1000 * kFrameBits / parseLineSettings(m_port->settings).baud;
        m_link = m_opener(m_port->number, m_port->settings);
    } catch (const std::runtime_error &error) {
        report(ErrorCode::Port, QString::fromUtf8(error.what()));
        return false;
    }
    connect(m_link.get(), &ByteLink::bytesArrived, this, &PicDriver::onBytes);
    connect(m_link.get(), &ByteLink::lost, this, &PicDriver::onLost);
    m_link->write(kAbort); // a sweep that nobody stopped
    return true;
}

bool PicDriver::reopen()
{
    return openLink() && (!m_plan || sendPlan());
}

bool PicDriver::isReady()
{
    if (isOpen())
        return true;
    if (m_port)
        return reopen();
    report(ErrorCode::Port, tr("The serial port is not open."));
    return false;
}

bool PicDriver::sendPlan()
{
    return command("B" + QByteArray::number(m_plan->start) + '\r') &&
           command("D" + QByteArray::number(m_plan->step) + '\r') && command("P\r");
}

// One repetition is safe: every command sets a state, and the line is freed of what the first one may still cause.
bool PicDriver::command(const QByteArray &text)
{
    const QScopedValueRollback<bool> exchanging(m_exchanging, true);
    m_link->read();
    const auto within = [this](qint64 patience) { return std::min(patience, m_deadline.remainingTime()); };
    Answer answer = exchange(text, within(kAnswerMs));
    if (answer == Answer::Missing && resynchronise(within(kFreeMs)))
        answer = exchange(text, within(kAnswerMs));
    if (answer == Answer::Missing && isOpen())
        report(ErrorCode::Board, tr("The board does not answer."));
    return answer == Answer::Accepted;
}

// The answer may stand among bytes that nobody asked for.
PicDriver::Answer PicDriver::exchange(const QByteArray &text, qint64 patience)
{
    const QByteArray accepted = text.left(1) + "+\r";
    const QByteArray refused = text.left(1) + "-\r";
    const QDeadlineTimer deadline(patience);
    QByteArray bytes;
    m_link->write(text);
    while (m_link->waitForBytes(static_cast<int>(deadline.remainingTime()))) {
        bytes += m_link->read();
        const qsizetype found = bytes.indexOf(accepted);
        if (found >= 0) {
            m_beyond = bytes.mid(found + accepted.size());
            return Answer::Accepted;
        }
        if (bytes.contains(refused))
            return Answer::Refused;
        if (deadline.hasExpired())
            break;
    }
    return Answer::Missing;
}

// Ends whatever the board does, and waits until it has said so and nothing follows.
bool PicDriver::resynchronise(qint64 patience)
{
    const QDeadlineTimer deadline(patience);
    QByteArray tail;
    m_link->write(kAbort);
    while (isOpen() && !deadline.hasExpired()) {
        const bool ended = tail == kAborted;
        const qint64 wait = ended ? kSilenceMs : std::min(deadline.remainingTime(), kAnswerMs);
        if (!m_link->waitForBytes(static_cast<int>(wait)))
            return ended && isOpen();
        tail = (tail + m_link->read()).right(kAborted.size());
    }
    return false;
}

void PicDriver::onBytes()
{
    if (m_exchanging || !isOpen())
        return;
    const QByteArray bytes = m_link->read();
    if (m_run == Run::Stopping) {
        awaitSilence(bytes);
    } else if (m_run == Run::Sweeping) {
        m_decoder.take(bytes);
        takeSweeps();
    }
}

void PicDriver::takeSweeps()
{
    while (m_run == Run::Sweeping) {
        const auto sweep = m_decoder.next();
        if (!sweep)
            return;
        if (sweep->isDamaged()) {
            report(ErrorCode::Transmission, tr("A sweep of the board was damaged on the line."));
            continue;
        }
        m_late.start(m_sweepMs);
        if (const auto now = m_gate.offer(sweep->samples))
            emit aVettore(*now);
    }
}

void PicDriver::awaitSilence(const QByteArray &bytes)
{
    m_tail = (m_tail + bytes).right(kAborted.size());
    if (m_tail == kAborted)
        m_silence.start();
    else
        m_silence.stop();
}

void PicDriver::onLate()
{
    if (m_run == Run::Sweeping) {
        report(ErrorCode::Board, tr("The board delivers no good sweep any more; the sweep ends."));
        m_link->write(kAbort);
    }
    finishRun();
}

void PicDriver::finishRun()
{
    m_late.stop();
    m_silence.stop();
    m_run = Run::None;
    m_gate.discardWaiting();
    emit aComplete();
}

void PicDriver::onLost(const QString &reason)
{
    report(ErrorCode::Port, reason);
    if (m_run != Run::None)
        finishRun();
}

} // namespace calvorn
