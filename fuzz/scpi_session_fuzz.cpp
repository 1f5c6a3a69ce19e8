// SPDX-License-Identifier: MIT
// Runs a whole SCPI session with arbitrary client bytes in pieces of any size. Every reply must be a complete line, and
// the session must still respond at the end. No hardware is connected, and no file is written.
#include "core/log.h"
#include "fuzz/require.h"
#include "platform/clock.h"
#include "remote/scpi_session.h"

#include <QCoreApplication>

#include <cstring>

namespace {

using namespace calvorn;

class StillClock : public Clock
{
public:
    std::uint32_t tickCount() override { return 0; }
    void sleep(int) override {}
    void pumpMessages(int) override {}
};

// Accepts all commands without side effects outside this process.
class StillTarget : public RemoteTarget
{
public:
    using RemoteTarget::RemoteTarget;

    void setRange(double start, double stop) override
    {
        instrument().planRange(static_cast<std::int32_t>(start), static_cast<std::int32_t>(stop));
    }
    void setSpeed(std::int16_t) override {}
    void start(SweepRun run) override { instrument().startSweep(run); }
    void stop() override { instrument().stopSweep(); }
    void setScale(std::int16_t) override {}
    void setTopOfLinearScale(double) override {}
    void setBottomOfDbScales(int) override {}
    void placeMarker(GraphItem, double) override {}
    const LimitLines &limits() const override { return m_limits; }
    bool areLimitsOn() const override { return false; }
    void setLimits(const LimitLines &limits) override { m_limits = limits; }
    void setLimitsOn(bool) override {}
    void setOutput(int, std::uint8_t) override {}
    void setPotentiometer(std::uint8_t) override {}
    void storeSweep(const QString &) override {}
    void loadSweep(const QString &) override {}
    void storePicture(const QString &) override {}
    QByteArray picture() const override { return "picture"; }

private:
    LimitLines m_limits;
};

struct Bench
{
    Configuration configuration;
    Log log{configuration};
    StillClock clock;
    Instrument instrument{configuration, log, clock, QString(), QString()};
    TraceSet traces;
    Markers markers;
    SignalGenerator generator{configuration, instrument};
    StillTarget target{configuration, instrument, traces, markers, generator};

    Bench()
    {
        configuration.ddsMinFreq = 1000;
        configuration.ddsMaxFreq = 70'000'000;
        instrument.planRange(1'000'000, 15'000'000);
        Trace trace{QStringLiteral("sweep"), 1e6, 35e3, std::vector<double>(kSweepPoints, 0.5), 1e-3};
        trace.volts[200] = 1.0;
        traces.takeSweep(trace);
    }
};

// Processes events until the session is idle; gives up if the session waits for an event that never occurs.
void deliver(const ScpiSession &session)
{
    for (int turn = 0; turn < 50 && session.isBusy(); ++turn)
        QCoreApplication::processEvents();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static int argc = 1;
    static char name[] = "scpi_session_fuzz";
    static char *argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    if (size == 0)
        return 0;
    Bench bench;
    ScpiSession session(bench.target);
    QByteArray answers;
    QObject::connect(&session, &ScpiSession::answered, &session,
                     [&answers](const QByteArray &bytes) { answers += bytes; });
    const std::size_t chunk = 1 + data[0];
    for (std::size_t at = 1; at < size; at += chunk) {
        if (session.isBusy())
            break;
        session.take({reinterpret_cast<const char *>(data) + at, static_cast<qsizetype>(std::min(chunk, size - at))});
        deliver(session);
    }
    fuzz::require(answers.isEmpty() || answers.endsWith('\n'));
    // A block header may announce more bytes than the input contains.
    if (session.isBusy() || std::memchr(data, '#', size) != nullptr)
        return 0;
    // Terminate an incomplete line first.
    session.take("\n");
    deliver(session);
    answers.clear();
    session.take("*CLS\nSYST:ERR?\n");
    deliver(session);
    fuzz::require(answers == "0,\"No error\"\n");
    return 0;
}
