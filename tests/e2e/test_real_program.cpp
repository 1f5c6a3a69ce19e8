// SPDX-License-Identifier: MIT
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"
#include "tests/support/quiet_time.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <cmath>
#include <csignal>
#include <sys/stat.h>

using namespace calvorn::test;

namespace {

// Even when antialiased, a curve across the plot has more full-colour pixels than this.
constexpr int kCurve = 100;

} // namespace

class TestRealProgram : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;

private slots:
    void sweepsShowsAndComesUpAsItWasLeft();
    void theSecondInstanceIsRefused();
    void aCopyInAnotherFolderRunsBeside();
    void aKilledServerIsReplaced();
    void noServerSurvivesItsProgram();
    void aReadOnlyFolderDoesNotStopIt();
    void oneSweepWithoutAWindow();
    void aStopIsNoTimeOut();
    void aSignalSavesTheSettings_data();
    void aSignalSavesTheSettings();
    void aSettingsFileThatIsNoneIsTold_data();
    void aSettingsFileThatIsNoneIsTold();
};

void TestRealProgram::sweepsShowsAndComesUpAsItWasLeft()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    QCOMPARE(program.serversRunning(), 1);
    const int before = highestCurveRow(program.screenshot());
    program.keys({QStringLiteral("F5")});
    // The band-pass filter's curve rises far above the flat line of an empty table.
    QTRY_VERIFY_WITH_TIMEOUT(highestCurveRow(program.screenshot()) < before - 100, 5000);
    QVERIFY(curvePixels(program.screenshot()) > kCurve);
    program.keys({QStringLiteral("F5")});
    QVERIFY(program.becomesStill());

    // Selects the second entry of the Scale menu, then quits by keyboard.
    QVERIFY(program.keysChange({QStringLiteral("alt+c"), QStringLiteral("Down"), QStringLiteral("Return")}));
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.setting("Calvorn", "Scale"), QStringLiteral("1"));
    QCOMPARE(program.setting("Calvorn", "Marker 3"), QStringLiteral("-6.0"));
    QCOMPARE(program.serversRunning(), 0);

    QVERIFY(program.start());
    program.keys({QStringLiteral("F5")});
    QVERIFY(program.changes());
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.setting("Calvorn", "Scale"), QStringLiteral("1"));
    QCOMPARE(program.setting("Calvorn", "Marker 3"), QStringLiteral("-6.0"));
    QCOMPARE(program.serversRunning(), 0);
}

void TestRealProgram::theSecondInstanceIsRefused()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    const QDateTime written = QFileInfo(program.folder() + QStringLiteral("/Calvorn.ini")).lastModified();
    QProcess second;
    second.start(program.folder() + QStringLiteral("/Calvorn"), QStringList());
    QVERIFY(second.waitForStarted());
    const QString box = program.waitForBox();
    QVERIFY(!box.isEmpty());
    QCOMPARE(program.lineOfBox(box), QStringLiteral("The program is already running"));
    QCOMPARE(program.serversRunning(), 1);
    program.keys({QStringLiteral("Return")});
    QVERIFY(second.waitForFinished(5000));
    QCOMPARE(QFileInfo(program.folder() + QStringLiteral("/Calvorn.ini")).lastModified(), written);
    // The first instance continues.
    RealProgram::activate(program.mainWindow());
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
}

void TestRealProgram::aCopyInAnotherFolderRunsBeside()
{
    RealProgram first(ProgramFolder::preparedSettings());
    RealProgram second(ProgramFolder::preparedSettings());
    QVERIFY(first.start());
    QVERIFY(second.start());
    QCOMPARE(first.serversRunning(), 1);
    // The second window appears before its server.
    QTRY_COMPARE_WITH_TIMEOUT(second.serversRunning(), 1, 3000);
}

void TestRealProgram::aKilledServerIsReplaced()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    program.keys({QStringLiteral("F5")});
    QVERIFY(program.changes());
    const qint64 first = program.serverPid();
    QVERIFY(first > 0);
    kill(static_cast<pid_t>(first), SIGKILL);
    QVERIFY(!program.waitForBox().isEmpty());
    program.keys({QStringLiteral("Return")});
    QVERIFY(program.waitUntilGone(QStringLiteral("^Brenik - Calvorn  v2.0$")));
    QVERIFY(RealProgram::activate(program.mainWindow()));
    QCOMPARE(program.serversRunning(), 0);
    program.keys({QStringLiteral("F5")});
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 1, 3000);
    QTRY_VERIFY_WITH_TIMEOUT(curvePixels(program.screenshot()) > kCurve, 5000);
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QTRY_COMPARE(program.serversRunning(), 0);
}

void TestRealProgram::noServerSurvivesItsProgram()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    program.keys({QStringLiteral("F5")});
    QVERIFY(program.changes());
    program.killHard();
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 0, 3000);

    // Even a hanging server does not survive.
    QVERIFY(program.start());
    kill(static_cast<pid_t>(program.serverPid()), SIGSTOP);
    program.killHard();
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 0, 3000);
}

void TestRealProgram::aReadOnlyFolderDoesNotStopIt()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QFile::setPermissions(program.folder(), QFile::ReadOwner | QFile::ExeOwner);
    QVERIFY(program.start());
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QFile::setPermissions(program.folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile file(program.folder() + QStringLiteral("/Calvorn.ini"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("[Config]\r\nInterface=2\r\n"));
}

void TestRealProgram::oneSweepWithoutAWindow()
{
    RealProgram program(ProgramFolder::preparedSettings());
    program.bring("calvorn-sweep");
    const QString csv = program.folder() + QStringLiteral("/sweep.csv");
    const QString png = program.folder() + QStringLiteral("/sweep.png");
    QProcess process;
    process.start(program.folder() + QStringLiteral("/calvorn-sweep"),
                  {QStringLiteral("--output"), csv, QStringLiteral("--picture"), png});
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitCode(), 0);
    QFile file(csv);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 402);
    double peak = 0;
    double peakFrequency = 0;
    for (int row = 1; row <= 400; ++row) {
        const QList<QByteArray> fields = lines[row].trimmed().split(',');
        QCOMPARE(fields.size(), 4);
        QCOMPARE(fields[0].toInt(), row);
        if (fields[3].toDouble() > peak) {
            peak = fields[3].toDouble();
            peakFrequency = fields[1].toDouble();
        }
    }
    QVERIFY2(std::abs(peakFrequency - 7.1e6) < 400e3, qPrintable(QString::number(peakFrequency)));
    const QImage picture(png);
    QVERIFY(picture.width() >= 600);
    QVERIFY(curvePixels(picture) > kCurve);
    QTRY_COMPARE(program.serversRunning(), 0);
}

// Simulates Ctrl+Z and fg, with a pause longer than the timeouts for calls and for a silent server.
void TestRealProgram::aStopIsNoTimeOut()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    const int before = highestCurveRow(program.screenshot());
    program.keys({QStringLiteral("F5")});
    QTRY_VERIFY_WITH_TIMEOUT(highestCurveRow(program.screenshot()) < before - 100, 5000);
    const auto process = static_cast<pid_t>(program.pid());
    const auto isStopped = [process] {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        return status.open(QIODevice::ReadOnly) && status.readAll().contains(") T ");
    };
    QCOMPARE(kill(-process, SIGTSTP), 0);
    QTRY_VERIFY(isStopped());
    nothingHappensFor(8'000);
    QVERIFY(isStopped());
    QCOMPARE(kill(-process, SIGCONT), 0);
    QVERIFY(program.waitForWindow(QStringLiteral("^Brenik - Calvorn  v2.0$"), 4000).isEmpty());
    QCOMPARE(program.serversRunning(), 1);
    program.keys({QStringLiteral("F5"), QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 0);
}

void TestRealProgram::aSignalSavesTheSettings_data()
{
    // Keys and the title of the dialog that they open.
    using Step = QPair<QStringList, QString>;
    const Step file{{QStringLiteral("ctrl+s")}, QStringLiteral("^Save As$")};
    const Step configuration{{QStringLiteral("alt+s"), QStringLiteral("c")}, QStringLiteral("^Configuration$")};
    const Step question{{QStringLiteral("alt+a")}, QStringLiteral("^Brenik - Calvorn  v2.0$")};
    QTest::addColumn<QList<Step>>("steps");
    QTest::newRow("the window") << QList<Step>();
    QTest::newRow("a file is being chosen") << QList<Step>{file};
    QTest::newRow("the configuration") << QList<Step>{configuration};
    QTest::newRow("the question of the configuration") << QList<Step>{configuration, question};
}

// A signal closes any open dialog as if it were cancelled.
void TestRealProgram::aSignalSavesTheSettings()
{
    using Steps = QList<QPair<QStringList, QString>>;
    QFETCH(Steps, steps);
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    QVERIFY(program.keysChange({QStringLiteral("alt+c"), QStringLiteral("Down"), QStringLiteral("Return")}));
    for (const auto &[keys, title] : steps) {
        program.keys(keys);
        const QString dialog = program.waitForWindow(title);
        QVERIFY2(!dialog.isEmpty() && RealProgram::activate(dialog), qPrintable(program.windowsShown()));
    }
    QCOMPARE(kill(static_cast<pid_t>(program.pid()), SIGTERM), 0);
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(program.setting("Calvorn", "Scale"), QStringLiteral("1"));
    QCOMPARE(program.setting("Calvorn", "Marker 3"), QStringLiteral("-6.0"));
    QCOMPARE(program.serversRunning(), 0);
}

void TestRealProgram::aSettingsFileThatIsNoneIsTold_data()
{
    QTest::addColumn<bool>("isPipe");
    QTest::addColumn<QString>("reason");
    QTest::newRow("a pipe") << true << QStringLiteral("it is not a file");
    QTest::newRow("3 GB") << false << QStringLiteral("it is larger than 16 MB");
}

// The program opens the configuration dialog, as it does without a settings file. A signal then terminates the program.
void TestRealProgram::aSettingsFileThatIsNoneIsTold()
{
    QFETCH(bool, isPipe);
    QFETCH(QString, reason);
    RealProgram program(ProgramFolder::preparedSettings());
    const QString path = program.folder() + QStringLiteral("/Calvorn.ini");
    if (isPipe)
        QVERIFY(QFile::remove(path) && mkfifo(QFile::encodeName(path).constData(), 0600) == 0);
    else
        QVERIFY(QFile::resize(path, qint64(3) << 30));
    QVERIFY(program.start({}, QStringLiteral("^Brenik - Calvorn  v2.0$")));
    const QString box = program.waitForBox();
    QCOMPARE(program.lineOfBox(box), QStringLiteral("The settings file %1 is not used: %2.").arg(path, reason));
    program.keys({QStringLiteral("Return")});
    QVERIFY(!program.waitForWindow(QStringLiteral("^Configuration$")).isEmpty());
    QCOMPARE(kill(static_cast<pid_t>(program.pid()), SIGTERM), 0);
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(program.serversRunning(), 0);
    QCOMPARE(QFileInfo(path).isFile(), !isPipe);
}

QTEST_MAIN(TestRealProgram)
#include "test_real_program.moc"
