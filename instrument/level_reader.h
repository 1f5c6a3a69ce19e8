// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

namespace calvorn {

// What the detector says without a sweep of the table.
struct LevelReading
{
    double count = 0.0;  // mean of the counts, as the table has them: rising with the detector's voltage
    double spread = 0.0; // their standard deviation
    int readings = 0;    // how many there were
};

// Reads the detector again and again: by itself where the interface can do that, else in sweeps over 400 Hz around the
// frequency. While a sweep of the table runs it waits, and goes on afterwards. Whatever else needs the hardware comes
// first.
class LevelReader : public QObject
{
    Q_OBJECT

public:
    // Why nothing comes at the moment.
    enum class Pause { None, Sweep, NotConnected };

    // How often it reads, ms.
    static constexpr int kInterval = 100;

    explicit LevelReader(Instrument &instrument, QObject *parent = nullptr);

    // hertz: where an interface sweeps that has to; the generator of any other stays as it is.
    // readings: of the converter, at least, for each that is told.
    void start(std::int32_t hertz, int readings = 1);
    void stop();
    bool isRunning() const { return m_timer.isActive(); }

signals:
    void taken(const calvorn::LevelReading &reading);
    // It waits, or goes on.
    void paused(calvorn::LevelReader::Pause why);
    // The hardware does not answer; it has stopped.
    void failed(const QString &reason);

private:
    Pause pauseNow() const;
    void tick();
    void readAlone(AcquisitionDriver &driver);
    void readInSweeps(AcquisitionDriver &driver);
    void follow(AcquisitionDriver &driver);
    void add(const QVector<int> &counts);

    Instrument &m_instrument;
    QTimer m_timer;
    QElapsedTimer m_sinceEnd; // of the reading in sweeps
    QPointer<AcquisitionDriver> m_followed;
    QVector<int> m_counts; // of the reading that is not complete yet
    std::int32_t m_hertz = 0;
    int m_readings = 1;
    bool m_isReading = false; // in sweeps
    Pause m_pause = Pause::None;
};

} // namespace calvorn
