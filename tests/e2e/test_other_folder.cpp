// SPDX-License-Identifier: MIT
// One set of programs, used with settings that stand elsewhere.
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"

#include <QTest>

using namespace calvorn::test;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

QStringList folderOption(const QString &folder)
{
    return {QStringLiteral("--folder"), folder};
}

} // namespace

class TestOtherFolder : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;
    const QString m_box = QStringLiteral("^Brenik - Calvorn  v2.0$");

private slots:
    void itsSettingsAreReadAndWritten();
    void itsServerReadsThemToo();
    void oneInstanceForEachFolder();
    void aMissingFolderIsTold();
    void anUnknownArgumentEndsIt();
};

void TestOtherFolder::itsSettingsAreReadAndWritten()
{
    const ProgramFolder other({}, ProgramFolder::preparedSettings());
    other.set("Calvorn", "Scale", QStringLiteral("2"));
    RealProgram program(ProgramFolder::preparedSettings());
    program.setCommand(program.folder() + QStringLiteral("/Calvorn"), folderOption(other.path()));
    QVERIFY(program.start());
    // Scale menu, second entry.
    program.keys({QStringLiteral("alt+c"), QStringLiteral("Down"), QStringLiteral("Return")});
    QTest::qWait(300);
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(other.setting("Calvorn", "Scale"), QStringLiteral("1"));
    QCOMPARE(contents(program.folder() + QStringLiteral("/Calvorn.ini")), ProgramFolder::preparedSettings());
    QCOMPARE(QDir(other.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("Calvorn.ini")));
}

void TestOtherFolder::itsServerReadsThemToo()
{
    // Far below the filter that the settings beside the server name, a piece of wire lets everything through.
    const ProgramFolder other({}, ProgramFolder::preparedSettings());
    other.set("Simulator", "Device", QStringLiteral("through"));
    other.set("Calvorn", "Start", QStringLiteral("1000000"));
    other.set("Calvorn", "Stop", QStringLiteral("2000000"));
    RealProgram program(ProgramFolder::preparedSettings());
    program.setCommand(program.folder() + QStringLiteral("/Calvorn"), folderOption(other.path()));
    QVERIFY(program.start());
    const int empty = highestCurveRow(program.screenshot());
    program.keys({QStringLiteral("F5")});
    QTRY_VERIFY_WITH_TIMEOUT(highestCurveRow(program.screenshot()) < empty - 100, 5000);
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
}

void TestOtherFolder::oneInstanceForEachFolder()
{
    const ProgramFolder other({}, ProgramFolder::preparedSettings());
    RealProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start());
    // The same programs beside it, with the other folder ...
    QProcess second;
    second.start(program.folder() + QStringLiteral("/Calvorn"), folderOption(other.path()));
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 2, 5000);
    // ... but only once.
    QProcess third;
    third.start(program.folder() + QStringLiteral("/Calvorn"), folderOption(other.path()));
    const QString box = program.waitForWindow(m_box);
    QVERIFY(!box.isEmpty());
    RealProgram::run(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), QStringLiteral("--sync"), box,
                                                 QStringLiteral("key"), QStringLiteral("Return")});
    QVERIFY(third.waitForFinished(5000));
    QCOMPARE(program.serversRunning(), 2);
    second.kill();
    second.waitForFinished(3000);
}

void TestOtherFolder::aMissingFolderIsTold()
{
    RealProgram program(ProgramFolder::preparedSettings());
    const QString missing = program.folder() + QStringLiteral("/missing");
    program.setCommand(program.folder() + QStringLiteral("/Calvorn"), folderOption(missing));
    QVERIFY(program.start({}, m_box));
    QCOMPARE(program.serversRunning(), 0);
    program.keys({QStringLiteral("Return")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 1);
    QVERIFY(!QFileInfo::exists(missing));
}

void TestOtherFolder::anUnknownArgumentEndsIt()
{
    RealProgram program(ProgramFolder::preparedSettings());
    QProcess process;
    process.start(program.folder() + QStringLiteral("/Calvorn"), {QStringLiteral("--fodler")});
    QVERIFY(process.waitForFinished(10000));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("fodler"));
}

QTEST_MAIN(TestOtherFolder)
#include "test_other_folder.moc"
