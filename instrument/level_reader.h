// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/instrument.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <QVector>

namespace calvorn {

class SignalGenerator;

// A detector reading that is independent of the sweep table.
struct LevelReading
{
    double count = 0.0;  // mean count; as in the table, counts rise with the detector voltage
    double spread = 0.0; // standard deviation of the counts
    int readings = 0;    // number of counts
};

// Reads the detector repeatedly: directly if the interface supports this, otherwise in sweeps over 400 Hz around the
// frequency. Pauses during a table sweep. All other hardware operations take precedence.
//
// After a failed reading, reports the reason and retries after increasingly long pauses, so that a board that has just
// left a command unanswered gets more time than the server's own time limit.
class LevelReader : public QObject
{
    Q_OBJECT

public:
    // The reason for a pause.
    enum class Pause {
        None,
        Sweep,
        NotConnected,
        NoLevel,   // the instrument measures another quantity
        Generator, // the generator is on, and a reading would retune it
    };

    // Reading interval, ms.
    static constexpr int kInterval = 100;

    // generator: readings must not retune this generator while it is on; may be null.
    explicit LevelReader(Instrument &instrument, const SignalGenerator *generator = nullptr, QObject *parent = nullptr);

    // hertz: the frequency for interfaces that read in sweeps; other interfaces leave the generator unchanged.
    // readings: number of counts per result; 0 means all counts that arrive together (400 in a sweep).
    void start(std::int32_t hertz, int readings = 0);
    void stop();
    bool isRunning() const { return m_timer.isActive(); }

    // True while a reading retunes the generator.
    bool isSweeping() const { return m_isReading && m_followed && m_followed->isReading(); }

signals:
    void taken(const calvorn::LevelReading &reading);
    // The reader pauses for this reason, or resumes (None).
    void paused(calvorn::LevelReader::Pause why);
    // A reading failed; the reader retries until it is stopped.
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
    QElapsedTimer m_rest; // since the last sweep reading ended or a reading failed
    int m_restMs = 0;
    int m_retryMs; // pause after the next failure
    QPointer<AcquisitionDriver> m_followed;
    QVector<int> m_counts; // counts of the incomplete reading
    QString m_error;       // the hardware's last error since the previous reading
    std::int32_t m_hertz = 0;
    int m_readings = 0;
    int m_run = 0;            // number of starts, stops, pauses and failures
    bool m_isReading = false; // a sweep reading is in progress
    bool m_hasRead = false;   // a vector of this reading has arrived
    Pause m_pause = Pause::None;
};

} // namespace calvorn
