// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_command.h"
#include "remote/scpi_lines.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace calvorn {

// What one client says, and what it is answered. It knows nothing of the line between them.
//
// Messages are carried out one after the other. A long one makes way for the rest of the program now and then; a
// command that waits, such as *OPC?, holds up what follows.
class ScpiSession : public QObject
{
    Q_OBJECT

public:
    // What an answer may grow to, bytes: whoever does not read is no client.
    static constexpr qsizetype kLongestAnswer = 1 << 20;

    explicit ScpiSession(RemoteTarget &target, QObject *parent = nullptr);
    ~ScpiSession() override;

    // Bytes from the client, some thousands at once. While it is busy the caller keeps them.
    void take(QByteArrayView bytes);

    // It has something to do before it can take more.
    bool isBusy() const { return m_message.has_value(); }

signals:
    void answered(const QByteArray &bytes);
    // It can take more bytes.
    void ready();
    // The answer to one message would be longer than is sensible.
    void overflowed();

private:
    void run();
    bool runMessage();
    void executeChecked();
    void call(const ScpiCommand &command, const QList<int> &suffixes);
    void lookAgain();
    void endWaiting();
    void act(const std::function<void()> &step);
    void sendAnswer();
    void watchSweeps();
    void showSweeping(bool isSweeping);
    void followSweep();

    RemoteTarget &m_target;
    ScpiClient m_client;
    ScpiLines m_lines;
    std::optional<ScpiMessage> m_message; // that is being carried out
    ScpiUnit m_unit;                      // of it
    std::unique_ptr<ScpiCall> m_waiting;  // for what m_unit asks
    QTimer m_patience;
    QByteArray m_answer;        // to the message
    bool m_isAnswering = false; // it has an answer, which may be empty
    bool m_isActing = false;
    bool m_ownsSweep = false; // the sweep that runs was started by this client
};

} // namespace calvorn
