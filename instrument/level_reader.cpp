// SPDX-License-Identifier: MIT
#include "instrument/level_reader.h"

#include "core/runtime_error.h"
#include "instrument/signal_generator.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace calvorn {

namespace {

// Time limit for one tick, so that the window stays responsive; a parallel-port reading takes a few milliseconds.
constexpr int kBusyMs = 40;
// Pause after another operation has used the hardware, in case it has more to do.
constexpr int kPauseMs = 500;
// First and longest pause after a failure. The server waits up to 1.9 s for a board that does not answer.
constexpr int kFirstRetryMs = 3'000;
constexpr int kLastRetryMs = 60'000;

LevelReading readingOf(const QVector<int> &counts)
{
    LevelReading reading;
    reading.readings = static_cast<int>(counts.size());
    for (const int count : counts)
        reading.count += count;
    reading.count /= reading.readings;
    double squares = 0.0;
    for (const int count : counts)
        squares += (count - reading.count) * (count - reading.count);
    reading.spread = reading.readings > 1 ? std::sqrt(squares / (reading.readings - 1)) : 0.0;
    return reading;
}

} // namespace

LevelReader::LevelReader(Instrument &instrument, const SignalGenerator *generator, QObject *parent)
    : QObject(parent)
    , m_instrument(instrument)
    , m_generator(generator)
    , m_retryMs(kFirstRetryMs)
{
    m_timer.setObjectName(QStringLiteral("timerLevel"));
    m_timer.setParent(this);
    m_timer.setInterval(kInterval);
    connect(&m_timer, &QTimer::timeout, this, &LevelReader::tick);
}

void LevelReader::start(std::int32_t hertz, int readings)
{
    stop();
    m_hertz = hertz;
    m_readings = readings;
    m_rest.invalidate();
    m_retryMs = kFirstRetryMs;
    m_timer.start();
}

void LevelReader::stop()
{
    m_timer.stop();
    m_pause = Pause::None;
    endReading();
}

// Increments m_run, so that readings still in the event queue are ignored.
void LevelReader::endReading()
{
    ++m_run;
    m_counts.clear();
    m_error.clear();
    if (!std::exchange(m_isReading, false) || !m_followed)
        return;
    try {
        m_followed->stopReading();
    } catch (const RuntimeError &) {
        // A server that does not answer has been terminated, which also ended the reading.
    }
}

LevelReader::Pause LevelReader::pauseNow() const
{
    const AcquisitionDriver *driver = m_instrument.driver();
    if (!driver || !driver->isConfigured())
        return Pause::NotConnected;
    if (m_instrument.isSweeping())
        return Pause::Sweep;
    if (!driver->measuresLevel())
        return Pause::NoLevel;
    const bool isNeeded = m_generator && m_generator->isOn();
    return isNeeded && !driver->readsWithoutSweep() ? Pause::Generator : Pause::None;
}

void LevelReader::tick()
{
    const Pause pause = pauseNow();
    if (pause != Pause::None)
        endReading();
    if (std::exchange(m_pause, pause) != pause)
        emit paused(pause);
    if (pause != Pause::None || !isRunning() || (m_rest.isValid() && !m_rest.hasExpired(m_restMs)))
        return;
    m_rest.invalidate();
    try {
        AcquisitionDriver &driver = *m_instrument.driver();
        follow(driver);
        if (driver.readsWithoutSweep())
            readAlone(driver);
        else
            readInSweeps(driver);
    } catch (const RuntimeError &error) {
        fail(error.message());
    }
}

void LevelReader::follow(AcquisitionDriver &driver)
{
    if (m_followed == &driver)
        return;
    m_followed = &driver;
    m_isReading = false;
    connect(&driver, &AcquisitionDriver::readingTaken, this, [this](const QVector<int> &counts) {
        if (!m_isReading)
            return;
        m_hasRead = true;
        try {
            add(counts);
        } catch (const RuntimeError &error) {
            fail(error.message());
        }
    });
    connect(&driver, &AcquisitionDriver::readingEnded, this, &LevelReader::readingEnded);
    connect(&driver, &AcquisitionDriver::aErrore, this,
            [this, &driver](std::int16_t code, const QString &text) { noteError(driver, code, text); });
}

void LevelReader::noteError(const AcquisitionDriver &driver, std::int16_t code, const QString &text)
{
    using Reaction = AcquisitionDriver::ErrorReaction;
    const Reaction reaction = driver.reactionTo(code);
    if (reaction != Reaction::Ignore && reaction != Reaction::CountSilently)
        m_error = text.section(u'\r', 0, 0);
}

void LevelReader::readingEnded(bool byItself)
{
    if (!std::exchange(m_isReading, false))
        return;
    m_counts.clear();
    m_rest.start();
    m_restMs = kPauseMs;
    if (byItself && !m_hasRead)
        fail(m_error.isEmpty() ? tr("The board returned no reading.") : m_error);
}

void LevelReader::fail(const QString &reason)
{
    const QString why = reason; // copy: endReading() clears m_error
    endReading();
    m_rest.start();
    m_restMs = std::exchange(m_retryMs, std::min(2 * m_retryMs, kLastRetryMs));
    emit failed(why);
}

void LevelReader::readAlone(AcquisitionDriver &driver)
{
    QElapsedTimer busy;
    busy.start();
    do {
        add({driver.readDetectorCount()});
    } while (!m_counts.isEmpty() && !busy.hasExpired(kBusyMs));
}

void LevelReader::readInSweeps(AcquisitionDriver &driver)
{
    if (m_isReading || !driver.startReading(m_hertz))
        return;
    m_isReading = true;
    m_hasRead = false;
    m_error.clear();
}

// Adds counts. If a sweep delivers more counts than requested, uses those nearest to the frequency.
void LevelReader::add(const QVector<int> &counts)
{
    for (const int count : counts)
        m_counts.append(m_instrument.conversion().risingCount(count));
    if (m_counts.size() < m_readings)
        return;
    const qsizetype surplus = m_readings > 0 ? m_counts.size() - m_readings : 0;
    const LevelReading reading = readingOf(std::exchange(m_counts, {}).mid(surplus / 2, surplus > 0 ? m_readings : -1));
    // Queued, so that a port error from the same reading is handled first.
    QMetaObject::invokeMethod(
        this,
        [this, reading, run = m_run] {
            if (run == m_run)
                tell(reading);
        },
        Qt::QueuedConnection);
}

void LevelReader::tell(const LevelReading &reading)
{
    if (!m_error.isEmpty()) {
        fail(m_error);
        return;
    }
    if (pauseNow() != Pause::None)
        return;
    m_retryMs = kFirstRetryMs;
    emit taken(reading);
}

} // namespace calvorn
