// SPDX-License-Identifier: MIT
#include "instrument/acquisition_driver.h"

#include "core/runtime_error.h"

#include <QAbstractEventDispatcher>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace calvorn {

namespace {

constexpr int kWatchMs = 1000;
constexpr int kMostUnanswered = 3; // ticks
// How long a server may take to exit on request before it is killed. With an unresponsive board, the server needs 2 s.
// A server that has been silent for three seconds probably hangs, so it gets less time.
constexpr int kPatienceMs = 2000;
constexpr int kLittlePatienceMs = 1000;
// The fastest simulated board sends about 17,000 vectors per second and still leaves the event loop enough time.
constexpr int kLongestTurnMs = 2000;
constexpr int kMostInLongTurn = 200;
// A sweep takes at least about 40 ms and reports its completion or an error once.
constexpr int kMostNewsInSecond = 200;

} // namespace

AcquisitionDriver::AcquisitionDriver(const DriverContext &context, QString path, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_path(std::move(path))
{
    connect(&m_context.server, &ServerProcess::ended, this, &AcquisitionDriver::serverEnded);
    m_watch.setInterval(kWatchMs);
    connect(&m_watch, &QTimer::timeout, this, &AcquisitionDriver::watchServer);
    m_turn.start();
    m_second.start();
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this, [this] {
        m_turn.start();
        m_eventsInTurn = 0;
    });
}

void AcquisitionDriver::startUp()
{
    const QScopedValueRollback guard(m_startingUp, true);
    m_settingsSent = configureHardware();
    if (m_settingsSent)
        emit hardwareReady();
}

bool AcquisitionDriver::startSweep()
{
    endReading();
    ensureServer();
    log().writeLog(logPrefix() + tr("Start sweep"));
    const bool late = !m_settingsSent;
    if (late)
        sendSettings();
    generatorCommanded();
    const bool accepted = runPlan({configuration().startFreq, configuration().stepFreq});
    sweepBegun();
    // Operations that need an open port may succeed now.
    if (late)
        emit hardwareReady();
    m_settingsSent = true;
    return accepted;
}

bool AcquisitionDriver::startReading(std::int32_t hertz)
{
    endReading();
    ensureServer();
    if (!isConfigured() || m_readingCompletes)
        return false;
    const std::int32_t lowest = std::max(configuration().ddsMinFreq, 0);
    const std::int32_t highest = std::max(configuration().ddsMaxFreq - (kReadingSpan - 1), lowest);
    const SweepAxis plan{std::clamp(hertz - kReadingSpan / 2, lowest, highest), 1};
    generatorCommanded();
    runPlan(plan);
    m_reading = VectorPlan{plan, mode()};
    m_readingCompletes = true;
    sweepBegun();
    return true;
}

void AcquisitionDriver::parkAtChangedStart()
{
    const QScopedValueRollback guard(m_commandsGenerator, true);
    park();
}

bool AcquisitionDriver::generate(std::int32_t hertz)
{
    const QScopedValueRollback guard(m_commandsGenerator, true);
    return putGeneratorOn(hertz);
}

void AcquisitionDriver::silence()
{
    const QScopedValueRollback guard(m_commandsGenerator, true);
    putGeneratorOff();
}

void AcquisitionDriver::generatorCommanded()
{
    if (!m_commandsGenerator)
        emit generatorTaken();
}

// The reading's aComplete is still pending; vectors still in transit match no plan and are discarded.
void AcquisitionDriver::endReading()
{
    if (!m_reading)
        return;
    m_reading.reset();
    watchEnds();
    stopSweep(kStopForUser);
}

void AcquisitionDriver::shutDown()
{
    m_closing = true;
    // Ignore later events.
    disconnect();
    releaseHardware();
}

void AcquisitionDriver::ensureServer()
{
    if (isServerUp() && m_attached)
        return;
    if (m_closing)
        throw RuntimeError(RuntimeError::Kind::Closing);
    m_context.server.connectToServer();
    attach(m_context.server.connection(), m_path);
    m_attached = true;
    m_takenVectors = 0;
    m_vectorPlan.reset();
    // startUp() itself calls this function through its first operation; every other operation must run the start-up
    // now.
    if (!m_startingUp)
        startUp();
}

void AcquisitionDriver::callFailed(const QDBusError &error)
{
    if (error.type() == QDBusError::NoReply || error.type() == QDBusError::Timeout ||
        error.type() == QDBusError::TimedOut) {
        const QScopedValueRollback guard(m_endedByTimeout, true);
        m_context.server.kill(kPatienceMs);
        throw RuntimeError(RuntimeError::Kind::NoAnswer, tr("it did not answer in time and was terminated"));
    }
    throw RuntimeError(RuntimeError::Kind::DriverCall, bounded(error.message()));
}

QString AcquisitionDriver::bounded(const QString &text)
{
    return text.size() <= kLongestText ? text : text.left(kLongestText) + u'…';
}

// Counts an event. Returns false if the server has exited or has just been terminated for flooding.
bool AcquisitionDriver::takesEvents()
{
    ++m_eventsInTurn;
    if (m_attached && m_eventsInTurn > kMostInLongTurn && m_turn.hasExpired(kLongestTurnMs))
        serverFloods();
    return m_attached;
}

// Like takesEvents(), for completed sweeps and errors: these are rare, and each adds a line to the log.
bool AcquisitionDriver::takesNews()
{
    if (m_second.hasExpired(1000)) {
        m_second.start();
        m_newsInSecond = 0;
    }
    if (++m_newsInSecond > kMostNewsInSecond && m_attached)
        serverFloods();
    return takesEvents();
}

void AcquisitionDriver::serverEnded()
{
    m_attached = false;
    m_settingsSent = false;
    m_watch.stop();
    m_question.reset();
    const bool isReading = m_reading.has_value();
    m_reading.reset();
    m_readingCompletes = false;
    m_portLost = false;
    emit generatorTaken();
    if (!std::exchange(m_sweepRuns, false) && !m_endedByFlood)
        return;
    // Queued, because events must not arrive during the failed call. Posted before the error, so that its message box
    // does not delay code that waits for the sweep to end.
    QMetaObject::invokeMethod(
        this, [this, isReading] { isReading ? emit readingEnded(true) : emit aComplete(); }, Qt::QueuedConnection);
    // After a time-out, the failed call reports the error.
    if (m_endedByTimeout)
        return;
    const QString what = m_endedByWatch ? tr("The acquisition server did not answer and was terminated.")
                         : m_endedByFlood
                             ? tr("The acquisition server sent an endless stream of events and was terminated.")
                             : tr("The acquisition server has ended unexpectedly.");
    emit aErrore(numberOf(ErrorCode::ServerEnded), what + u'\r' + tr("\"Sweep ON\" restarts it."));
}

void AcquisitionDriver::serverCompleted()
{
    if (!takesNews())
        return;
    if (!std::exchange(m_readingCompletes, false)) {
        sweepEnded();
        return;
    }
    // If the reading was stopped, a sweep may already be running.
    const bool byItself = m_reading.has_value();
    if (byItself)
        watchEnds();
    m_reading.reset();
    emit readingEnded(byItself);
}

void AcquisitionDriver::serverFailed(std::int16_t code, const QString &text)
{
    if (!(code == numberOf(ErrorCode::Transmission) ? takesEvents() : takesNews()))
        return;
    if (code == numberOf(ErrorCode::Port))
        m_portLost = true;
    emit aErrore(code, bounded(text));
}

void AcquisitionDriver::serverPlanned(const VectorPlan &plan)
{
    if (takesEvents())
        m_vectorPlan = plan;
}

bool AcquisitionDriver::takesVector(const QVector<int> &counts)
{
    if (!takesEvents())
        return false;
    m_portLost = false;
    if (m_reading && m_vectorPlan == m_reading)
        emit readingTaken(counts);
    else if (isOfTablePlan())
        emit aVettore(counts);
    return true;
}

bool AcquisitionDriver::isAcknowledgementDue()
{
    if (++m_takenVectors < kVectorsAtOnce)
        return false;
    m_takenVectors = 0;
    return true;
}

// The only check that a vector fits the table. Compares the measured plan with the table's plan, so the order of calls
// and events does not matter.
bool AcquisitionDriver::isOfTablePlan() const
{
    const std::optional<SweepAxis> axis = m_context.table.axis();
    return axis && m_vectorPlan == VectorPlan{*axis, mode()};
}

void AcquisitionDriver::sweepBegun()
{
    m_sweepRuns = true;
    m_question.reset();
    m_watch.start();
}

// Counts ticks rather than elapsed time, so that a pause in this program is not mistaken for a hanging server.
void AcquisitionDriver::watchServer()
{
    const bool answered = m_question && m_question->isFinished() && !m_question->isError();
    m_unanswered = answered || !m_question ? 0 : m_unanswered + 1;
    if (m_unanswered >= kMostUnanswered) {
        serverHangs();
        return;
    }
    if (m_question && !m_question->isFinished())
        return;
    m_question.reset(new QDBusPendingCallWatcher(askWhetherWorking()));
    connect(m_question.get(), &QDBusPendingCallWatcher::finished, this,
            [this](const QDBusPendingCallWatcher *question) {
                const QDBusPendingReply<bool> reply = *question;
                if (!reply.isError() && !reply.value())
                    serverHangs();
            });
}

void AcquisitionDriver::serverHangs()
{
    const QScopedValueRollback guard(m_endedByWatch, true);
    m_context.server.kill(kLittlePatienceMs);
}

void AcquisitionDriver::serverFloods()
{
    const QScopedValueRollback guard(m_endedByFlood, true);
    m_context.server.kill(kPatienceMs);
}

void AcquisitionDriver::sweepEnded()
{
    watchEnds();
    emit aComplete();
}

void AcquisitionDriver::watchEnds()
{
    m_sweepRuns = false;
    m_watch.stop();
    m_question.reset();
}

AcquisitionDriver::ErrorReaction AcquisitionDriver::reactionTo(std::int16_t tipoErrore) const
{
    // A server exit is reported on every interface.
    return tipoErrore == numberOf(ErrorCode::ServerEnded) ? ErrorReaction::LogAndAsk : hardwareReactionTo(tipoErrore);
}

void AcquisitionDriver::ignoringErrors(const std::function<void()> &step)
{
    if (!isServerUp())
        return;
    try {
        step();
    } catch (const RuntimeError &error) {
        log().writeLog(logPrefix() + error.message());
    }
}

bool AcquisitionDriver::openOrRefuse(const std::function<bool()> &openPort, const QString &refusal)
{
    bool open = false;
    QString reason;
    try {
        open = openPort();
    } catch (const RuntimeError &error) {
        reason = error.message();
        log().writeLog(logPrefix() + reason);
    }
    if (open) {
        m_portLost = false;
        emit portOpened();
        return true;
    }
    emit portRefused(reason);
    emit refused(refusal, true);
    return false;
}

QString AcquisitionDriver::serialPortRefusal() const
{
    return tr("Wrong serial port number (COM%1).").arg(configuration().commPort) + u'\r' +
           tr("Please verify 'SetUp/Configuration/Ports'.");
}

AcquisitionDriver::ErrorReaction AcquisitionDriver::serialReactionTo(std::int16_t tipoErrore)
{
    return tipoErrore == numberOf(ErrorCode::Transmission) ? ErrorReaction::CountSilently : ErrorReaction::LogOnly;
}

} // namespace calvorn
