// SPDX-License-Identifier: MIT
#pragma once

#include "remote/scpi_command.h"
#include "remote/scpi_lines.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace calvorn {

// Carries out the messages of one client and answers them. Does not know how the client is connected.
//
// Messages are carried out one after the other. A long message lets the rest of the program run now and then; a waiting
// command, such as *OPC?, holds up all later ones.
class ScpiSession : public QObject
{
    Q_OBJECT

public:
    // Maximum size of an answer, bytes: a longer one suggests that the client never reads.
    static constexpr qsizetype kLongestAnswer = 1 << 20;

    explicit ScpiSession(RemoteTarget &target, QObject *parent = nullptr);
    ~ScpiSession() override;

    // Takes bytes from the client, some thousands at a time. The caller keeps further bytes while isBusy().
    void take(QByteArrayView bytes);

    // Whether the session must finish a message before it can take more bytes.
    bool isBusy() const { return m_message.has_value(); }

signals:
    void answered(const QByteArray &bytes);
    // The session can take more bytes.
    void ready();
    // The answer to one message exceeds kLongestAnswer.
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
    std::optional<ScpiMessage> m_message; // the one in progress
    ScpiUnit m_unit;                      // the current one of m_message
    std::unique_ptr<ScpiCall> m_waiting;  // the call of m_unit, while it waits
    QTimer m_patience;
    QByteArray m_answer;        // to m_message
    bool m_isAnswering = false; // m_message has an answer, which may be empty
    bool m_isActing = false;
    bool m_ownsSweep = false; // this client started the running sweep
};

} // namespace calvorn
