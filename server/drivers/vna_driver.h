// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/vna_instrument.h"
#include "server/drivers/serial_driver.h"
#include "server/drivers/vna_exchange.h"
#include "server/synthesiser/dds_clock.h"

#include <QTimer>

#include <optional>

namespace calvorn {

// Implements the calvorn.Vna interface (protocol/calvorn.Vna.xml) for the MiniVNA. The generated adaptor calls the
// operations on the main thread. They return immediately, except ClosePort, which waits up to 1.6 s to switch the
// generator off. One command produces one sweep of 400 samples; the driver repeats it until the sweep is stopped. A
// sweep is accepted only while the line is in step (VnaExchange).
//
// Errors: Transmission for a damaged or missing sweep (not shown; the sweep continues); Board after three such sweeps
// in a row, or if a generator command and its retry both failed; Port if the port cannot be opened or was lost;
// Frequency and Setting as for all boards; Ignorable, reported only once, if a frequency is outside the instrument's
// range.
class VnaDriver : public SerialDriver
{
    Q_OBJECT

public:
    explicit VnaDriver(LinkOpener opener, QObject *parent = nullptr);

public slots:
    // Waits up to 0.15 s for the current reply, discards it and emits aComplete. Does nothing if no sweep is running.
    void StopSweep(short reason);

    // mode: a VnaMode as a number. Parked switches the generator off (until the next frequency or sweep) without
    // changing the measured quantity. A running sweep continues in the new mode and delivers no more vectors measured
    // in the previous one.
    void SetMode(short mode);
    void SetMultiplier(short multiplier);
    void SetXtalFrequency(double hertz);
    void SetOffset(double hertz);

    // Starts a sweep; vectors follow until it is stopped. Does nothing while a sweep is running. Reopens a lost port.
    void RunSweep();

    // 0 switches the generator off. During a sweep, the frequency is stored and set when the sweep ends; without a
    // port, it is set when a port is opened.
    void SetFrequency(int hertz);

    // Sets the plan for the next sweep or a running one; after it returns, no vector with the previous plan is
    // emitted. samples: kSweepPoints; any other number is reported as ErrorCode::Setting.
    void PrepareSweep(int start, int step, int samples);

private:
    // The purpose of the command in progress.
    struct Sent
    {
        quint64 run = 0; // 0: a generator command
        quint64 tuning = 0;
        int startHz = 0;
        int stepHz = 0;
        VnaCommand::Path path = VnaCommand::Path::Reflection;
        bool descending = false;
    };

    static VnaCommand::Path pathOf(VnaMode mode);

    void linkOpened(const LineSettings &line) override;
    void linkGone() override;
    void beforeClosing() override;
    void runEnded() override;

    void next();
    void sendSweep();
    void sendGenerator();
    void noteRange(std::int64_t lowest, std::int64_t highest);
    bool isCurrent() const { return run() != Run::None && m_sent.run == m_runNumber; }
    void deliverSamples(const QList<VnaSample> &samples);
    void onAnswered(const QList<VnaSample> &samples);
    void onFailed();
    void generatorFailed();
    void sweepFailed();

    VnaExchange m_exchange;
    QTimer m_stopTimer;

    DdsClock m_clock;
    double m_offsetHz = 0.0;
    quint64 m_tuning = 0; // counts changes to clock and offset
    VnaMode m_mode = VnaMode::Angle;
    int m_startHz = 1'000'000;
    int m_stepHz = 22'500;
    std::optional<int> m_generatorHz; // not sent yet
    int m_sentHz = 0;                 // frequency of the generator command in progress
    bool m_repeated = false;          // the command has failed once and is being retried
    bool m_rangeNoted = false;

    quint64 m_runNumber = 0;
    int m_failures = 0; // consecutive failures
    Sent m_sent;
};

} // namespace calvorn
