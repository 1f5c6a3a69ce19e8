// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/vna_protocol.h"

#include <QObject>
#include <QTimer>

namespace calvorn {

class ByteLink;

// One command and its reply at a time on the MiniVNA's line. Nothing is ever sent while a reply is due. Driven by
// events: nothing here waits, except switchOff().
//
// A reply that is complete is held back for a moment: bytes that still follow show that it was longer than asked for.
// After a reply that failed the line is made free by throwing away what comes until it has been silent for 200 ms (at
// most 2 s: a board that never stops talking is tried again nevertheless).
class VnaExchange : public QObject
{
    Q_OBJECT

public:
    explicit VnaExchange(QObject *parent = nullptr);

    // The link to speak to, or nullptr. What was under way on the former one is given up without a signal.
    void setLink(ByteLink *link);

    // A command may be sent.
    bool isFree() const { return m_link && m_phase == Phase::Free; }

    // The reply to the last command may still come.
    bool isReplyDue() const { return m_phase == Phase::Reply || m_phase == Phase::Proof; }

    // Needs isFree(). answered() or failed() follows, the latter after 1 s and three times the time that the samples
    // take on the line; neither of them when the link is lost meanwhile.
    void send(const VnaCommand &command);

    // Switches the generator off and lets go of the link: for the end. Blocks for at most 0.3 s; a line on which a
    // reply is still due by then is left alone.
    void switchOff();

signals:
    void answered(const QList<calvorn::VnaSample> &samples); // and the line is free
    void failed();                                           // freed() follows
    void freed();

private:
    enum class Phase { Free, Reply, Proof, Silence };

    void onBytes();
    void onReplyTimer();
    void onProofTimer();
    void free();
    void fail();
    bool awaitReply(int milliseconds);

    ByteLink *m_link = nullptr;
    Phase m_phase = Phase::Free;
    VnaReply m_reply;
    QTimer m_replyTimer; // in Reply: the reply is overdue; in Silence: enough time has been spent
    QTimer m_proofTimer; // in Proof: nothing came after the reply; in Silence: the line is silent
};

} // namespace calvorn
