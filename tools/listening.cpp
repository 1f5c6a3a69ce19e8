// SPDX-License-Identifier: MIT
#include "tools/listening.h"

#include "core/runtime_error.h"
#include "platform/process_guard.h"
#include "remote/scpi_server.h"
#include "tools/console.h"
#include "tools/console_target.h"
#include "tools/interruption.h"
#include "tools/single_sweep.h"
#include "tools/sweep_tool.h"

#include <QTimer>

namespace calvorn {

namespace {

constexpr int kPollMs = 50;
constexpr int kUsualAverage = 10; // sweeps

} // namespace

int listenForClients(SingleSweep &sweep, quint16 port)
{
    sweep.traces().setAverageOver(kUsualAverage);
    Markers markers;
    SignalGenerator generator(sweep.configuration(), sweep.instrument());
    ConsoleTarget target({sweep.record(), sweep.instrument(), sweep.traces(), sweep.log(), sweep.window()}, markers,
                         generator);
    ScpiServer server(target);
    QObject::connect(&server, &ScpiServer::logged, &target, [](const QString &text) { note(text); });
    const QString wrong = server.open(port);
    if (!wrong.isEmpty()) {
        note(QStringLiteral("calvorn-sweep: ") + wrong);
        return kNoPort;
    }
    const QString unconnected = target.connectHardware();
    if (!unconnected.isEmpty())
        note(unconnected);
    note(SweepTool::tr("Waiting for SCPI clients on port %1").arg(server.port()));
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &target, [] {
        letStop();
        if (interruption() != 0)
            QCoreApplication::quit();
    });
    poll.start(kPollMs);
    QCoreApplication::exec();
    server.close();
    try {
        sweep.instrument().shutDown();
    } catch (const RuntimeError &error) {
        note(error.message());
    }
    sweep.instrument().server().stop();
    return kDone;
}

} // namespace calvorn
