// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/vna_instrument.h"
#include "server/drivers/serial_driver.h"
#include "server/drivers/vna_exchange.h"
#include "server/synthesiser/dds_clock.h"

#include <QTimer>

#include <optional>

namespace calvorn {

// The MiniVNA as the interface calvorn.Vna offers it (protocol/calvorn.Vna.xml). The operations arrive on the main
// thread, through the generated adaptor, and return at once; only ClosePort, which switches the generator off, waits,
// for at most 1.6 s. One command is one sweep of 400 samples; the driver repeats it until the sweep is stopped. A sweep
// is believed only while the line is in step (VnaExchange).
//
// Errors: Transmission for a sweep that was damaged or did not come (it is not shown, and the sweep goes on), Board
// when that happened three times in a row or the generator's command got no answer, not even when repeated, Port when
// the port cannot be opened or was lost, Frequency and Setting as everywhere, Ignorable once when a frequency is beyond
// the instrument's range.
class VnaDriver : public SerialDriver
{
    Q_OBJECT

public:
    explicit VnaDriver(LinkOpener opener, QObject *parent = nullptr);

public slots:
    // The running reply is awaited, at most 0.15 s, and thrown away; then aComplete. Nothing when no sweep runs.
    void StopSweep(short reason);

    // The number of a VnaMode. Parked switches the generator off (until the next frequency or sweep) and keeps the kind
    // of measurement. A sweep that runs goes on with the new kind, and delivers no vector of the former one.
    void SetMode(short mode);
    void SetMultiplier(short multiplier);
    void SetXtalFrequency(double hertz);
    void SetOffset(double hertz);

    // Vectors follow until the sweep is stopped. Harmless while a sweep runs. A port that was lost is opened again.
    void RunSweep();

    // 0 switches the generator off. While a sweep runs the frequency is remembered and set at its end, and without
    // a port when there is one.
    void SetFrequency(int hertz);

    // For the next sweep, or the running one: no vector of the former plan is emitted after this has returned.
    // samples: kSweepPoints, everything else is ErrorCode::Setting.
    void PrepareSweep(int start, int step, int samples);

private:
    // What a command in progress was sent for.
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
    quint64 m_tuning = 0; // counts the changes of clock and offset
    VnaMode m_mode = VnaMode::Angle;
    int m_startHz = 1'000'000;
    int m_stepHz = 22'500;
    std::optional<int> m_generatorHz; // still to be sent
    int m_sentHz = 0;                 // the generator's frequency under way
    bool m_repeated = false;          // it was not answered, and is sent for the second time
    bool m_rangeNoted = false;

    quint64 m_runNumber = 0;
    int m_failures = 0; // in a row
    Sent m_sent;
};

} // namespace calvorn
