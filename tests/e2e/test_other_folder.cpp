// SPDX-License-Identifier: MIT
// Tests programs in a folder that their users cannot write to, with separate settings for each user.
#include "tests/e2e/real_program.h"
#include "tests/support/program_folder.h"

#include <QTest>

#include <unistd.h>

using namespace calvorn;
using namespace calvorn::test;

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

// The programs in a read-only folder, and a configuration folder for each user.
class ProtectedProgram : public RealProgram
{
public:
    explicit ProtectedProgram(const QByteArray &settings)
        : RealProgram(settings)
    {
        bring("calvorn-sweep");
        setCommand(command().first(), command().mid(1));
        protect(true);
    }
    ~ProtectedProgram() { protect(false); }

    // Without this capability, permissions also apply to root.
    QStringList command(const char *name = "Calvorn") const
    {
        const QString program = folder() + u'/' + QString::fromLatin1(name);
        if (geteuid() != 0)
            return {program};
        return {QStringLiteral("setpriv"), QStringLiteral("--bounding-set"), QStringLiteral("-dac_override"), program};
    }
    // Returns this user's configuration folder.
    QString configuration(const char *user) const { return m_users.filePath(QString::fromLatin1(user)); }
    QString settingsOf(const char *user) const { return configuration(user) + QStringLiteral("/calvorn/Calvorn.ini"); }
    QStringList environment(const char *user) const
    {
        return {QStringLiteral("XDG_CONFIG_HOME=") + configuration(user),
                QStringLiteral("XDG_DATA_HOME=") + m_users.filePath(QStringLiteral("data"))};
    }
    // Starts the program without waiting for a window.
    void launch(QProcess &process, const char *user) const
    {
        process.setEnvironment(QProcess::systemEnvironment() + environment(user));
        process.start(command().first(), command().mid(1));
    }

private:
    void protect(bool on) const
    {
        QFile::setPermissions(folder(), on ? QFile::ReadOwner | QFile::ExeOwner
                                           : QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QTemporaryDir m_users;
};

} // namespace

class TestOtherFolder : public QObject
{
    Q_OBJECT

private:
    WindowManager m_windowManager;
    const QString m_box = QStringLiteral("^Brenik - Calvorn  v2.0$");

private slots:
    void theUsersSettingsAreMadeAndWritten();
    void theServerReadsThemToo();
    void theToolReadsThemAndWritesNone();
    void oneInstanceForEachUser();
    void aFolderThatCannotBeMadeIsReported();
    void anUnknownArgumentEndsIt_data();
    void anUnknownArgumentEndsIt();
};

void TestOtherFolder::theUsersSettingsAreMadeAndWritten()
{
    ProtectedProgram program(ProgramFolder::preparedSettings());
    const auto scale = [&program] {
        return readProfileString(program.settingsOf("me"), QStringLiteral("Calvorn"), QStringLiteral("Scale"));
    };
    QVERIFY(program.start(program.environment("me")));
    QCOMPARE(scale(), QStringLiteral("0"));
    // Selects the second entry of the Scale menu.
    QVERIFY(program.keysChange({QStringLiteral("alt+c"), QStringLiteral("Down"), QStringLiteral("Return")}));
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(scale(), QStringLiteral("1"));
    QCOMPARE(contents(program.folder() + QStringLiteral("/Calvorn.ini")), ProgramFolder::preparedSettings());
    QCOMPARE(QDir(program.configuration("me") + QStringLiteral("/calvorn"))
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList(QStringLiteral("Calvorn.ini")));
    // The next start reads the same settings.
    const QByteArray kept = contents(program.settingsOf("me"));
    QVERIFY(program.start(program.environment("me")));
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(contents(program.settingsOf("me")), kept);
}

void TestOtherFolder::theServerReadsThemToo()
{
    ProtectedProgram program(ProgramFolder::preparedSettings());
    // The user's settings simulate a cable. In this range, the cable passes the signal; the filter in the settings next
    // to the server would not.
    QVERIFY(QDir().mkpath(program.configuration("me") + QStringLiteral("/calvorn")));
    QVERIFY(QFile::copy(program.folder() + QStringLiteral("/Calvorn.ini"), program.settingsOf("me")));
    const auto set = [&program](const char *section, const char *key, const char *value) {
        QVERIFY(writeProfileString(program.settingsOf("me"), QString::fromLatin1(section), QString::fromLatin1(key),
                                   QString::fromLatin1(value)));
    };
    set("Simulator", "Device", "through");
    set("Calvorn", "Start", "1000000");
    set("Calvorn", "Stop", "2000000");
    QVERIFY(program.start(program.environment("me")));
    const int empty = highestCurveRow(program.screenshot());
    program.keys({QStringLiteral("F5")});
    QTRY_VERIFY_WITH_TIMEOUT(highestCurveRow(program.screenshot()) < empty - 100, 5000);
    program.keys({QStringLiteral("ctrl+q")});
    QVERIFY(program.waitForEnd());
}

void TestOtherFolder::theToolReadsThemAndWritesNone()
{
    const ProtectedProgram program(ProgramFolder::preparedSettings());
    const QTemporaryDir results;
    // The second line of the file is the first row of the sweep; its second field is the frequency.
    const auto firstFrequency = [&] {
        const QString csv = results.filePath(QStringLiteral("sweep.csv"));
        QStringList command = program.command("calvorn-sweep") + QStringList{QStringLiteral("--output"), csv};
        QProcess tool;
        tool.setEnvironment(QProcess::systemEnvironment() + program.environment("me"));
        tool.start(command.takeFirst(), command);
        tool.waitForFinished(20000);
        return contents(csv).split('\n').value(1).split(',').value(1);
    };
    // Until the window has been started once, the delivered settings apply.
    QCOMPARE(firstFrequency(), QByteArray("1000000"));
    QVERIFY(!QFileInfo::exists(program.configuration("me")));
    QVERIFY(QDir().mkpath(program.configuration("me") + QStringLiteral("/calvorn")));
    QVERIFY(QFile::copy(program.folder() + QStringLiteral("/Calvorn.ini"), program.settingsOf("me")));
    QVERIFY(writeProfileString(program.settingsOf("me"), QStringLiteral("Calvorn"), QStringLiteral("Start"),
                               QStringLiteral("2000000")));
    QCOMPARE(firstFrequency(), QByteArray("2000000"));
}

void TestOtherFolder::oneInstanceForEachUser()
{
    ProtectedProgram program(ProgramFolder::preparedSettings());
    QVERIFY(program.start(program.environment("me")));
    // A second instance may run with the settings of another user ...
    QProcess second;
    program.launch(second, "you");
    QTRY_COMPARE_WITH_TIMEOUT(program.serversRunning(), 2, 5000);
    // Waits for its window, which would otherwise take the focus from the box.
    const auto windows = [] {
        return RealProgram::run(QStringLiteral("xdotool"),
                                {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                                 QStringLiteral("^Brenik - Calvorn  v2.0 - ")})
            .split(u'\n', Qt::SkipEmptyParts)
            .size();
    };
    QTRY_COMPARE_WITH_TIMEOUT(windows(), qsizetype{2}, 10000);
    // ... but not a third instance with the same settings.
    QProcess third;
    program.launch(third, "you");
    const QString box = program.waitForWindow(m_box);
    QVERIFY(!box.isEmpty());
    RealProgram::run(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), QStringLiteral("--sync"), box,
                                                 QStringLiteral("key"), QStringLiteral("Return")});
    QVERIFY(third.waitForFinished(5000));
    QCOMPARE(program.serversRunning(), 2);
    second.kill();
    second.waitForFinished(3000);
}

void TestOtherFolder::aFolderThatCannotBeMadeIsReported()
{
    ProtectedProgram program(ProgramFolder::preparedSettings());
    QFile inTheWay(program.configuration("me"));
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QVERIFY(program.start(program.environment("me"), m_box));
    QCOMPARE(program.serversRunning(), 0);
    program.keys({QStringLiteral("Return")});
    QVERIFY(program.waitForEnd());
    QCOMPARE(program.exitCode(), 1);
}

void TestOtherFolder::anUnknownArgumentEndsIt_data()
{
    QTest::addColumn<QString>("argument");
    for (const char *argument : {"--fodler", "--folder", "-f"})
        QTest::newRow(argument) << QString::fromLatin1(argument);
}

void TestOtherFolder::anUnknownArgumentEndsIt()
{
    QFETCH(QString, argument);
    RealProgram program(ProgramFolder::preparedSettings());
    QProcess process;
    process.start(program.folder() + QStringLiteral("/Calvorn"), {argument});
    QVERIFY(process.waitForFinished(10000));
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains(argument.section(u'-', -1).toUtf8()));
}

QTEST_MAIN(TestOtherFolder)
#include "test_other_folder.moc"
