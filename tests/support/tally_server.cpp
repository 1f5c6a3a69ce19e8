// SPDX-License-Identifier: MIT
// The acquisition server with the real parallel-port driver and its simulated board. Logs all events sent to the
// program, so that tests can check their arrival; see tally.h.
#include "tests/support/tally_server.h"

#include "server/boards/simulated_parallel_port.h"
#include "tests/support/serve.h"
#include "tests/support/tally.h"

#include <algorithm>
#include <memory>

using namespace calvorn;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QFile file(qEnvironmentVariable("CALVORN_TALLY"));
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered))
        qFatal("CALVORN_TALLY names no file that can be written");
    const auto tell = [&](const QByteArray &line) { file.write(line + '\n'); };

    LptDriver driver([](int) {
        SimulatorSettings settings =
            readSimulatorSettings(QCoreApplication::applicationDirPath() + QStringLiteral("/Calvorn.ini"));
        settings.haste = std::max(1, qEnvironmentVariableIntValue("CALVORN_TALLY_HASTE"));
        return OpenedPort(std::make_unique<SimulatedParallelPort>(settings));
    });
    QObject::connect(&driver, &LptDriver::aVettore, &application,
                     [&](const QList<int> &vector) { tell("vector " + QByteArray::number(test::vectorSum(vector))); });
    QObject::connect(&driver, &LptDriver::aComplete, &application, [&] { tell("complete"); });
    QObject::connect(&driver, &LptDriver::aErrore, &application,
                     [&](short code, const QString &) { tell("error " + QByteArray::number(code)); });
    // Created after these connections, so that each event is logged before the adaptor sends it.
    new test::TallyAdaptor(&driver, [&](int start, int step) {
        tell("plan " + QByteArray::number(start) + ' ' + QByteArray::number(step));
    });
    return test::serve(application, [&](QDBusConnection &client) {
        client.registerObject(QStringLiteral("/aLPT"), &driver, QDBusConnection::ExportAdaptors);
    });
}
