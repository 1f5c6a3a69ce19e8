// SPDX-License-Identifier: MIT
#pragma once

#include "server/drivers/error_codes.h"
#include "server/drivers/vector_gate.h"
#include "server/drivers/vna_exchange.h"
#include "server/synthesiser/dds_clock.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace calvorn {

class ByteLink;

// The MiniVNA as the interface calvorn.Vna offers it (protocol/calvorn.Vna.xml). The operations arrive on the main
// thread, through the generated adaptor, and return at once; only ClosePort waits, for at most 0.3 s. One command is
// one sweep of 400 samples; the driver repeats it until the sweep is stopped.
//
// Errors: Transmission for a sweep that was damaged or did not come (it is not shown, and the sweep goes on), Board
// when that happened three times in a row or the generator's command got no answer, Port when the port cannot be
// opened or was lost, Frequency and Setting as everywhere, Ignorable once when a frequency is beyond the instrument's
// range.
class VnaDriver : public QObject
{
    Q_OBJECT

public:
    // Opens COM<port> with these line settings, or throws std::runtime_error with one sentence for the user.
    using LinkOpener = std::function<std::shared_ptr<ByteLink>(int port, const QString &settings)>;

    explicit VnaDriver(LinkOpener opener, QObject *parent = nullptr);
    ~VnaDriver() override;

    // Vectors that the program was too slow for.
    std::uint64_t droppedVectors() const { return m_gate.dropped(); }

public slots:
    // The running reply is awaited, at most 0.15 s, and thrown away; then aComplete. Nothing when no sweep runs.
    void StopSweep(short reason);

    // 0 switches the generator off (until the next frequency or sweep) and keeps the kind of measurement. A sweep
    // that runs goes on with the new kind, and delivers no vector of the former one.
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
    // samples: 400, everything else is ErrorCode::Setting.
    void PrepareSweep(int start, int step, int samples);

    // Closes the former port first. False when the port cannot be opened; the reason comes as ErrorCode::Port.
    bool OpenPort(short port, const QString &settings);

    // Ends a sweep, with its aComplete, and switches the generator off before the port goes.
    void ClosePort();
    void VectorTaken();

signals:
    void aComplete();
    void aErrore(short tipoErrore, const QString &descrizione);
    void aVettore(const QList<int> &vettore);

private:
    enum class Mode { Angle = 1, ReturnLoss = 2, Device = 3 };
    enum class Run { None, Sweeping, Stopping };

    // What a command in progress was sent for.
    struct Sent
    {
        quint64 run = 0; // 0: not a sweep
        quint64 plan = 0;
        VnaCommand::Path path = VnaCommand::Path::Reflection;
        bool descending = false;
    };

    struct Port
    {
        int number = 0;
        QString settings;
    };

    static VnaCommand::Path pathOf(Mode mode);

    void report(ErrorCode code, const QString &sentence);
    bool isOpen() const;
    bool openLink();
    void next();
    void sendSweep();
    void sendGenerator();
    void noteRange(std::int64_t lowest, std::int64_t highest);
    void finishRun();
    bool isCurrent() const { return m_run != Run::None && m_sent.run == m_runNumber; }
    void deliver(const QList<VnaSample> &samples);
    void onAnswered(const QList<VnaSample> &samples);
    void onFailed();
    void onLost(const QString &reason);

    LinkOpener m_opener;
    std::optional<Port> m_port; // what the program wants to be open
    std::shared_ptr<ByteLink> m_link;
    VnaExchange m_exchange;
    VectorGate m_gate;
    QTimer m_stopTimer;

    DdsClock m_clock;
    double m_offsetHz = 0.0;
    Mode m_mode = Mode::Angle;
    std::int64_t m_startHz = 1'000'000;
    std::int64_t m_stepHz = 22'500;
    quint64 m_plan = 0;
    std::optional<int> m_generatorHz; // still to be sent
    bool m_rangeNoted = false;

    Run m_run = Run::None;
    quint64 m_runNumber = 0;
    int m_failures = 0; // in a row
    Sent m_sent;
};

} // namespace calvorn
