// SPDX-License-Identifier: MIT
// Runs the whole program with the simulated serial boards at the speed of the real line. Measures sweeps per second and
// the share of a core that the window thread uses. The limit is the sweep rate at which the bytes required by the
// protocol fill a line of 115,200 baud.
// Usage: sweep_rates <folder with CalvornAsync> <initial settings file>. Prints one line for each interface:
// name,sweeps per second,limit,ratio,share of a core.
#include "app/frm_sweep.h"
#include "platform/profile_file.h"
#include "platform/qt_desktop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>
#include <ctime>

using namespace calvorn;

namespace {

constexpr double kBytesPerSecond = 11'520.0; // 115,200 baud, ten bits per byte
constexpr int kPatienceMs = 60'000;

struct Line
{
    const char *name;
    std::int16_t interfaceType;
    double sweepBytes; // in both directions, never simultaneously
    int sweeps;
    bool log; // the test panel shows each sample
};

constexpr Line kLines[] = {{"PIC", kInterfacePic, 505.0, 100, false},
                           {"PIC with the log on:", kInterfacePic, 505.0, 100, true},
                           {"MiniVNA", kInterfaceVna, 1'600.0 + 22.0, 40, false}};

double threadSeconds()
{
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec);
}

bool prepare(const QTemporaryDir &folder, const QString &programs, const QString &settings, const Line &line)
{
    const QString path = folder.filePath(QStringLiteral("Calvorn.ini"));
    if (!QFile::copy(programs + QStringLiteral("/CalvornAsync"), folder.filePath(QStringLiteral("CalvornAsync"))) ||
        !QFile::copy(settings, path) || !QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner))
        return false;
    const QString config = QStringLiteral("Config");
    const QString own = QStringLiteral("Interface%1").arg(line.interfaceType);
    writeProfileString(path, QStringLiteral("Debug"), QStringLiteral("Log"), QString::number(line.log ? 1 : 0));
    writeProfileString(path, config, QStringLiteral("Interface"), QString::number(line.interfaceType));
    for (const char *name : {"DDS Device", "DDS Multiplier", "DDS Xtal freq", "DDS Max freq"}) {
        const QString key = QString::fromLatin1(name);
        writeProfileString(path, config, key, readProfileString(path, own, key));
    }
    // Start, stop and step have the number of digits that sweepBytes assumes.
    writeProfileString(path, QStringLiteral("Calvorn"), QStringLiteral("Start"), QStringLiteral("100000"));
    writeProfileString(path, QStringLiteral("Calvorn"), QStringLiteral("Stop"), QStringLiteral("39000000"));
    return true;
}

// Returns false if the sweeps do not arrive in time.
bool measure(const Line &line, const QString &programs, const QString &settings)
{
    const QTemporaryDir folder;
    if (!prepare(folder, programs, settings, line))
        return false;
    Configuration configuration;
    QtDesktop desktop;
    SweepStation station({folder.path(), folder.path(), folder.path()}, configuration, desktop, desktop);
    FrmSweep window(station);
    if (!window.start())
        return false;

    int sweeps = -1; // the first sweep starts the clock
    QElapsedTimer clock;
    double used = 0.0;
    QEventLoop loop;
    const auto *view = window.findChild<QAbstractItemView *>(QStringLiteral("MSFlexGridV"));
    QObject::connect(view->model(), &QAbstractItemModel::dataChanged, &loop, [&] {
        if (++sweeps == 0) {
            clock.start();
            used = threadSeconds();
        } else if (sweeps == line.sweeps) {
            loop.quit();
        }
    });
    QTimer::singleShot(kPatienceMs, &loop, &QEventLoop::quit);
    window.findChild<QAbstractButton *>(QStringLiteral("cmdStart"))->click();
    loop.exec();
    if (sweeps != line.sweeps)
        return false;
    const double seconds = 1e-9 * static_cast<double>(clock.nsecsElapsed());
    const double rate = line.sweeps / seconds;
    const double limit = kBytesPerSecond / line.sweepBytes;
    std::printf("%s,%.3f,%.3f,%.4f,%.4f\n", line.name, rate, limit, rate / limit, (threadSeconds() - used) / seconds);
    window.close();
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: sweep_rates <folder with CalvornAsync> <settings file>\n");
        return 2;
    }
    for (const Line &line : kLines) {
        if (!measure(line, arguments[1], arguments[2])) {
            std::fprintf(stderr, "%s does not sweep\n", line.name);
            return 1;
        }
    }
    return 0;
}
