// SPDX-License-Identifier: MIT
#include "instrument/level_reader.h"

#include "core/runtime_error.h"

#include <cmath>
#include <utility>

namespace calvorn {

namespace {

// Of a tick, so that the window has its turn in between; a reading of the parallel port takes some milliseconds.
constexpr int kBusyMs = 40;
// What else needed the hardware may have more to do.
constexpr int kPauseMs = 500;

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

LevelReader::LevelReader(Instrument &instrument, QObject *parent)
    : QObject(parent)
    , m_instrument(instrument)
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
    m_sinceEnd.invalidate();
    m_timer.start();
}

void LevelReader::stop()
{
    m_timer.stop();
    m_counts.clear();
    m_pause = Pause::None;
    if (!std::exchange(m_isReading, false) || !m_followed)
        return;
    try {
        m_followed->stopReading();
    } catch (const RuntimeError &) {
        // A server that does not answer has ended, and its reading with it.
    }
}

LevelReader::Pause LevelReader::pauseNow() const
{
    const AcquisitionDriver *driver = m_instrument.driver();
    if (!driver || !driver->isConfigured())
        return Pause::NotConnected;
    return m_instrument.isSweeping() ? Pause::Sweep : Pause::None;
}

void LevelReader::tick()
{
    const Pause pause = pauseNow();
    if (std::exchange(m_pause, pause) != pause)
        emit paused(pause);
    if (pause != Pause::None) {
        m_counts.clear();
        return;
    }
    try {
        follow(*m_instrument.driver());
        readAlone(*m_instrument.driver());
    } catch (const RuntimeError &error) {
        stop();
        emit failed(error.message());
    }
}

void LevelReader::follow(AcquisitionDriver &driver)
{
    if (m_followed == &driver)
        return;
    m_followed = &driver;
    connect(&driver, &AcquisitionDriver::readingTaken, this, [this](const QVector<int> &counts) {
        if (m_isReading)
            add(counts);
    });
    connect(&driver, &AcquisitionDriver::readingEnded, this, [this] {
        m_isReading = false;
        m_sinceEnd.start();
    });
}

void LevelReader::readAlone(AcquisitionDriver &driver)
{
    QElapsedTimer busy;
    busy.start();
    do {
        const std::optional<int> count = driver.readDetectorCount();
        if (!count) {
            readInSweeps(driver);
            return;
        }
        add({*count});
    } while (!m_counts.isEmpty() && !busy.hasExpired(kBusyMs));
}

void LevelReader::readInSweeps(AcquisitionDriver &driver)
{
    if (m_isReading || (m_sinceEnd.isValid() && !m_sinceEnd.hasExpired(kPauseMs)))
        return;
    m_isReading = true;
    driver.startReading(m_hertz);
}

void LevelReader::add(const QVector<int> &counts)
{
    if (!isRunning())
        return;
    for (const int count : counts)
        m_counts.append(m_instrument.conversion().risingCount(count));
    if (m_counts.size() < m_readings)
        return;
    const LevelReading reading = readingOf(std::exchange(m_counts, {}));
    emit taken(reading);
}

} // namespace calvorn
