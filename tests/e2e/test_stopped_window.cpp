// SPDX-License-Identifier: MIT
// A window that does not run while its board sweeps at full speed must make nothing grow.
#include "tests/e2e/real_program.h"
#include "tests/support/interface_settings.h"

#include <QTest>

#include <csignal>

using namespace calvorn::test;

namespace {

// Resident memory of a process in kB (proc(5), status).
qint64 residentKilobytes(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/status").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    return -1;
}

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
        QTest::qWait(2000);
        const qint64 server = program.serverPid();
        const qint64 windowBefore = residentKilobytes(program.pid());
        const qint64 serverBefore = residentKilobytes(server);
        QVERIFY(windowBefore > 0 && serverBefore > 0);
        kill(static_cast<pid_t>(program.pid()), SIGSTOP);
        QTest::qWait(8000);
        const qint64 serverAfter = residentKilobytes(server);
        const qint64 windowAfter = residentKilobytes(program.pid());
        kill(static_cast<pid_t>(program.pid()), SIGCONT);
        QVERIFY2(serverAfter - serverBefore < 2000, qPrintable(QString::number(serverAfter - serverBefore)));
        QVERIFY2(windowAfter - windowBefore < 2000, qPrintable(QString::number(windowAfter - windowBefore)));
        QTest::qWait(1000);
        QVERIFY(residentKilobytes(program.pid()) - windowBefore < 4000);
        // The noise makes no two curves alike.
        const QImage shown = program.screenshot();
        QTRY_VERIFY(program.screenshot() != shown);
        // It listens, stops the sweep and ends.
        program.keys({QStringLiteral("F5")});
        QTest::qWait(300);
        program.keys({QStringLiteral("ctrl+q")});
        QVERIFY(program.waitForEnd());
        QTRY_COMPARE(program.serversRunning(), 0);
    }
};

QTEST_MAIN(TestStoppedWindow)
#include "test_stopped_window.moc"
