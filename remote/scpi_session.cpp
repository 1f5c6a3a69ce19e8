// SPDX-License-Identifier: MIT
#include "remote/scpi_session.h"

#include "core/runtime_error.h"
#include "remote/scpi_pattern.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>
#include <vector>

namespace calvorn {

namespace {

constexpr qint64 kTurnMs = 10; // time slice, after which the rest of the program runs

const std::vector<ScpiPattern> &patterns()
{
    static const std::vector<ScpiPattern> all = [] {
        std::vector<ScpiPattern> made;
        for (const ScpiCommand &command : scpiCommands())
            made.emplace_back(command.pattern);
        return made;
    }();
    return all;
}

ScpiError errorOf(const RuntimeError &error)
{
    const QByteArray text = error.message().toUtf8();
    switch (error.kind()) {
    case RuntimeError::Kind::File:
        return {kScpiMassStorageError, text};
    case RuntimeError::Kind::DriverCall:
    case RuntimeError::Kind::NoAnswer:
        return {kScpiHardwareError, text};
    case RuntimeError::Kind::NoDriver:
        return {kScpiHardwareMissing, text};
    default:
        return {kScpiExecutionError, text};
    }
}

} // namespace

ScpiSession::ScpiSession(RemoteTarget &target, QObject *parent)
    : QObject(parent)
    , m_target(target)
{
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_client.note({kScpiExecutionError, "time limit exceeded"});
        endWaiting();
        run();
    });
    connect(&target, &RemoteTarget::errorReported, this, [this](const ScpiError &error) {
        if (m_isActing || m_ownsSweep)
            m_client.note(error);
    });
    watchSweeps();
}

ScpiSession::~ScpiSession() = default;

void ScpiSession::watchSweeps()
{
    showSweeping(m_target.isMeasuring());
    connect(&m_target.instrument(), &Instrument::sweepStarts, this, [this] {
        showSweeping(true);
        m_ownsSweep = m_isActing;
    });
    connect(&m_target, &RemoteTarget::sweepDone, this, [this] {
        followSweep();
        lookAgain();
        if (!m_target.instrument().isSweeping())
            m_ownsSweep = false;
    });
}

void ScpiSession::showSweeping(bool isSweeping)
{
    m_client.status.operation().setConditionBits(kOperationSweeping, isSweeping);
}

// Also called before each command, because one may arrive between the end of a sweep and its signal.
void ScpiSession::followSweep()
{
    showSweeping(m_target.isMeasuring());
    if (m_client.completes && m_target.isSweepDone()) {
        m_client.completes = false;
        m_client.status.raise(kEsrOperationComplete);
    }
}

void ScpiSession::take(QByteArrayView bytes)
{
    m_lines.add(bytes);
    run();
}

void ScpiSession::run()
{
    if (m_waiting || m_isActing)
        return;
    const QPointer<ScpiSession> alive(this);
    QElapsedTimer turn;
    turn.start();
    while (!turn.hasExpired(kTurnMs)) {
        if (!m_message) {
            const std::optional<ScpiLines::Line> line = m_lines.next();
            if (!line) {
                emit ready();
                return;
            }
            if (line->isError()) {
                m_client.note(line->error);
                continue;
            }
            m_message.emplace(line->message);
        }
        const bool goesOn = runMessage();
        if (!alive || !goesOn)
            return;
    }
    QMetaObject::invokeMethod(this, &ScpiSession::run, Qt::QueuedConnection);
}

// Executes one unit of the message. Returns false if the unit waits or has deleted the session.
bool ScpiSession::runMessage()
{
    ScpiError error;
    switch (m_message->next(m_unit, error)) {
    case ScpiMessage::Step::Unit: {
        const QPointer<ScpiSession> alive(this);
        act([this] { executeChecked(); });
        return alive && !m_waiting;
    }
    case ScpiMessage::Step::Error:
        m_client.note(error);
        return true;
    case ScpiMessage::Step::End:
        break;
    }
    m_message.reset();
    sendAnswer();
    return true;
}

void ScpiSession::sendAnswer()
{
    if (!std::exchange(m_isAnswering, false))
        return;
    emit answered(std::exchange(m_answer, {}) + '\n');
}

// Runs a step and queues any error that it throws.
void ScpiSession::act(const std::function<void()> &step)
{
    const QPointer<ScpiSession> alive(this);
    followSweep();
    m_isActing = true;
    std::optional<ScpiError> failure;
    try {
        step();
    } catch (const ScpiError &error) {
        failure = error;
    } catch (const RuntimeError &error) {
        failure = errorOf(error);
    }
    if (!alive)
        return;
    m_isActing = false;
    if (!failure)
        return;
    endWaiting();
    m_client.note(*failure);
    // Skip the rest of a message after a command error.
    const bool isCommandError = failure->number <= kScpiCommandError && failure->number > kScpiExecutionError;
    if (!isCommandError)
        return;
    m_message.reset();
    sendAnswer();
}

void ScpiSession::executeChecked()
{
    const std::span<const ScpiCommand> commands = scpiCommands();
    bool isSuffixWrong = false;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        QList<int> suffixes;
        const ScpiMatch match = patterns()[i].match(m_unit, &suffixes);
        isSuffixWrong = isSuffixWrong || match == ScpiMatch::SuffixOutOfRange;
        if (match != ScpiMatch::Yes || !(m_unit.isQuery ? commands[i].query : commands[i].set))
            continue;
        call(commands[i], suffixes);
        return;
    }
    throw ScpiError{isSuffixWrong ? kScpiHeaderSuffixOutOfRange : kScpiUndefinedHeader, m_unit.header};
}

void ScpiSession::call(const ScpiCommand &command, const QList<int> &suffixes)
{
    const int most = m_unit.isQuery ? command.mostQueryParameters : command.mostParameters;
    if (m_unit.parameters.size() > most)
        throw ScpiError{kScpiParameterNotAllowed, m_unit.header};
    if (!m_unit.isQuery && !command.isQuiet) {
        const QString reason = m_target.busyReason();
        if (!reason.isEmpty())
            throw ScpiError{kScpiExecutionError, reason.toUtf8()};
    }
    auto call = std::make_unique<ScpiCall>(m_target, m_client, m_unit, suffixes);
    auto *act = m_unit.isQuery ? command.query : command.set;
    const bool needsHardware = m_unit.isQuery ? command.queryNeedsHardware : !command.isQuiet;
    if (needsHardware && m_target.instrument().isEnding()) {
        // The single sweep is stored, but the hardware has not yet reported that it has stopped.
        call->wait(
            [act](ScpiCall &waiting) {
                if (waiting.target.instrument().isSweeping())
                    return false;
                act(waiting);
                return true;
            },
            kStopPatience);
    } else {
        act(*call);
    }
    if (call->waitsFor()) {
        m_waiting = std::move(call);
        if (m_waiting->patience() > 0)
            m_patience.start(m_waiting->patience());
        QMetaObject::invokeMethod(this, &ScpiSession::lookAgain, Qt::QueuedConnection);
        return;
    }
    if (!m_unit.isQuery)
        return;
    addAnswer(*call);
}

void ScpiSession::addAnswer(const ScpiCall &call)
{
    m_answer += (std::exchange(m_isAnswering, true) ? ";" : "") + call.answer();
    if (m_answer.size() > kLongestAnswer)
        emit overflowed();
}

// Checks whether the waiting command's condition is now true.
void ScpiSession::lookAgain()
{
    if (!m_waiting || m_isActing)
        return;
    const QPointer<ScpiSession> alive(this);
    bool isDone = false;
    act([this, &isDone] {
        // The command may start waiting for another condition.
        const auto waitsFor = m_waiting->waitsFor();
        const int waits = m_waiting->waits();
        isDone = waitsFor(*m_waiting) && m_waiting->waits() == waits;
        if (m_waiting->waits() != waits && m_waiting->patience() > 0)
            m_patience.start(m_waiting->patience());
        if (isDone && m_unit.isQuery)
            addAnswer(*m_waiting);
    });
    if (!alive || (m_waiting && !isDone))
        return;
    endWaiting();
    run();
}

void ScpiSession::endWaiting()
{
    m_patience.stop();
    m_waiting.reset();
}

} // namespace calvorn
