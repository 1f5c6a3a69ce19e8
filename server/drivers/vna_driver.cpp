// SPDX-License-Identifier: MIT
#include "server/drivers/vna_driver.h"

#include "protocol/sweep_points.h"
#include "server/links/byte_link.h"
#include "server/synthesiser/tuning_word.h"
#include "server/synthesiser/vna_word.h"

#include <algorithm>
#include <utility>

namespace calvorn {

namespace {

constexpr int kMostFailures = 3;
constexpr int kGeneratorOff = 0;
constexpr std::chrono::milliseconds kStopPatience{150};

} // namespace

VnaDriver::VnaDriver(LinkOpener opener, QObject *parent)
    : SerialDriver(std::move(opener), parent)
{
    m_stopTimer.setSingleShot(true);
    m_stopTimer.setInterval(kStopPatience);
    connect(&m_stopTimer, &QTimer::timeout, this, &VnaDriver::finishRun);
    connect(&m_exchange, &VnaExchange::answered, this, &VnaDriver::onAnswered);
    connect(&m_exchange, &VnaExchange::failed, this, &VnaDriver::onFailed);
    connect(&m_exchange, &VnaExchange::freed, this, &VnaDriver::next);
}

void VnaDriver::StopSweep(short /*reason*/)
{
    if (run() != Run::Sweeping)
        return;
    beginStopping();
    if (isCurrent() && m_exchange.isReplyDue())
        m_stopTimer.start();
    else
        finishRun();
}

void VnaDriver::SetMode(short mode)
{
    const auto wanted = static_cast<VnaMode>(mode);
    switch (wanted) {
    case VnaMode::Parked:
        SetFrequency(kGeneratorOff);
        return;
    case VnaMode::Angle:
    case VnaMode::ReturnLoss:
    case VnaMode::Device:
        break;
    default:
        report(ErrorCode::Setting, tr("Unknown measurement mode: %1").arg(mode));
        return;
    }
    if (m_mode == wanted)
        return;
    m_mode = wanted;
    discardWaiting();
}

void VnaDriver::SetMultiplier(short multiplier)
{
    m_clock.multiplier = multiplier;
    ++m_tuning;
}

void VnaDriver::SetXtalFrequency(double hertz)
{
    m_clock.xtalHz = hertz;
    ++m_tuning;
}

void VnaDriver::SetOffset(double hertz)
{
    m_offsetHz = hertz;
    ++m_tuning;
}

void VnaDriver::RunSweep()
{
    if (run() == Run::Sweeping)
        return;
    if (run() == Run::Stopping)
        finishRun();
    if (!ensureOpen()) {
        emit aComplete();
        return;
    }
    beginRun();
    ++m_runNumber;
    m_failures = 0;
    m_generatorHz.reset();
    next();
}

void VnaDriver::SetFrequency(int hertz)
{
    m_generatorHz = hertz;
    m_repeated = false;
    next();
}

void VnaDriver::PrepareSweep(int start, int step, int samples)
{
    if (samples != kSweepPoints) {
        report(ErrorCode::Setting, tr("A sweep has 400 samples, not %1.").arg(samples));
        return;
    }
    m_startHz = start;
    m_stepHz = step;
    discardWaiting();
}

VnaCommand::Path VnaDriver::pathOf(VnaMode mode)
{
    return mode == VnaMode::Device ? VnaCommand::Path::Transmission : VnaCommand::Path::Reflection;
}

void VnaDriver::linkOpened(const LineSettings & /*line*/)
{
    m_exchange.setLink(&link());
    m_rangeNoted = false;
    next();
}

void VnaDriver::linkGone()
{
    m_exchange.setLink(nullptr);
}

void VnaDriver::beforeClosing()
{
    m_exchange.switchOff();
}

void VnaDriver::runEnded()
{
    m_stopTimer.stop();
    next();
}

// Sends the next sweep or generator command if the line is free.
void VnaDriver::next()
{
    if (!isOpen() || !m_exchange.isFree())
        return;
    if (run() == Run::Sweeping)
        sendSweep();
    else if (run() == Run::None && m_generatorHz)
        sendGenerator();
}

// If the line is out of step, sends a check instead.
void VnaDriver::sendSweep()
{
    try {
        const VnaSweepWords words =
            vnaSweepWords(m_startHz, m_stepHz, kSweepPoints, m_offsetHz, systemClockHz(m_clock));
        const std::int64_t endHz = m_startHz + std::int64_t{m_stepHz} * (kSweepPoints - 1);
        noteRange(std::min<std::int64_t>(m_startHz, endHz), std::max<std::int64_t>(m_startHz, endHz));
        m_sent = {m_runNumber, m_tuning, m_startHz, m_stepHz, pathOf(m_mode), words.descending};
        if (m_exchange.isInStep())
            m_exchange.send({m_sent.path, words.start, kSweepPoints, words.step});
        else
            m_exchange.check(m_sent.path, words.start);
    } catch (const FrequencyError &error) {
        report(ErrorCode::Frequency, QString::fromUtf8(error.what()));
        finishRun();
    }
}

void VnaDriver::sendGenerator()
{
    const int hertz = *std::exchange(m_generatorHz, std::nullopt);
    try {
        std::uint32_t word = 0;
        if (hertz != kGeneratorOff) {
            word = tuningWord(hertz, m_offsetHz, systemClockHz(m_clock));
            noteRange(hertz, hertz);
        }
        m_sent = {};
        m_sentHz = hertz;
        m_exchange.send(vnaGeneratorCommand(word));
    } catch (const FrequencyError &error) {
        report(ErrorCode::Frequency, QString::fromUtf8(error.what()));
    }
}

void VnaDriver::noteRange(std::int64_t lowest, std::int64_t highest)
{
    if (m_rangeNoted || (lowest >= kVnaLowestHz && highest <= kVnaHighestHz))
        return;
    m_rangeNoted = true;
    remark(tr("The MiniVNA is designed for 0.1 to 180 MHz; the frequency is set as requested."));
}

// Discards a reply that was measured with an earlier plan, clock or offset, or over the other path.
void VnaDriver::deliverSamples(const QList<VnaSample> &samples)
{
    if (m_sent.tuning != m_tuning || m_sent.startHz != m_startHz || m_sent.stepHz != m_stepHz ||
        m_sent.path != pathOf(m_mode))
        return;
    QList<int> counts;
    counts.reserve(samples.size());
    for (const VnaSample &sample : samples)
        counts.append(m_mode == VnaMode::Angle ? sample.phase : sample.magnitude);
    if (m_sent.descending)
        std::reverse(counts.begin(), counts.end());
    deliver({m_sent.startHz, m_sent.stepHz, numberOf(m_mode)}, std::move(counts));
}

void VnaDriver::onAnswered(const QList<VnaSample> &samples)
{
    if (isCurrent()) {
        m_failures = 0;
        if (run() == Run::Stopping)
            finishRun();
        else
            deliverSamples(samples);
    }
    next();
}

void VnaDriver::onFailed()
{
    if (m_sent.run == 0)
        generatorFailed();
    else if (isCurrent() && run() == Run::Stopping)
        finishRun();
    else if (isCurrent())
        sweepFailed();
}

// Retries the command once, because a single stray byte can corrupt a reply. The command is sent again when the
// exchange emits freed(), unless a newer frequency is pending.
void VnaDriver::generatorFailed()
{
    if (m_generatorHz || run() != Run::None)
        return;
    if (std::exchange(m_repeated, true))
        report(ErrorCode::Board, tr("The MiniVNA does not answer."));
    else
        m_generatorHz = m_sentHz;
}

void VnaDriver::sweepFailed()
{
    report(ErrorCode::Transmission, tr("A sweep of the MiniVNA was damaged or incomplete."));
    if (++m_failures < kMostFailures)
        return;
    report(ErrorCode::Board, tr("The MiniVNA failed to deliver three sweeps in a row; the sweep ends."));
    finishRun();
}

} // namespace calvorn
