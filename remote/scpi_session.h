// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_command.h"
#include "remote/scpi_lines.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace calvorn {

// Executes one client's messages and returns the responses. Independent of how the client is connected.
//
// Messages are executed one after the other. A long message runs in time slices, so that the rest of the program can
// run in between; a waiting command, such as *OPC?, delays all later ones.
class ScpiSession : public QObject
{
    Q_OBJECT

public:
    // Maximum size of a response in bytes; a longer response suggests that the client never reads.
    static constexpr qsizetype kLongestAnswer = 1 << 20;

    explicit ScpiSession(RemoteTarget &target, QObject *parent = nullptr);
    ~ScpiSession() override;

    // Accepts bytes from the client, a few thousand at a time. The caller must hold back further bytes while isBusy().
    void take(QByteArrayView bytes);

    // Returns true if the session must finish a message before it can accept more bytes.
    bool isBusy() const { return m_message.has_value(); }

signals:
    void answered(const QByteArray &bytes);
    // The session can accept more bytes.
    void ready();
    // The response to one message exceeds kLongestAnswer.
    void overflowed();

private:
    void run();
    bool runMessage();
    void executeChecked();
    void call(const ScpiCommand &command, const QList<int> &suffixes);
    void addAnswer(const ScpiCall &call);
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
    std::optional<ScpiMessage> m_message; // the message in progress
    ScpiUnit m_unit;                      // the current unit of m_message
    std::unique_ptr<ScpiCall> m_waiting;  // the call for m_unit, while it waits
    QTimer m_patience;
    QByteArray m_answer;        // the response to m_message
    bool m_isAnswering = false; // m_message has a response, which may be empty
    bool m_isActing = false;
    bool m_ownsSweep = false; // this client started the running sweep
};

} // namespace calvorn
