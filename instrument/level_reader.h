// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

namespace calvorn {

class SignalGenerator;

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
//
// After a reading that failed it says why and tries again, later each time: a board that has just left a command
// without an answer is given more time than the server takes for one.
class LevelReader : public QObject
{
    Q_OBJECT

public:
    // Why nothing comes at the moment.
    enum class Pause {
        None,
        Sweep,
        NotConnected,
        NoLevel,   // the instrument measures something else
        Generator, // is on, and a reading would move it
    };

    // How often it reads, ms.
    static constexpr int kInterval = 100;

    // generator: that has to stand still while it is on; null: there is none.
    explicit LevelReader(Instrument &instrument, const SignalGenerator *generator = nullptr, QObject *parent = nullptr);

    // hertz: where an interface sweeps that has to; the generator of any other stays as it is.
    // readings: of the converter for each that is told; 0: as many as come at once, 400 where it sweeps.
    void start(std::int32_t hertz, int readings = 0);
    void stop();
    bool isRunning() const { return m_timer.isActive(); }

    // A reading moves the generator at this moment.
    bool isSweeping() const { return m_isReading && m_followed && m_followed->isReading(); }

signals:
    void taken(const calvorn::LevelReading &reading);
    // It waits, or goes on.
    void paused(calvorn::LevelReader::Pause why);
    // A reading failed; it tries again by itself, unless it is stopped.
    void failed(const QString &reason);

private:
    Pause pauseNow() const;
    void tick();
    void readAlone(AcquisitionDriver &driver);
    void readInSweeps(AcquisitionDriver &driver);
    void follow(AcquisitionDriver &driver);
    void readingEnded(bool byItself);
    void noteError(const AcquisitionDriver &driver, std::int16_t code, const QString &text);
    void fail(const QString &reason);
    void endReading();
    void add(const QVector<int> &counts);
    void tell(const LevelReading &reading);

    Instrument &m_instrument;
    const SignalGenerator *m_generator;
    QTimer m_timer;
    QElapsedTimer m_rest; // since the last reading in sweeps, or since one that failed
    int m_restMs = 0;
    int m_retryMs; // after the next failure
    QPointer<AcquisitionDriver> m_followed;
    QVector<int> m_counts; // of the reading that is not complete yet
    QString m_error;       // what the hardware said since the last reading
    std::int32_t m_hertz = 0;
    int m_readings = 0;
    int m_run = 0;            // counts starts, stops, pauses and failures
    bool m_isReading = false; // in sweeps
    bool m_hasRead = false;   // and a vector has come
    Pause m_pause = Pause::None;
};

} // namespace calvorn
