// SPDX-License-Identifier: MIT
// Tests that memory use stays constant while the window is stopped and its board sweeps at full speed.
#include "tests/e2e/real_program.h"
#include "tests/support/interface_settings.h"
#include "tests/support/program_folder.h"
#include "tests/support/quiet_time.h"
#include "tests/support/resident_memory.h"

#include <QTest>

#include <csignal>

using namespace calvorn::test;

namespace {

// The allowed growth in kB. Sanitizers delay freeing memory.
#ifdef CALVORN_SANITIZED
constexpr qint64 kFlat = 12'000;
#else
constexpr qint64 kFlat = 2'000;
#endif

} // namespace

class TestStoppedWindow : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;

private slots:
    void memoryStaysFlatAndTheCurveGoesOn_data()
    {
        QTest::addColumn<int>("interfaceType");
        QTest::newRow("PIC") << 1;
        QTest::newRow("parallel port") << 2;
        QTest::newRow("MiniVNA") << 3;
    }

    void memoryStaysFlatAndTheCurveGoesOn()
    {
        QFETCH(int, interfaceType);
        RealProgram program(crystalSettings(static_cast<std::int16_t>(interfaceType)));
        QVERIFY(program.start());
        program.keys({QStringLiteral("F5")});
        // Waits until the font and picture caches are filled.
        QVERIFY(program.changes(20));
        const qint64 server = program.serverPid();
        const qint64 windowBefore = memoryKilobytes(program.pid());
        const qint64 serverBefore = memoryKilobytes(server);
        QVERIFY(windowBefore > 0 && serverBefore > 0);
        kill(static_cast<pid_t>(program.pid()), SIGSTOP);
        nothingHappensFor(8'000); // memory use must not grow
        const qint64 serverAfter = memoryKilobytes(server);
        const qint64 windowAfter = memoryKilobytes(program.pid());
        kill(static_cast<pid_t>(program.pid()), SIGCONT);
        QVERIFY2(serverAfter - serverBefore < kFlat, qPrintable(QString::number(serverAfter - serverBefore)));
        QVERIFY2(windowAfter - windowBefore < kFlat, qPrintable(QString::number(windowAfter - windowBefore)));
        QVERIFY(program.changes(10));
        QVERIFY(memoryKilobytes(program.pid()) - windowBefore < 2 * kFlat);
        // Noise changes the curve, though not necessarily with every sweep.
        const QImage shown = program.screenshot();
        QVERIFY(QTest::qWaitFor([&] { return program.screenshot() != shown; }));
        // The window reacts to keys: it stops the sweep and quits.
        program.keys({QStringLiteral("F5")});
        QVERIFY(program.becomesStill());
        program.keys({QStringLiteral("ctrl+q")});
        QVERIFY(program.waitForEnd());
        QTRY_COMPARE(program.serversRunning(), 0);
    }
};

QTEST_MAIN(TestStoppedWindow)
#include "test_stopped_window.moc"
