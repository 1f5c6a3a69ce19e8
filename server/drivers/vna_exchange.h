// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/vna_protocol.h"

#include <QObject>
#include <QTimer>

#include <cstdint>

namespace calvorn {

class ByteLink;

// Exchanges one command and one reply at a time with the MiniVNA. Never sends while a reply is pending. Driven by
// events: only switchOff() blocks.
//
// A complete reply is delayed briefly, because further bytes would show that it is longer than requested. After a
// failed reply, received bytes are discarded until the line has been silent for 200 ms, but for no more than 2 s, so
// that even a board that never stops sending gets another command.
//
// A reply does not identify its command. On a new link and after a failure, the line is therefore out of step: a late
// reply to an earlier command may still be received. A check, which is a short sweep with a number of samples that no
// recent command used, brings the line back into step.
class VnaExchange : public QObject
{
    Q_OBJECT

public:
    explicit VnaExchange(QObject *parent = nullptr);

    // Sets the link to use (nullptr: no link). Abandons an exchange on the previous link without emitting a signal.
    void setLink(ByteLink *link);

    // True if a command may be sent.
    bool isFree() const { return m_link && m_phase == Phase::Free; }

    // True if no late reply to an earlier command can be mistaken for the next reply.
    bool isInStep() const { return m_inStep; }

    // True if the reply to the last command is pending.
    bool isReplyDue() const { return m_phase == Phase::Reply || m_phase == Phase::Proof; }

    // Sends a command. Requires isFree(). answered() or failed() follows, unless the link is lost; without a reply,
    // failed() follows 1 s plus three times the transmission time of the samples later.
    void send(const VnaCommand &command);

    // Sends a check at this tuning word instead of a command. Requires isFree(). If the reply is correct, freed()
    // follows and the line is in step; otherwise failed() follows after at most 1.1 s.
    void check(VnaCommand::Path path, std::uint32_t word);

    // Switches the generator off and releases the link, before the port is closed. Blocks for up to 1.5 s until the
    // pending reply has been received, or until the line is silent if the reply can no longer be completed; then for
    // up to 0.1 s until the "off" command has been answered.
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
    QTimer m_replyTimer; // in Reply: the reply is overdue; in Silence: the time limit has expired
    QTimer m_proofTimer; // in Proof: nothing followed the reply; in Silence: the line is silent
};

} // namespace calvorn
