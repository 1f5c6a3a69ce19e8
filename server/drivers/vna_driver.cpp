// SPDX-License-Identifier: MIT
#include "server/drivers/vna_driver.h"

#include "server/links/byte_link.h"
#include "server/synthesiser/tuning_word.h"
#include "server/synthesiser/vna_word.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace calvorn {

namespace {

constexpr int kSamples = 400;
constexpr int kMostFailures = 3;
constexpr int kGeneratorOff = 0;
constexpr std::chrono::milliseconds kStopPatience{150};

// What the instrument is made for.
constexpr std::int64_t kLowestHz = 100'000;
constexpr std::int64_t kHighestHz = 180'000'000;

} // namespace

VnaDriver::VnaDriver(LinkOpener opener, QObject *parent)
    : QObject(parent)
    , m_opener(std::move(opener))
{
    m_stopTimer.setSingleShot(true);
    m_stopTimer.setInterval(kStopPatience);
    connect(&m_stopTimer, &QTimer::timeout, this, &VnaDriver::finishRun);
    connect(&m_exchange, &VnaExchange::answered, this, &VnaDriver::onAnswered);
    connect(&m_exchange, &VnaExchange::failed, this, &VnaDriver::onFailed);
    connect(&m_exchange, &VnaExchange::freed, this, &VnaDriver::next);
}

VnaDriver::~VnaDriver()
{
    m_exchange.setLink(nullptr);
}

void VnaDriver::StopSweep(short /*reason*/)
{
    if (m_run != Run::Sweeping)
        return;
    m_run = Run::Stopping;
    m_gate.discardWaiting();
    if (isCurrent() && m_exchange.isReplyDue())
        m_stopTimer.start();
    else
        finishRun();
}

void VnaDriver::SetMode(short mode)
{
    switch (mode) {
    case 0:
        SetFrequency(kGeneratorOff);
        return;
    case static_cast<short>(Mode::Angle):
    case static_cast<short>(Mode::ReturnLoss):
    case static_cast<short>(Mode::Device):
        break;
    default:
        report(ErrorCode::Setting, tr("Unknown measurement mode: %1").arg(mode));
        return;
    }
    if (m_mode == static_cast<Mode>(mode))
        return;
    m_mode = static_cast<Mode>(mode);
    m_gate.discardWaiting();
}

void VnaDriver::SetMultiplier(short multiplier)
{
    m_clock.multiplier = multiplier;
}

void VnaDriver::SetXtalFrequency(double hertz)
{
    m_clock.xtalHz = hertz;
}

void VnaDriver::SetOffset(double hertz)
{
    m_offsetHz = hertz;
}

void VnaDriver::RunSweep()
{
    if (m_run == Run::Sweeping)
        return;
    if (m_run == Run::Stopping)
        finishRun();
    const bool lost = m_port && !isOpen();
    if (!isOpen() && !(lost && openLink())) {
        if (!lost)
            report(ErrorCode::Port, tr("The serial port is not open."));
        emit aComplete();
        return;
    }
    m_run = Run::Sweeping;
    ++m_runNumber;
    m_failures = 0;
    m_generatorHz.reset();
    next();
}

void VnaDriver::SetFrequency(int hertz)
{
    m_generatorHz = hertz;
    next();
}

void VnaDriver::PrepareSweep(int start, int step, int samples)
{
    if (samples != kSamples) {
        report(ErrorCode::Setting, tr("A sweep has 400 samples, not %1.").arg(samples));
        return;
    }
    m_startHz = start;
    m_stepHz = step;
    ++m_plan;
    m_gate.discardWaiting();
}

bool VnaDriver::OpenPort(short port, const QString &settings)
{
    ClosePort();
    m_port = Port{port, settings};
    if (!openLink()) {
        m_port.reset();
        return false;
    }
    next();
    return true;
}

void VnaDriver::ClosePort()
{
    if (m_run != Run::None)
        finishRun();
    m_port.reset();
    if (!m_link)
        return;
    m_link->disconnect(this);
    m_exchange.switchOff();
    m_link->close();
    m_link.reset();
}

void VnaDriver::VectorTaken()
{
    if (const auto vector = m_gate.taken())
        emit aVettore(*vector);
}

VnaCommand::Path VnaDriver::pathOf(Mode mode)
{
    return mode == Mode::Device ? VnaCommand::Path::Transmission : VnaCommand::Path::Reflection;
}

void VnaDriver::report(ErrorCode code, const QString &sentence)
{
    emit aErrore(static_cast<short>(code), sentence);
}

bool VnaDriver::isOpen() const
{
    return m_link && m_link->isOpen();
}

// Replaces a link that was lost. Never called from within a signal of that link.
bool VnaDriver::openLink()
{
    m_exchange.setLink(nullptr);
    try {
        m_link = m_opener(m_port->number, m_port->settings);
    } catch (const std::runtime_error &error) {
        report(ErrorCode::Port, QString::fromUtf8(error.what()));
        return false;
    }
    connect(m_link.get(), &ByteLink::lost, this, &VnaDriver::onLost);
    m_exchange.setLink(m_link.get());
    m_rangeNoted = false;
    return true;
}

// Sends what is to be sent, when the line is free for it.
void VnaDriver::next()
{
    if (!isOpen() || !m_exchange.isFree())
        return;
    if (m_run == Run::Sweeping)
        sendSweep();
    else if (m_run == Run::None && m_generatorHz)
        sendGenerator();
}

void VnaDriver::sendSweep()
{
    try {
        const VnaSweepWords words = vnaSweepWords(m_startHz, m_stepHz, kSamples, m_offsetHz, systemClockHz(m_clock));
        const std::int64_t endHz = m_startHz + m_stepHz * (kSamples - 1);
        noteRange(std::min(m_startHz, endHz), std::max(m_startHz, endHz));
        m_sent = {m_runNumber, m_plan, pathOf(m_mode), words.descending};
        m_exchange.send({m_sent.path, words.start, kSamples, words.step});
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
        m_exchange.send(vnaGeneratorCommand(word));
    } catch (const FrequencyError &error) {
        report(ErrorCode::Frequency, QString::fromUtf8(error.what()));
    }
}

void VnaDriver::noteRange(std::int64_t lowest, std::int64_t highest)
{
    if (m_rangeNoted || (lowest >= kLowestHz && highest <= kHighestHz))
        return;
    m_rangeNoted = true;
    report(ErrorCode::Ignorable, tr("The MiniVNA is made for 0.1 to 180 MHz; the frequency is set as asked for."));
}

void VnaDriver::finishRun()
{
    m_stopTimer.stop();
    m_run = Run::None;
    m_gate.discardWaiting();
    emit aComplete();
    next();
}

// A reply to a command of a former plan, or over the other path, is of no use any more.
void VnaDriver::deliver(const QList<VnaSample> &samples)
{
    if (m_sent.plan != m_plan || m_sent.path != pathOf(m_mode))
        return;
    QList<int> vector;
    vector.reserve(samples.size());
    for (const VnaSample &sample : samples)
        vector.append(m_mode == Mode::Angle ? sample.phase : sample.magnitude);
    if (m_sent.descending)
        std::reverse(vector.begin(), vector.end());
    if (const auto now = m_gate.offer(std::move(vector)))
        emit aVettore(*now);
}

void VnaDriver::onAnswered(const QList<VnaSample> &samples)
{
    if (isCurrent()) {
        m_failures = 0;
        if (m_run == Run::Stopping)
            finishRun();
        else
            deliver(samples);
    }
    next();
}

void VnaDriver::onFailed()
{
    if (m_sent.run == 0) {
        report(ErrorCode::Board, tr("The MiniVNA does not answer."));
        return;
    }
    if (!isCurrent())
        return;
    if (m_run == Run::Stopping) {
        finishRun();
        return;
    }
    report(ErrorCode::Transmission, tr("A sweep of the MiniVNA was damaged or incomplete."));
    if (++m_failures < kMostFailures)
        return;
    report(ErrorCode::Board, tr("The MiniVNA failed to deliver three sweeps in a row; the sweep ends."));
    finishRun();
}

void VnaDriver::onLost(const QString &reason)
{
    m_exchange.setLink(nullptr);
    report(ErrorCode::Port, reason);
    if (m_run != Run::None)
        finishRun();
}

} // namespace calvorn
