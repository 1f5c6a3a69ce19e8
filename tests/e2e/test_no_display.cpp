// SPDX-License-Identifier: MIT
// Tests the program without a display or with a display that does not respond.
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"

#include <QTemporaryDir>
#include <QTest>

using namespace calvorn::test;

namespace {

// Runs the program in an environment without a display, unless `variables` sets one.
struct Run
{
    QTemporaryDir runtime; // where a Wayland display would be; without this folder the Wayland library complains
    QProcess process;

    void start(const RealProgram &program, const QStringList &variables, const QStringList &arguments = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_SESSION_TYPE", "LANGUAGE"})
            environment.remove(QString::fromLatin1(name));
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
        for (const QString &variable : variables)
            environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
        process.setProcessEnvironment(environment);
        process.start(program.folder() + QStringLiteral("/Calvorn"), arguments);
    }
};

} // namespace

class TestNoDisplay : public QObject
{
    Q_OBJECT

private slots:
    void oneSentenceAndACode_data();
    void oneSentenceAndACode();
    void theSentenceSpeaksTheLanguageOfTheUser();
    void argumentsNeedNone();
    void aPlatformWithoutADisplayIsUsed();
};

void TestNoDisplay::oneSentenceAndACode_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::newRow("none") << QStringList();
    QTest::newRow("empty") << QStringList{QStringLiteral("DISPLAY=")};
    QTest::newRow("nobody there") << QStringList{QStringLiteral("DISPLAY=:987")};
    QTest::newRow("Wayland, nobody there")
        << QStringList{QStringLiteral("WAYLAND_DISPLAY=wayland-987"), QStringLiteral("XDG_SESSION_TYPE=wayland")};
    QTest::newRow("unknown platform") << QStringList{QStringLiteral("QT_QPA_PLATFORM=none-such")};
}

void TestNoDisplay::oneSentenceAndACode()
{
    QFETCH(QStringList, variables);
    const RealProgram program(ProgramFolder::preparedSettings());
    Run run;
    run.start(program, variables);
    QVERIFY(run.process.waitForFinished(10000));
    QCOMPARE(run.process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(run.process.exitCode(), 2);
    QCOMPARE(
        run.process.readAllStandardError(),
        QByteArray("Calvorn needs a display, but cannot open one. Start it on a desktop, or use calvorn-sweep.\n"));
    QVERIFY(run.process.readAllStandardOutput().isEmpty());
    QCOMPARE(program.serversRunning(), 0);
}

void TestNoDisplay::theSentenceSpeaksTheLanguageOfTheUser()
{
    const RealProgram program(ProgramFolder::preparedSettings());
    // Checks that translations are loaded even for a failure this early.
    for (const char *language : {"LANGUAGE=it", "LANGUAGE=de"}) {
        Run run;
        run.start(program, {QString::fromLatin1(language), QStringLiteral("DISPLAY=:987")});
        QVERIFY(run.process.waitForFinished(10000));
        QCOMPARE(run.process.exitCode(), 2);
        QCOMPARE(run.process.readAllStandardError().count('\n'), 1);
    }
}

void TestNoDisplay::argumentsNeedNone()
{
    const RealProgram program(ProgramFolder::preparedSettings());
    for (const char *option : {"--help", "-h", "--version", "-v"}) {
        Run run;
        run.start(program, {}, {QString::fromLatin1(option)});
        QVERIFY(run.process.waitForFinished(10000));
        QCOMPARE(run.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(run.process.exitCode(), 0);
        const QByteArray out = run.process.readAllStandardOutput();
        QVERIFY2(QByteArray(option).contains('h') ? out.contains("--version") : out.startsWith("Calvorn 2."),
                 out.constData());
        QVERIFY(run.process.readAllStandardError().isEmpty());
    }
    Run run;
    run.start(program, {}, {QStringLiteral("sweep.csv")});
    QVERIFY(run.process.waitForFinished(10000));
    QCOMPARE(run.process.exitCode(), 1);
    QCOMPARE(run.process.readAllStandardError(), QByteArray("Calvorn opens no files: sweep.csv\n"));
}

void TestNoDisplay::aPlatformWithoutADisplayIsUsed()
{
    const RealProgram program(ProgramFolder::preparedSettings());
    const QStringList offscreen{QStringLiteral("QT_QPA_PLATFORM=offscreen")};
    Run byVariable;
    byVariable.start(program, offscreen);
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 1, 10000);
    QCOMPARE(byVariable.process.state(), QProcess::Running);
    byVariable.process.kill();
    QVERIFY(byVariable.process.waitForFinished(5000));
    QTRY_COMPARE(program.serversRunning(), 0);
    Run byOption;
    byOption.start(program, {}, {QStringLiteral("-platform"), QStringLiteral("offscreen")});
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 1, 10000);
    byOption.process.kill();
    QVERIFY(byOption.process.waitForFinished(5000));
}

QTEST_MAIN(TestNoDisplay)
#include "test_no_display.moc"
