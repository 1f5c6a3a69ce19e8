// SPDX-License-Identifier: MIT
// Tests that the window reports a broken server program or unwritable settings, and keeps working.
#include "tests/support/fake_server_control.h"
#include "tests/support/window_bench.h"

#include <QElapsedTimer>
#include <QListWidget>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

const QByteArray kSettings = test::ProgramFolder::preparedSettings().replace("Log=0", "Log=1");

// The window with a shell script in place of the server.
struct ScriptBench
{
    explicit ScriptBench(const QByteArray &script)
        : window(write(script), kSettings)
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
    void aLongTextIsCut();
    void aFloodEndsWithItsServer_data();
    void aFloodEndsWithItsServer();
};

void TestServerFaults::noServerThere_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("reason");
    QTest::newRow("ends at once") << QByteArray("exit 1\n") << QStringLiteral("CalvornAsync could not be started (");
    QTest::newRow("has no folder") << QByteArray("echo '! cannot create a socket in /x: why'\nexit 1\n")
                                   << QStringLiteral(
                                          "CalvornAsync could not be started (cannot create a socket in /x: why)");
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

// The server sends a five-megabyte error message.
void TestServerFaults::aLongTextIsCut()
{
    const test::FakeServerControl control;
    control.setRules({QStringLiteral("shout 5000")});
    WindowBench window(test::FakeServerControl::program(), kSettings);
    QElapsedTimer clock;
    clock.start();
    window.click("cmdStart");
    QTRY_COMPARE(window.desktop.boxes.size(), 1);
    QVERIFY2(clock.elapsed() < 5'000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(window.desktop.lastText(), QString(1'000, u'x') + u'…');
    const auto *log = window.find<QListWidget>("lstLOG");
    for (int line = 0; line < log->count(); ++line)
        QVERIFY(log->item(line)->text().size() < 1'100);
}

void TestServerFaults::aFloodEndsWithItsServer_data()
{
    QTest::addColumn<QByteArray>("interface");
    QTest::addColumn<QString>("event");
    QTest::addColumn<QString>("told");
    const QString flood = QStringLiteral("The acquisition server sent an endless stream of events and was terminated.");
    const auto row = [](const QByteArray &interface, const char *event, const QString &told) {
        QTest::addRow("%s, %s", event, interface.constData()) << interface << QString::fromLatin1(event) << told;
    };
    for (const char *interface : {"1", "2", "3"})
        for (const char *event : {"aComplete", "aErrore", "aVettore"})
            // At the first aComplete the program parks the parallel port's generator, but the busy server never
            // answers.
            row(interface, event,
                qstrcmp(interface, "2") == 0 && qstrcmp(event, "aComplete") == 0
                    ? QStringLiteral("it did not answer in time and was terminated")
                    : flood);
}

// The window blocks for a few seconds at most, reports the flood, and works with the next server.
void TestServerFaults::aFloodEndsWithItsServer()
{
    QFETCH(QByteArray, interface);
    QFETCH(QString, event);
    QFETCH(QString, told);
    const test::FakeServerControl control;
    control.setRules({QStringLiteral("spout ") + event});
    QByteArray settings = kSettings;
    WindowBench window(test::FakeServerControl::program(), settings.replace("Interface=2", "Interface=" + interface));
    QElapsedTimer clock;
    clock.start();
    window.click("cmdStart");
    const auto isTold = [&] {
        return std::any_of(window.desktop.boxes.begin(), window.desktop.boxes.end(),
                           [&](const auto &box) { return box.text.contains(told); });
    };
    QTRY_VERIFY_WITH_TIMEOUT(isTold(), 20'000);
    QVERIFY2(clock.elapsed() < 15'000, qPrintable(QString::number(clock.elapsed())));
    QTRY_VERIFY(window.isShown("cmdStart"));
    control.setRules({QStringLiteral("vectors 1"), QStringLiteral("complete")});
    window.click("cmdStart");
    // With the MiniVNA the program shows 1024 - count.
    const QString last = interface == "3" ? QStringLiteral("625") : QStringLiteral("399");
    QTRY_COMPARE(window.table()->text(400, SweepTable::SampleColumn), last);
    QTRY_VERIFY(window.isShown("cmdStart"));
}

QTEST_MAIN(TestServerFaults)
#include "test_server_faults.moc"
