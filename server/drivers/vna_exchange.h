// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/vna_protocol.h"

#include <QObject>
#include <QTimer>

#include <cstdint>

namespace calvorn {

class ByteLink;

// One command and its reply at a time on the MiniVNA's line. Nothing is ever sent while a reply is due. Driven by
// events: nothing here waits, except switchOff().
//
// A reply that is complete is held back for a moment: bytes that still follow show that it was longer than asked for.
// After a reply that failed the line is made free by throwing away what comes until it has been silent for 200 ms (at
// most 2 s: a board that never stops talking is tried again nevertheless).
//
// Nothing marks a reply as the one to the last command. On a fresh link and after a failure the line is therefore out
// of step: a late reply to an earlier command may still come. A check brings it back into step: a short sweep of a
// length that no recent command had.
class VnaExchange : public QObject
{
    Q_OBJECT

public:
    explicit VnaExchange(QObject *parent = nullptr);

    // The link to speak to, or nullptr. What was under way on the former one is given up without a signal.
    void setLink(ByteLink *link);

    // A command may be sent.
    bool isFree() const { return m_link && m_phase == Phase::Free; }

    // No reply to an earlier command can be taken for the next one.
    bool isInStep() const { return m_inStep; }

    // The reply to the last command may still come.
    bool isReplyDue() const { return m_phase == Phase::Reply || m_phase == Phase::Proof; }

    // Needs isFree(). answered() or failed() follows, the latter after 1 s and three times the time that the samples
    // take on the line; neither of them when the link is lost meanwhile.
    void send(const VnaCommand &command);

    // Sends a check in place of a command, at this tuning word. Needs isFree(). freed() follows when the reply was
    // right and the line is in step; otherwise failed(), after at most 1.1 s.
    void check(VnaCommand::Path path, std::uint32_t word);

    // Switches the generator off and lets go of the link: for the end. Blocks until the reply that is due has come, or
    // the line is silent where none can come whole any more, for at most 1.5 s, and 0.1 s for the answer.
    void switchOff();

signals:
    void answered(const QList<calvorn::VnaSample> &samples); // and the line is free
    void failed();                                           // freed() follows
    void freed();

private:
    enum class Phase { Free, Reply, Proof, Silence };

    void transmit(const VnaCommand &command);
    void onBytes();
    void onReplyTimer();
    void onProofTimer();
    void free();
    void fail();
    void awaitReply(int milliseconds);
    void awaitQuiet(bool isBroken);

    ByteLink *m_link = nullptr;
    Phase m_phase = Phase::Free;
    bool m_inStep = false;
    bool m_checking = false;
    int m_checks = 0;
    VnaReply m_reply;
    QTimer m_replyTimer; // in Reply: the reply is overdue; in Silence: enough time has been spent
    QTimer m_proofTimer; // in Proof: nothing came after the reply; in Silence: the line is silent
};

} // namespace calvorn
