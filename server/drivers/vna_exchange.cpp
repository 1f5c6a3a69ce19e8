// SPDX-License-Identifier: MIT
#include "server/drivers/vna_exchange.h"

#include "server/links/byte_link.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace calvorn {

namespace {

using std::chrono::milliseconds;

// More than ten byte times, but short compared with the 139 ms of a sweep.
constexpr milliseconds kProofTime{1};
// Longer after a check, because an FTDI bridge can delay bytes by 16 ms.
constexpr milliseconds kCheckProofTime{20};
constexpr int kShortestCheck = 5; // samples
constexpr int kCheckLengths = 20;
constexpr milliseconds kSilence{200};
constexpr milliseconds kLongestSilencing{2'000};
constexpr int kLastReplyMs = 1'500;
constexpr int kOffReplyMs = 100;

// A sample takes 0.35 ms: four bytes of ten bits at 115,200 baud.
milliseconds patienceFor(int samples)
{
    return milliseconds{1'000 + samples * 3 * 35 / 100};
}

} // namespace

VnaExchange::VnaExchange(QObject *parent)
    : QObject(parent)
{
    m_replyTimer.setSingleShot(true);
    m_proofTimer.setSingleShot(true);
    m_proofTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_replyTimer, &QTimer::timeout, this, &VnaExchange::onReplyTimer);
    connect(&m_proofTimer, &QTimer::timeout, this, &VnaExchange::onProofTimer);
}

void VnaExchange::setLink(ByteLink *link)
{
    if (m_link)
        m_link->disconnect(this);
    m_replyTimer.stop();
    m_proofTimer.stop();
    m_phase = Phase::Free;
    m_inStep = false;
    m_link = link;
    if (m_link)
        connect(m_link, &ByteLink::bytesArrived, this, &VnaExchange::onBytes);
}

void VnaExchange::send(const VnaCommand &command)
{
    m_checking = false;
    transmit(command);
}

void VnaExchange::check(VnaCommand::Path path, std::uint32_t word)
{
    m_checking = true;
    transmit({path, word, kShortestCheck + m_checks++ % kCheckLengths, 0});
}

void VnaExchange::transmit(const VnaCommand &command)
{
    m_reply = VnaReply(command.samples);
    m_phase = Phase::Reply;
    m_replyTimer.start(patienceFor(command.samples));
    // If discard() detects that the device is gone, the link's owner calls setLink(nullptr).
    // cppcheck-suppress nullPointerRedundantCheck
    m_link->discard();
    if (m_link)
        m_link->write(vnaCommandText(command));
}

void VnaExchange::switchOff()
{
    ByteLink *link = m_link;
    const Phase phase = m_phase;
    setLink(nullptr);
    if (!link || !link->isOpen())
        return;
    m_link = link;
    if (phase != Phase::Free)
        awaitQuiet(phase == Phase::Silence);
    const VnaCommand off = vnaGeneratorCommand(0);
    m_reply = VnaReply(off.samples);
    m_link->discard();
    m_link->write(vnaCommandText(off));
    awaitReply(kOffReplyMs);
    m_link = nullptr;
}

// isBroken: wait for silence only, because the reply can no longer be completed.
void VnaExchange::awaitQuiet(bool isBroken)
{
    QElapsedTimer clock;
    clock.start();
    bool isHeard = isBroken;
    for (;;) {
        const VnaReply::State state = m_reply.take(m_link->read());
        isBroken = isBroken || state == VnaReply::State::Broken;
        const int left = kLastReplyMs - static_cast<int>(clock.elapsed());
        if ((state == VnaReply::State::Complete && !isBroken) || left <= 0)
            return;
        // The bytes of a reply are sent without gaps.
        if (!m_link->waitForBytes(isHeard ? std::min(left, static_cast<int>(kSilence.count())) : left))
            return;
        isHeard = true;
    }
}

void VnaExchange::onBytes()
{
    const QByteArray bytes = m_link->read();
    switch (m_phase) {
    case Phase::Free:
        break;
    case Phase::Silence:
        m_proofTimer.start(kSilence);
        break;
    case Phase::Reply:
    case Phase::Proof:
        if (m_reply.take(bytes) == VnaReply::State::Broken)
            fail();
        else if (m_phase == Phase::Reply && m_reply.state() == VnaReply::State::Complete) {
            m_phase = Phase::Proof;
            m_proofTimer.start(m_checking ? kCheckProofTime : kProofTime);
        }
        break;
    }
}

void VnaExchange::onReplyTimer()
{
    if (m_phase == Phase::Reply)
        fail();
    else if (m_phase == Phase::Silence)
        free();
}

void VnaExchange::onProofTimer()
{
    if (m_phase == Phase::Silence) {
        free();
        return;
    }
    // Also read bytes that the link has received but not signalled yet.
    if (m_reply.take(m_link->read()) == VnaReply::State::Broken) {
        fail();
        return;
    }
    if (m_checking) {
        m_inStep = true;
        free();
        return;
    }
    m_replyTimer.stop();
    m_phase = Phase::Free;
    emit answered(std::exchange(m_reply, VnaReply()).samples());
}

void VnaExchange::free()
{
    m_replyTimer.stop();
    m_proofTimer.stop();
    m_phase = Phase::Free;
    emit freed();
}

void VnaExchange::fail()
{
    m_phase = Phase::Silence;
    m_inStep = false;
    m_replyTimer.start(kLongestSilencing);
    m_proofTimer.start(kSilence);
    emit failed();
}

// Blocks until the reply has been received or the time has expired.
void VnaExchange::awaitReply(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    while (m_reply.take(m_link->read()) == VnaReply::State::Incomplete) {
        const int left = milliseconds - static_cast<int>(clock.elapsed());
        if (left <= 0 || !m_link->waitForBytes(left))
            return;
    }
}

} // namespace calvorn
