// SPDX-License-Identifier: MIT
// Tests the inputs and outputs of calvorn-sweep: it uses or rejects settings, and either delivers its results or
// reports the failure in its exit code.
#include "core/configuration.h"
#include "tests/support/interface_settings.h"
#include "tests/support/quiet_time.h"
#include "tests/support/sweep_tool.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

using namespace calvorn;
using calvorn::test::contents;
using calvorn::test::ProgramFolder;
using calvorn::test::Tool;

namespace {

constexpr int kRows = 400;

QByteArray settings()
{
    return test::crystalSettings(kInterfaceLpt);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) < content.size())
        qFatal("cannot write %s", qPrintable(path));
}

// Runs a command in the shell, where $tool is the program; returns the exit code.
int inShell(Tool &tool, const QString &command)
{
    tool.process.setWorkingDirectory(tool.folder.path());
    tool.process.start(QStringLiteral("/bin/bash"),
                       {QStringLiteral("-c"), QStringLiteral("tool=./calvorn-sweep; ") + command});
    if (!tool.process.waitForFinished(60'000))
        qFatal("calvorn-sweep does not end");
    tool.out = QString::fromUtf8(tool.process.readAllStandardOutput());
    tool.errors = QString::fromUtf8(tool.process.readAllStandardError()).split(u'\n', Qt::SkipEmptyParts);
    return tool.process.exitCode();
}

int rowsOf(const QByteArray &csv)
{
    return static_cast<int>(csv.count("\r\n")) - 1;
}

} // namespace

class TestSweepToolFiles : public QObject
{
    Q_OBJECT

private slots:
    void settingsAreHeardWithoutATemporaryFolder_data();
    void settingsAreHeardWithoutATemporaryFolder();
    void doubtfulSettingsAreRefused_data();
    void doubtfulSettingsAreRefused();
    void standardOutputTakesTheSweep_data();
    void standardOutputTakesTheSweep();
    void resultsThatCannotBePrinted_data();
    void resultsThatCannotBePrinted();
    void aReaderThatReadsNothingCanBeLeft();
    void namesThatClash_data();
    void namesThatClash();
    void aLoopOfLinksIsRefused();
    void aStopIsNoTimeOut_data();
    void aStopIsNoTimeOut();
};

void TestSweepToolFiles::settingsAreHeardWithoutATemporaryFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("a file") << QStringLiteral("Calvorn.ini");
    QTest::newRow("a device") << QStringLiteral("/dev/full");
}

// Without its settings, the server would address a real port.
void TestSweepToolFiles::settingsAreHeardWithoutATemporaryFolder()
{
    QFETCH(QString, folder);
    Tool tool(settings());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"TMPDIR", "XDG_RUNTIME_DIR"})
        environment.insert(QString::fromLatin1(name), QDir(tool.folder.path()).filePath(folder));
    tool.process.setProcessEnvironment(environment);
    QCOMPARE(tool.run({QStringLiteral("--output=sweep.csv")}), 0);
    QVERIFY(contents(tool.inFolder("sweep.csv")).contains("8950000"));
}

void TestSweepToolFiles::doubtfulSettingsAreRefused_data()
{
    using Make = std::function<void(const QString &path)>;
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *name, const Make &make, const char *reason) {
        QTest::newRow(name) << make << QString::fromLatin1(reason);
    };
    const auto with = [](const QByteArray &content) {
        return [content](const QString &path) { write(path, content); };
    };
    QByteArray wide;
    for (const char byte : settings())
        wide += QByteArray(1, byte) + '\0';
    row(
        "missing", [](const QString &) {}, "it does not exist");
    row("empty", with({}), "it contains no settings");
    row("UTF-16", with("\xFF\xFE" + wide), "it is not UTF-8 text");
    row("CR alone", with(settings().replace("\r\n", "\r")), "its line endings are not supported (CR only)");
    row(
        "a folder", [](const QString &path) { QDir().mkdir(path); }, "it is not a file");
    row(
        "a pipe", [](const QString &path) { mkfifo(QFile::encodeName(path).constData(), 0600); }, "it is not a file");
    row(
        "3 GB",
        [](const QString &path) {
            write(path, settings());
            QFile::resize(path, qint64(3) << 30);
        },
        "it is larger than 16 MB");
}

void TestSweepToolFiles::doubtfulSettingsAreRefused()
{
    QFETCH(std::function<void(const QString &)>, make);
    QFETCH(QString, reason);
    for (const bool named : {false, true}) {
        Tool tool({});
        const QString path = tool.inFolder(named ? "named.ini" : "Calvorn.ini");
        make(path);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(tool.run(named ? QStringList{QStringLiteral("--settings=named.ini")} : QStringList()), 2);
        QVERIFY(clock.elapsed() < 10'000); // reading 3 GB would take minutes
        QCOMPARE(tool.sentence(), QStringLiteral("The settings file %1 cannot be read: %2.").arg(path, reason));
        QVERIFY(tool.out.isEmpty());
    }
}

void TestSweepToolFiles::standardOutputTakesTheSweep_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("-") << QStringLiteral("$tool --output -");
    QTest::newRow("/dev/stdout") << QStringLiteral("$tool --output /dev/stdout");
    QTest::newRow("into a file") << QStringLiteral("$tool --output - >sweep.csv && cat sweep.csv");
    QTest::newRow(">(command)") << QStringLiteral(
        "$tool --output >(cat >pipe.csv); code=$?; wait $!; cat pipe.csv; exit $code");
    QTest::newRow("with a picture") << QStringLiteral("$tool --output - --picture curve.png");
}

void TestSweepToolFiles::standardOutputTakesTheSweep()
{
    QFETCH(QString, command);
    Tool tool(settings());
    QCOMPARE(inShell(tool, command), 0);
    QCOMPARE(rowsOf(tool.out.toUtf8()), kRows);
    QVERIFY(tool.out.endsWith(QStringLiteral("\r\n")));
    QVERIFY(!QFile::exists(tool.inFolder("-")));
}

void TestSweepToolFiles::resultsThatCannotBePrinted_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("a full disk") << QStringLiteral("$tool >/dev/full");
    QTest::newRow("a full disk, the sweep") << QStringLiteral("$tool --output - >/dev/full");
    QTest::newRow("closed") << QStringLiteral("$tool >&-");
    QTest::newRow("closed, names of files") << QStringLiteral("$tool --output sweep.csv >&-");
    QTest::newRow("all closed") << QStringLiteral("$tool <&- >&- 2>&-");
    QTest::newRow("a reader that has gone") << QStringLiteral("set -o pipefail; $tool | true");
}

void TestSweepToolFiles::resultsThatCannotBePrinted()
{
    QFETCH(QString, command);
    Tool tool(settings());
    const QByteArray before = contents(tool.folder.iniPath());
    QCOMPARE(inShell(tool, command), 6);
    QCOMPARE(contents(tool.folder.iniPath()), before);
}

void TestSweepToolFiles::aReaderThatReadsNothingCanBeLeft()
{
    Tool tool(settings());
    const QString pipe = tool.inFolder("pipe");
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const int reader = ::open(QFile::encodeName(pipe).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(reader >= 0);
    const auto closing = qScopeGuard([reader] { ::close(reader); });
    const QByteArray page(4096, 'x');
    while (::write(reader, page.constData(), static_cast<std::size_t>(page.size())) > 0) {
    }
    tool.process.setStandardOutputFile(pipe);
    tool.start({QStringLiteral("--output=-")});
    QVERIFY(tool.process.waitForStarted(5'000));
    test::nothingHappensFor(3'000); // the sweep takes less than a second
    QCOMPARE(tool.process.state(), QProcess::Running);
    ::kill(static_cast<pid_t>(tool.process.processId()), SIGINT);
    QVERIFY(tool.process.waitForFinished(5'000));
    QCOMPARE(tool.process.exitCode(), 128 + SIGINT);
    QVERIFY(tool.process.readAllStandardError().contains("File error: standard output: "));
}

void TestSweepToolFiles::namesThatClash_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("sentence");
    const QString same = QStringLiteral("--output and --picture name the same file.");
    const QString output = QStringLiteral("--output is the settings file.");
    QTest::newRow("one name") << QStringList{QStringLiteral("--output=a.png"), QStringLiteral("--picture=a.png")}
                              << same;
    QTest::newRow("by another way") << QStringList{QStringLiteral("--output=./x/../a.png"),
                                                   QStringLiteral("--picture=a.png")}
                                    << same;
    QTest::newRow("the settings") << QStringList{QStringLiteral("--output=Calvorn.ini")} << output;
    QTest::newRow("a link to them") << QStringList{QStringLiteral("--output=link.csv")} << output;
    QTest::newRow("named settings") << QStringList{QStringLiteral("--settings=Calvorn.ini"),
                                                   QStringLiteral("--output=./Calvorn.ini")}
                                    << output;
}

void TestSweepToolFiles::namesThatClash()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, sentence);
    Tool tool(settings());
    QVERIFY(QDir(tool.folder.path()).mkdir(QStringLiteral("x")));
    QVERIFY(QFile::link(tool.folder.iniPath(), tool.inFolder("link.csv")));
    const QStringList files = tool.files();
    const QByteArray before = contents(tool.folder.iniPath());
    QCOMPARE(tool.run(arguments), 1);
    QCOMPARE(tool.sentence(), sentence);
    QCOMPARE(tool.files(), files);
    QCOMPARE(contents(tool.folder.iniPath()), before);
}

void TestSweepToolFiles::aLoopOfLinksIsRefused()
{
    Tool tool(settings());
    QVERIFY(QFile::link(tool.inFolder("b.csv"), tool.inFolder("a.csv")));
    QVERIFY(QFile::link(tool.inFolder("a.csv"), tool.inFolder("b.csv")));
    QCOMPARE(tool.run({QStringLiteral("--output=a.csv")}), 6);
    QVERIFY(QFileInfo(tool.inFolder("a.csv")).isSymLink());
}

void TestSweepToolFiles::aStopIsNoTimeOut_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("Ctrl+Z") << SIGTSTP;
    QTest::newRow("SIGSTOP") << SIGSTOP;
}

// The process is stopped for longer than the time limit for a sweep.
void TestSweepToolFiles::aStopIsNoTimeOut()
{
    QFETCH(int, signal);
    Tool tool(ProgramFolder::preparedSettings());
    tool.start({QStringLiteral("--sweeps=60"), QStringLiteral("--output=sweep.csv")});
    QVERIFY(tool.sweepsTwice());
    const auto process = static_cast<pid_t>(tool.process.processId());
    QCOMPARE(kill(-process, signal), 0);
    const auto isStopped = [process] {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        return status.open(QIODevice::ReadOnly) && status.readAll().contains(") T ");
    };
    QTRY_VERIFY(isStopped());
    while (tool.process.waitForReadyRead(100))
        tool.process.readAllStandardError();
    test::nothingHappensFor(32'000);
    QVERIFY(isStopped());
    QVERIFY(tool.process.readAllStandardError().isEmpty());
    QCOMPARE(kill(-process, SIGCONT), 0);
    QVERIFY(tool.process.waitForFinished(60'000));
    QCOMPARE(tool.process.exitCode(), 0);
    QCOMPARE(rowsOf(contents(tool.inFolder("sweep.csv"))), kRows);
}

QTEST_GUILESS_MAIN(TestSweepToolFiles)
#include "test_sweep_tool_files.moc"
