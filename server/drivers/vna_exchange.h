// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/vna_protocol.h"

#include <QObject>
#include <QTimer>

#include <cstdint>

namespace calvorn {

class ByteLink;

// Exchanges one command and one reply at a time with the MiniVNA. Never sends while a reply is due. Driven by events:
// only switchOff() blocks.
//
// A complete reply is held back for a moment: further bytes show that it was longer than requested. After a failed
// reply, the exchange discards bytes until the line has been silent for 200 ms, but for at most 2 s: even a board that
// never stops sending is tried again.
//
// A reply contains no reference to its command. On a new link and after a failure, the line is therefore out of step: a
// late reply to an earlier command may still arrive. A check brings the line back into step: a short sweep with a
// number of samples that no recent command had.
class VnaExchange : public QObject
{
    Q_OBJECT

public:
    explicit VnaExchange(QObject *parent = nullptr);

    // Sets the link to use; nullptr for none. Abandons an exchange on the previous link without a signal.
    void setLink(ByteLink *link);

    // True if a command may be sent.
    bool isFree() const { return m_link && m_phase == Phase::Free; }

    // True if no late reply to an earlier command can be mistaken for the next reply.
    bool isInStep() const { return m_inStep; }

    // True if the reply to the last command may still arrive.
    bool isReplyDue() const { return m_phase == Phase::Reply || m_phase == Phase::Proof; }

    // Sends a command. Needs isFree(). answered() or failed() follows, unless the link is lost; failed() comes after
    // 1 s plus three times the duration of the samples on the line.
    void send(const VnaCommand &command);

    // Sends a check instead of a command, at this tuning word. Needs isFree(). If the reply is right, freed() follows
    // and the line is in step; otherwise failed() follows after at most 1.1 s.
    void check(VnaCommand::Path path, std::uint32_t word);

    // Switches the generator off and releases the link, before the port is closed. Blocks for at most 1.5 s until the
    // reply that is due has arrived, or, if it can no longer arrive complete, until the line is silent; then for at
    // most 0.1 s for the answer.
    void switchOff();

signals:
    void answered(const QList<calvorn::VnaSample> &samples); // the line is free again
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
    QTimer m_replyTimer; // in Reply: the reply is overdue; in Silence: the time limit has passed
    QTimer m_proofTimer; // in Proof: nothing came after the reply; in Silence: the line is silent
};

} // namespace calvorn
