// SPDX-License-Identifier: MIT
// What stands in the place of the server is no server, or the settings cannot be kept: the window says so and lives.
#include "tests/support/window_bench.h"

#include <QListWidget>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

// The window in a folder where this shell script stands for the server.
struct ScriptBench
{
    explicit ScriptBench(const QByteArray &script)
        : window(write(script), test::ProgramFolder::preparedSettings().replace("Log=0", "Log=1"))
    {
    }

    QString write(const QByteArray &script) const
    {
        QFile file(folder.filePath(QStringLiteral("server")));
        if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + script) < script.size() ||
            !file.setPermissions(file.permissions() | QFileDevice::ExeOwner))
            qFatal("cannot write the script of the test");
        return file.fileName();
    }

    bool logs(const QString &text) const
    {
        return !window.find<QListWidget>("lstLOG")->findItems(text, Qt::MatchContains).isEmpty();
    }

    QTemporaryDir folder;
    WindowBench window;
};

} // namespace

class TestServerFaults : public QObject
{
    Q_OBJECT

private slots:
    void noServerThere_data();
    void noServerThere();
    void aServerThatNeverSpeaksIsGivenUp();
    void settingsThatCannotBeSavedAreLogged();
};

void TestServerFaults::noServerThere_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("reason");
    QTest::newRow("ends at once") << QByteArray("exit 1\n") << QStringLiteral("CalvornAsync could not be started (");
    QTest::newRow("talks nonsense") << QByteArray("echo nonsense\nexec cat >/dev/null\n")
                                    << QStringLiteral("no connection to it (");
}

void TestServerFaults::noServerThere()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, reason);
    ScriptBench bench(script);
    QVERIFY(bench.window.started);
    const QList<test::FakeDesktop::Box> &boxes = bench.window.desktop.boxes;
    QCOMPARE(boxes.size(), 1);
    QVERIFY(boxes.last().text.startsWith(QStringLiteral("Parallel port not initialized.")));
    QVERIFY(bench.logs(reason));
    bench.window.click("cmdStart");
    QVERIFY2(boxes.last().text.contains(QStringLiteral("The acquisition server did not carry out a command")) &&
                 boxes.last().text.contains(reason),
             qPrintable(boxes.last().text));
    QVERIFY(bench.window.isShown("cmdStart") && !bench.window.isShown("cmdStop"));
}

void TestServerFaults::aServerThatNeverSpeaksIsGivenUp()
{
    ScriptBench bench("exec cat >/dev/null\n");
    QVERIFY(bench.window.started);
    QVERIFY(bench.logs(QStringLiteral("CalvornAsync could not be started (")));
    QVERIFY(bench.window.isShown("cmdStart"));
}

void TestServerFaults::settingsThatCannotBeSavedAreLogged()
{
    ScriptBench bench("exit 1\n");
    const QString path = bench.window.folder.iniPath();
    QVERIFY(QFile::remove(path) && QDir().mkdir(path));
    QVERIFY(bench.window.window->close());
    QVERIFY(bench.logs(QStringLiteral("The settings could not be saved in ") + path));
}

QTEST_MAIN(TestServerFaults)
#include "test_server_faults.moc"
