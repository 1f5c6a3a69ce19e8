// SPDX-License-Identifier: MIT
#include "server/drivers/pic_driver.h"

#include "server/links/byte_link.h"
#include "server/synthesiser/frequency_remark.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace calvorn {

namespace {

constexpr qint64 kOperationMs = 2400; // of one operation, which the program waits 3 s for
constexpr qint64 kAnswerMs = 500;
constexpr qint64 kFreeMs = 1200;   // ten thousand bytes at 115,200 baud take 0.87 s
constexpr qint64 kChatterMs = 200; // a board that never falls silent is tried again nevertheless
constexpr qint64 kSilenceMs = 30;  // more than an FTDI bridge holds bytes back
constexpr int kStopMs = 400;
constexpr int kFrameBits = kPicFrameBytes * 10;
const QByteArray kAbort("!");
const QByteArray kAborted("!+\r");

} // namespace

PicDriver::PicDriver(LinkOpener opener, ClockReader readClock, QObject *parent)
    : SerialDriver(std::move(opener), parent)
    , m_readClock(std::move(readClock))
{
    m_late.setSingleShot(true);
    m_silence.setSingleShot(true);
    m_silence.setInterval(static_cast<int>(kSilenceMs));
    connect(&m_late, &QTimer::timeout, this, &PicDriver::onLate);
    connect(&m_silence, &QTimer::timeout, this, &PicDriver::finishRun);
}

void PicDriver::StopSweep(short /*reason*/)
{
    if (run() != Run::Sweeping)
        return;
    setRun(Run::Stopping);
    discardWaiting();
    m_ended = false;
    m_heard.clear();
    m_late.start(kStopMs);
    link().write(kAbort);
}

void PicDriver::RunSweep()
{
    if (run() == Run::Sweeping)
        return;
    if (run() == Run::Stopping) {
        m_outOfStep = true;
        finishRun();
    }
    m_deadline.setRemainingTime(kOperationMs);
    if (!isReady() || !command("G\r")) {
        if (isOpen())
            report(ErrorCode::Board, tr("The board does not start the sweep."));
        emit aComplete();
        return;
    }
    setRun(Run::Sweeping);
    m_decoder.reset();
    m_decoder.take(std::exchange(m_afterAnswer, QByteArray()));
    m_late.start(m_sweepMs);
    QTimer::singleShot(0, this, &PicDriver::takeSweeps); // what came together with the answer
}

bool PicDriver::PrepareSweep(int start, int step)
{
    if (run() != Run::None)
        return false;
    discardWaiting();
    m_plan.reset();
    m_deadline.setRemainingTime(kOperationMs);
    if (!isReady())
        return false;
    m_plan = Plan{start, step};
    if (!sendPlan()) {
        m_plan.reset();
        return false;
    }
    const std::int64_t last = start + (kPicSamples - 1) * static_cast<std::int64_t>(step);
    remarkOnce(std::max<std::int64_t>(start, last));
    return true;
}

bool PicDriver::SendFrequency(const QString &letter, int frequency)
{
    if (run() != Run::None)
        return false;
    const bool isReset = letter == QLatin1String("*");
    if (!isReset && letter != QLatin1String("A") && letter != QLatin1String("B") && letter != QLatin1String("D")) {
        report(ErrorCode::Setting, tr("The board has no command \"%1\".").arg(letter));
        return false;
    }
    m_deadline.setRemainingTime(kOperationMs);
    if (!isReady() || !command(letter.toLatin1() + (isReset ? QByteArray() : QByteArray::number(frequency)) + '\r'))
        return false;
    if (letter == QLatin1String("A"))
        remarkOnce(frequency);
    return true;
}

// The board may still be sweeping for somebody who went without a word.
void PicDriver::linkOpened(const LineSettings &line)
{
    m_sweepMs = 1000 + 3 * 1000 * kFrameBits / line.baud;
    m_outOfStep = true;
    m_clock = m_readClock();
    m_remarked = false;
    connect(&link(), &ByteLink::bytesArrived, this, &PicDriver::onBytes);
}

void PicDriver::beforeClosing()
{
    if (run() != Run::None)
        link().write(kAbort);
    m_plan.reset();
}

void PicDriver::runEnded()
{
    m_late.stop();
    m_silence.stop();
}

bool PicDriver::isReady()
{
    const bool isOldLink = isOpen();
    return ensureOpen() && (isOldLink || !m_plan || sendPlan());
}

bool PicDriver::sendPlan()
{
    return command("B" + QByteArray::number(m_plan->start) + '\r') &&
           command("D" + QByteArray::number(m_plan->step) + '\r') && command("P\r");
}

void PicDriver::remarkOnce(std::int64_t hertz)
{
    const QString sentence = m_remarked ? QString() : remarkOnFrequency(hertz, 0.0, m_clock);
    if (sentence.isEmpty())
        return;
    m_remarked = true;
    remark(sentence);
}

// One repetition is safe: every command sets a state, and the line is freed of what the first one may still cause.
bool PicDriver::command(const QByteArray &text)
{
    const QScopedValueRollback<bool> exchanging(m_exchanging, true);
    const auto within = [this](qint64 patience) { return std::min(patience, m_deadline.remainingTime()); };
    link().read();
    Answer answer = Answer::Missing;
    for (int attempt = 0; attempt < 2 && answer == Answer::Missing && isOpen(); ++attempt) {
        if (m_outOfStep && !resynchronise(within(kFreeMs)))
            continue;
        answer = exchange(text, within(kAnswerMs));
        m_outOfStep = answer == Answer::Missing;
    }
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
    link().write(text);
    while (link().waitForBytes(static_cast<int>(deadline.remainingTime()))) {
        bytes += link().read();
        const qsizetype found = bytes.indexOf(accepted);
        if (found >= 0) {
            m_afterAnswer = bytes.mid(found + accepted.size());
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
    QDeadlineTimer deadline(patience);
    QByteArray heard;
    bool ended = false;
    link().write(kAbort);
    while (isOpen() && !deadline.hasExpired()) {
        const qint64 wait = std::min(ended ? kSilenceMs : kAnswerMs, deadline.remainingTime());
        if (!link().waitForBytes(static_cast<int>(wait)))
            break;
        heard = heard.right(kAborted.size() - 1) + link().read();
        if (!ended && heard.contains(kAborted)) {
            ended = true;
            deadline.setRemainingTime(std::min(deadline.remainingTime(), kChatterMs));
        }
    }
    return ended && isOpen();
}

void PicDriver::onBytes()
{
    if (m_exchanging || !isOpen())
        return;
    const QByteArray bytes = link().read();
    if (run() == Run::Stopping) {
        awaitSilence(bytes);
    } else if (run() == Run::Sweeping) {
        m_decoder.take(bytes);
        takeSweeps();
    }
}

void PicDriver::takeSweeps()
{
    while (run() == Run::Sweeping) {
        const auto sweep = m_decoder.next();
        if (!sweep)
            return;
        if (sweep->isDamaged()) {
            report(ErrorCode::Transmission, tr("A sweep of the board was damaged on the line."));
            continue;
        }
        m_late.start(m_sweepMs);
        deliver(sweep->samples);
    }
}

void PicDriver::awaitSilence(const QByteArray &bytes)
{
    m_heard = m_heard.right(kAborted.size() - 1) + bytes;
    m_ended = m_ended || m_heard.contains(kAborted);
    if (m_ended)
        m_silence.start();
}

void PicDriver::onLate()
{
    m_outOfStep = true;
    if (run() == Run::Sweeping) {
        report(ErrorCode::Board, tr("The board delivers no good sweep any more; the sweep ends."));
        link().write(kAbort);
    }
    finishRun();
}

} // namespace calvorn
