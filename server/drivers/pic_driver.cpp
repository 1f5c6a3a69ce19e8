// SPDX-License-Identifier: MIT
#include "server/drivers/pic_driver.h"

#include "protocol/pic_commands.h"
#include "protocol/server_start.h"
#include "protocol/sweep_points.h"
#include "server/links/byte_link.h"
#include "server/synthesiser/frequency_remark.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace calvorn {

namespace {

constexpr qint64 kOperationMs = 1900; // for one operation
static_assert(kOperationMs < kCallTimeoutMs);
constexpr qint64 kSameClickMs = 1500; // the two commands of a reset are one second apart
constexpr qint64 kAnswerMs = 500;
constexpr qint64 kFreeMs = 1200;   // ten thousand bytes at 115,200 baud take 0.87 s
constexpr qint64 kChatterMs = 200; // how long to wait for silence if the board keeps sending
constexpr qint64 kSilenceMs = 30;  // longer than the latency of an FTDI bridge
constexpr int kFrameBits = kPicFrameBytes * 10;
constexpr int kPointUs = 60; // time for a point in addition to its settling time
const QByteArray kAbort("!");
const QByteArray kAborted("!+\r");

} // namespace

PicDriver::PicDriver(LinkOpener opener, SettingsReader readSettings, QObject *parent)
    : SerialDriver(std::move(opener), parent)
    , m_readSettings(std::move(readSettings))
{
    for (QTimer *timer : {&m_start, &m_late, &m_silence})
        timer->setSingleShot(true);
    m_start.setInterval(0);
    m_silence.setInterval(static_cast<int>(kSilenceMs));
    connect(&m_start, &QTimer::timeout, this, &PicDriver::startRun);
    connect(&m_late, &QTimer::timeout, this, &PicDriver::onLate);
    connect(&m_silence, &QTimer::timeout, this, &PicDriver::finishRun);
}

void PicDriver::StopSweep(short /*reason*/)
{
    if (run() != Run::Sweeping)
        return;
    if (m_start.isActive())
        finishRun();
    else
        abortRun();
}

void PicDriver::RunSweep()
{
    if (run() == Run::Sweeping)
        return;
    beginOperation();
    endRunNow();
    if (!m_plan && std::exchange(m_planless, Planless::Refused) == Planless::Refused && ensureOpen())
        report(ErrorCode::Board, tr("The board did not start the sweep."));
    if (!m_plan || !ensureOpen()) {
        emit aComplete();
        return;
    }
    beginRun();
    m_start.start(); // return first, so that the program does not wait for the board to start
}

bool PicDriver::PrepareSweep(int start, int step)
{
    if (run() == Run::Sweeping)
        return false;
    beginOperation();
    m_plan.reset();
    m_planless = Planless::Refused;
    if (!ensureOpen()) {
        m_planless = Planless::PortReported;
        return false;
    }
    m_plan = PicPlan{start, step};
    const Answer answer = prepare();
    endOperation(answer);
    if (answer != Answer::Accepted) {
        m_plan.reset();
        return false;
    }
    const std::int64_t last = start + (kSweepPoints - 1) * static_cast<std::int64_t>(step);
    remarkOnce(std::max<std::int64_t>(start, last));
    return true;
}

bool PicDriver::SendFrequency(const QString &letter, int frequency)
{
    const bool isReset = letter == kPicReset;
    const bool isOutput = letter == kPicOutput;
    if (!isReset && !isOutput && letter != kPicStart && letter != kPicStep) {
        report(ErrorCode::Setting, tr("The board does not know the command \"%1\".").arg(letter));
        return false;
    }
    if (run() == Run::Sweeping && !isReset)
        return false;
    beginOperation();
    endRunNow();
    if (!isOutput)
        m_plan.reset();
    const Answer answer = sendLetter(letter, frequency);
    endOperation(answer);
    if (isOutput && answer == Answer::Accepted)
        remarkOnce(frequency);
    return answer == Answer::Accepted;
}

// The board may still be sweeping for a program that exited without stopping it.
void PicDriver::linkOpened(const LineSettings &line)
{
    m_baud = line.baud;
    m_outOfStep = true;
    m_boardHasPlan = false;
    m_configured = m_readSettings();
    m_identityRequested = false;
    m_settlingUs = kUsualPicSettling;
    m_remarked = false;
    connect(&link(), &ByteLink::bytesArrived, this, &PicDriver::onBytes);
}

void PicDriver::beforeClosing()
{
    if (run() == Run::Sweeping && !m_start.isActive())
        abortRun();
    if (run() == Run::Stopping && isOpen())
        awaitAborted(m_late.remainingTime());
    m_plan.reset();
}

void PicDriver::runEnded()
{
    m_start.stop();
    m_late.stop();
    m_silence.stop();
}

void PicDriver::beginOperation()
{
    const bool isSameClick = m_sinceUnanswered.isValid() && m_sinceUnanswered.elapsed() < kSameClickMs;
    m_deadline.setRemainingTime(isSameClick ? m_leftMs : kOperationMs);
}

void PicDriver::endOperation(Answer answer)
{
    m_sinceUnanswered.invalidate();
    if (answer != Answer::Missing)
        return;
    m_leftMs = m_deadline.remainingTime();
    m_sinceUnanswered.start();
}

// Requires an open port.
PicDriver::Answer PicDriver::prepare()
{
    endRunNow();
    return isOpen() ? sendPlan() : Answer::Missing;
}

PicDriver::Answer PicDriver::sendLetter(const QString &letter, int frequency)
{
    const QByteArray hertz = letter == kPicReset ? QByteArray() : QByteArray::number(frequency);
    const Answer answer = ready();
    return answer == Answer::Accepted ? command(letter.toLatin1() + hertz + '\r') : answer;
}

void PicDriver::startRun()
{
    beginOperation();
    Answer answer = ready();
    if (answer == Answer::Accepted)
        answer = command("G\r");
    endOperation(answer);
    if (answer != Answer::Accepted) {
        if (isOpen())
            report(ErrorCode::Board, tr("The board did not start the sweep."));
        finishRun();
        return;
    }
    m_decoder = PicDecoder(*m_plan);
    m_decoder.take(std::exchange(m_afterAnswer, QByteArray()));
    m_late.start(sweepPatienceMs());
    takeSweeps();
}

// Opens the port if necessary. A reconnected board has lost the plan, so this function sends it again.
PicDriver::Answer PicDriver::ready()
{
    if (!ensureOpen())
        return Answer::Missing;
    return !m_plan || m_boardHasPlan ? Answer::Accepted : sendPlan();
}

PicDriver::Answer PicDriver::sendNumber(QLatin1String letter, int hertz)
{
    return command(QByteArray(letter.data(), letter.size()) + QByteArray::number(hertz) + '\r');
}

PicDriver::Answer PicDriver::sendPlan()
{
    sendSettlingTime();
    Answer answer = sendNumber(kPicStart, m_plan->start);
    if (answer == Answer::Accepted)
        answer = sendNumber(kPicStep, m_plan->step);
    if (answer == Answer::Accepted)
        answer = command("P\r");
    m_boardHasPlan = answer == Answer::Accepted;
    if (answer == Answer::Refused)
        m_plan.reset();
    return answer;
}

void PicDriver::remarkOnce(std::int64_t hertz)
{
    const QString sentence = m_remarked ? QString() : remarkOnFrequency(hertz, 0.0, m_configured.clock);
    if (sentence.isEmpty())
        return;
    m_remarked = true;
    remark(sentence);
}

// Sends a command and retries it once, which is safe because every command sets a state and resynchronise() discards a
// late reply to the first attempt. The second attempt may use the rest of the operation's time. If the board is silent,
// gives up after two attempts to resynchronise; if it sends anything, tries until the time has expired.
PicDriver::Answer PicDriver::command(const QByteArray &text)
{
    const QScopedValueRollback<bool> exchanging(m_exchanging, true);
    const auto within = [this](qint64 patience) { return std::min(patience, m_deadline.remainingTime()); };
    link().read();
    Answer answer = Answer::Missing;
    int exchanges = 0;
    int silences = 0;
    while (exchanges < 2 && silences < 2 && answer == Answer::Missing && isOpen() && !m_deadline.hasExpired()) {
        if (m_outOfStep && !resynchronise(within(kFreeMs))) {
            silences += m_heard.isEmpty() ? 1 : 0;
            continue;
        }
        if (!std::exchange(m_identityRequested, true) && !identify(within(kAnswerMs)))
            continue;
        answer = exchange(text, exchanges++ == 0 ? within(kAnswerMs) : m_deadline.remainingTime());
        m_outOfStep = answer == Answer::Missing;
    }
    if (answer == Answer::Missing && isOpen())
        report(ErrorCode::Board, tr("The board does not answer."));
    return answer;
}

// Sends a command and searches the received bytes for its reply.
PicDriver::Answer PicDriver::exchange(const QByteArray &text, qint64 patience, QByteArray *details)
{
    const QByteArray accepted = text.left(1) + '+';
    const QByteArray refused = text.left(1) + "-\r";
    const qsizetype longest = details ? kLongestPicIdentity : accepted.size() + 1;
    const QDeadlineTimer deadline(patience);
    QByteArray bytes;
    link().write(text);
    while (link().waitForBytes(static_cast<int>(deadline.remainingTime()))) {
        bytes += link().read();
        for (qsizetype found = bytes.indexOf(accepted); found >= 0; found = bytes.indexOf(accepted, found + 1)) {
            const qsizetype end = bytes.indexOf('\r', found);
            if (end < 0 || end - found >= longest)
                continue;
            if (details)
                *details = bytes.mid(found + accepted.size(), end - found - accepted.size());
            m_afterAnswer = bytes.mid(end + 1);
            return Answer::Accepted;
        }
        if (bytes.contains(refused))
            return Answer::Refused;
        if (deadline.hasExpired())
            break;
    }
    return Answer::Missing;
}

// Requests the board's identity. Returns false if there is no reply; the board may then be out of step.
bool PicDriver::identify(qint64 patience)
{
    QByteArray details;
    const Answer answer = exchange("?\r", patience, &details);
    if (answer == Answer::Missing) {
        m_outOfStep = true;
        return false;
    }
    if (answer == Answer::Refused)
        return true;
    const std::optional<PicIdentity> board = picIdentityFrom(details);
    if (!board) {
        remark(tr("The board did not identify itself: \"%1\".").arg(QString::fromLatin1(details)));
        return true;
    }
    qInfo("The board: %s %s", qPrintable(board->name), qPrintable(board->version));
    m_settlingUs = board->settlingUs;
    const QString sentence = remarkOnGenerator(*board, m_configured.clock);
    if (!sentence.isEmpty())
        remark(sentence);
    return true;
}

// Sends the configured settling time, if any. Called before each plan, in case the board has been reset.
void PicDriver::sendSettlingTime()
{
    const int wanted = m_configured.settlingUs;
    if (wanted == 0)
        return;
    const Answer answer = sendNumber(kPicSettle, wanted);
    if (answer == Answer::Accepted)
        m_settlingUs = wanted;
    else if (answer == Answer::Refused)
        report(ErrorCode::Setting, tr("The board does not support a settling time of %1 µs.").arg(wanted));
}

// The time limit for one sweep: one second, plus three times the time needed to transmit or to measure a frame,
// whichever is longer.
int PicDriver::sweepPatienceMs() const
{
    const int line = 1000 * kFrameBits / m_baud;
    const int points = kSweepPoints * (m_settlingUs + kPointUs) / 1000;
    return 1000 + 3 * std::max(line, points);
}

// Sends the board an abort command; onBytes() or awaitAborted() detects the confirmation.
void PicDriver::abortRun()
{
    beginStopping();
    m_ended = false;
    m_heard.clear();
    m_silence.stop();
    m_late.start(static_cast<int>(kAnswerMs));
    link().write(kAbort);
}

// Waits until the board has stopped, then ends the run and emits its aComplete.
void PicDriver::endRunNow()
{
    if (run() == Run::None)
        return;
    if (run() == Run::Sweeping && !m_start.isActive())
        abortRun();
    if (run() == Run::Stopping && isOpen())
        m_outOfStep = !awaitAborted(std::min<qint64>(m_late.remainingTime(), m_deadline.remainingTime()));
    finishRun();
}

// Aborts whatever the board is doing. Waits until the board has confirmed the abort and is silent.
bool PicDriver::resynchronise(qint64 patience)
{
    m_ended = false;
    m_heard.clear();
    link().write(kAbort);
    return awaitAborted(patience);
}

// Blocks without processing events. Returns false if the board has not confirmed the abort.
bool PicDriver::awaitAborted(qint64 patience)
{
    const QScopedValueRollback<bool> exchanging(m_exchanging, true);
    QDeadlineTimer deadline(patience);
    while (isOpen() && !deadline.hasExpired()) {
        const qint64 wait = std::min(m_ended ? kSilenceMs : kAnswerMs, deadline.remainingTime());
        if (!link().waitForBytes(static_cast<int>(wait)))
            break;
        if (hearEnd(link().read()))
            deadline.setRemainingTime(std::min(deadline.remainingTime(), kChatterMs));
    }
    return m_ended && isOpen();
}

// Returns true if these bytes complete the reply to an abort.
bool PicDriver::hearEnd(const QByteArray &bytes)
{
    m_heard = m_heard.right(kAborted.size() - 1) + bytes;
    const bool completes = !m_ended && m_heard.contains(kAborted);
    m_ended = m_ended || completes;
    return completes;
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
            report(ErrorCode::Transmission, tr("A sweep from the board was damaged during transmission."));
            continue;
        }
        m_late.start(sweepPatienceMs());
        deliver({m_plan->start, m_plan->step}, sweep->samples);
    }
}

void PicDriver::awaitSilence(const QByteArray &bytes)
{
    hearEnd(bytes);
    if (m_ended)
        m_silence.start();
}

void PicDriver::onLate()
{
    if (run() == Run::Sweeping) {
        report(ErrorCode::Board, tr("The board no longer delivers valid sweeps; the sweep ends."));
        abortRun();
        return;
    }
    m_outOfStep = true;
    finishRun();
}

} // namespace calvorn
