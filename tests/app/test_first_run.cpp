// SPDX-License-Identifier: MIT
#include "tests/support/fake_server_control.h"
#include "tests/support/while_modal.h"
#include "tests/support/window_bench.h"

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

QByteArray content(const test::ProgramFolder &folder)
{
    QFile file(folder.iniPath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

} // namespace

// Starts with no settings, with settings that no dialog could have written, and the configuration in between.
class TestFirstRun : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

    WindowBench bench(const QByteArray &settings) const { return {test::FakeServerControl::program(), settings}; }

private slots:
    void init()
    {
        m_server.setRules({});
        m_server.takeCalls();
    }

    void closingTheDialogGoesOnWithTheDefaults();
    void applyEndsTheProgramAndTheNextStartWorks();
    void unknownDevicesEndTheProgram_data();
    void unknownDevicesEndTheProgram();
    void otherBadValuesAreStillReported();
    void anUnknownDeviceCanBeCorrected();
    void applyFromTheMenuEndsTheProgramAtOnce();
    void cancelFromTheMenuGoesOn();
    void aValueThatNoDialogWritesStaysInTheFile_data();
    void aValueThatNoDialogWritesStaysInTheFile();
    void aHugeFileDoesNotPreventAStart();
    void aFolderInPlaceOfTheFileDoesNotPreventAStart();
};

void TestFirstRun::closingTheDialogGoesOnWithTheDefaults()
{
    QString shown;
    test::whileModal([&shown](QWidget &dialog) {
        shown = dialog.objectName();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    const WindowBench first = bench({});
    QCOMPARE(shown, QStringLiteral("frmSetUp"));
    QVERIFY(first.started);
    QCOMPARE(first.window->windowTitle(), QStringLiteral("Brenik - Calvorn  v2.0 - AD9850"));
    QCOMPARE(first.folder.setting("Config", "DDS Device"), QStringLiteral("AD9850"));
    QCOMPARE(first.folder.setting("Calvorn", "Marker 2"), QStringLiteral("2000000"));
    QCOMPARE(m_server.takeCalls().first(), QStringLiteral("aLPT.OpenPort(888)"));
}

void TestFirstRun::applyEndsTheProgramAndTheNextStartWorks()
{
    test::whileModal([](QWidget &dialog) {
        struct Hands : test::WidgetHands
        {
            QWidget *dialog = nullptr;
            QWidget *root() const override { return dialog; }
        } hands;
        hands.dialog = &dialog;
        hands.click("cmdPort");
        hands.click("optParallelPort_0");
        hands.click("cmdApply");
    });
    WindowBench first = bench({});
    QVERIFY(!first.started);
    QVERIFY(!first.window->isVisible());
    QCOMPARE(first.desktop.boxes.size(), 1);
    QCOMPARE(m_server.takeCalls(), QStringList());
    // Nothing that the dialog did not write.
    QCOMPARE(first.folder.setting("Calvorn", "Start"), QString());
    QVERIFY(content(first.folder).startsWith("[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\n"));

    first.open();
    QVERIFY(first.started);
    QCOMPARE(first.desktop.boxes.size(), 1);
    QCOMPARE(m_server.takeCalls().first(), QStringLiteral("aLPT.OpenPort(0)"));
}

void TestFirstRun::unknownDevicesEndTheProgram_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("text");
    QTest::newRow("generator")
        << QByteArray("[Config]\r\nDDS Device=ad9850\r\n")
        << QStringLiteral("ad9850 : Unknow DDSdevice.\rSupported DDS generators are: AD9850, AD9851, AD9951");
    QTest::newRow("converter") << QByteArray("[Config]\r\nDDS Device=AD9850\r\nADC Device=12bit\r\n")
                               << QStringLiteral("12bit : Unknow ADCdevice.\rSupported ADC are: 8bit, 10bit");
}

void TestFirstRun::unknownDevicesEndTheProgram()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, text);
    QString shown;
    test::whileModal([&shown](QWidget &dialog) {
        shown = dialog.objectName();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    const WindowBench started = bench(settings);
    QVERIFY(!started.started);
    QCOMPARE(shown, QStringLiteral("frmSetUp"));
    QCOMPARE(started.desktop.beeps, 1);
    QCOMPARE(started.desktop.boxes.size(), 1);
    QCOMPARE(started.desktop.boxes.first().text, text);
}

void TestFirstRun::otherBadValuesAreStillReported()
{
    test::dismissNextDialog();
    const WindowBench started =
        bench("[Config]\r\nDDS Device=AD9999\r\nDDS Max freq=many\r\nADC Device=12bit\r\n");
    QVERIFY(!started.started);
    QCOMPARE(started.desktop.boxes.size(), 2);
    const QString second = started.desktop.lastText();
    QVERIFY2(second.contains(QStringLiteral("\"DDS Max freq\"")), qPrintable(second));
    QVERIFY2(second.contains(QStringLiteral("\"ADC Device\"")), qPrintable(second));
    QVERIFY2(!second.contains(QStringLiteral("\"DDS Device\"")), qPrintable(second));
}

void TestFirstRun::anUnknownDeviceCanBeCorrected()
{
    test::whileModal([](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_A, Qt::AltModifier); });
    WindowBench corrected = bench("[Config]\r\nInterface=2\r\nDDS Device=ad9851\r\n[Parallel Port]\r\nLPT=0\r\n");
    QVERIFY(!corrected.started);
    QCOMPARE(corrected.folder.setting("Config", "DDS Device"), QStringLiteral("AD9851"));
    corrected.open();
    QVERIFY(corrected.started);
    QCOMPARE(corrected.window->windowTitle(), QStringLiteral("Brenik - Calvorn  v2.0 - AD9851"));
}

void TestFirstRun::applyFromTheMenuEndsTheProgramAtOnce()
{
    WindowBench running = bench("[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nDDS Offset=1\r\n");
    running.type("txtStart", QStringLiteral("3000000"));
    m_server.takeCalls();
    running.configuration.ddsOffset = 7.0;
    test::whileModal([](QWidget &dialog) { QTest::keyClick(&dialog, Qt::Key_A, Qt::AltModifier); });
    running.window->findChild<QAction *>(QStringLiteral("mnuConfig"))->trigger();
    QVERIFY(!running.window->isVisible());
    QCOMPARE(running.desktop.boxes.size(), 1);
    // The hardware is left in order, and the running values are not saved over the new ones.
    QCOMPARE(m_server.takeCalls().last(), QStringLiteral("aLPT.ClosePort()"));
    QCOMPARE(running.folder.setting("Config", "DDS Offset"), QStringLiteral("1"));
    QCOMPARE(running.folder.setting("Calvorn", "Start"), QStringLiteral("1000000"));
    // Nothing more happens when the hidden window is destroyed.
    running.window.reset();
    QCOMPARE(running.folder.setting("Config", "DDS Offset"), QStringLiteral("1"));
}

void TestFirstRun::cancelFromTheMenuGoesOn()
{
    const WindowBench running = bench("[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\n");
    m_server.takeCalls();
    test::dismissNextDialog();
    running.window->findChild<QAction *>(QStringLiteral("mnuConfig"))->trigger();
    QVERIFY(running.window->isVisible());
    QCOMPARE(m_server.takeCalls(), QStringList());
}

void TestFirstRun::aValueThatNoDialogWritesStaysInTheFile_data()
{
    QTest::addColumn<QByteArray>("section");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *section, const char *key, const char *text) {
        QTest::addRow("%s=%s", key, text) << QByteArray(section) << QByteArray(key) << QByteArray(text);
    };
    row("Config", "DDS Max freq", "many");
    row("Config", "DDS Max freq", "1e400");
    row("Config", "DDS Max freq", "99999999999");
    row("Config", "DDS Multiplier", "40000");
    row("Config", "DDS Offset", "1e400");
    row("Config", "ADC Step", "1e60");
    row("Config", "ADC Channel", "--1");
    row("Parallel Port", "LPT", "&HFFFFF");
    row("Serial Port", "CommPort", "COM3");
    row("Calvorn", "Sweep mode", "NaN");
    row("Debug", "Slow CPU", "0x10");
}

void TestFirstRun::aValueThatNoDialogWritesStaysInTheFile()
{
    QFETCH(QByteArray, section);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, text);
    QByteArray settings("[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\n");
    if (section != "Config")
        settings += '[' + section + "]\r\n";
    const WindowBench started = bench(settings + key + '=' + text + "\r\n");
    QVERIFY(started.started);
    QCOMPARE(started.desktop.boxes.size(), 1);
    QVERIFY2(started.desktop.lastText().contains(QString::fromLatin1('[' + section + "] \"" + key + '"')),
             qPrintable(started.desktop.lastText()));
    QVERIFY2(started.desktop.lastText().contains(QString::fromLatin1(text)), qPrintable(started.desktop.lastText()));
    QCOMPARE(started.folder.setting(section, key), QString::fromLatin1(text));
}

void TestFirstRun::aHugeFileDoesNotPreventAStart()
{
    // 10 MB of what is nobody's, before what is ours.
    QByteArray settings("[Elsewhere]\r\n");
    settings.reserve(11 * 1024 * 1024);
    while (settings.size() < 10 * 1024 * 1024)
        settings += "Key of another program=some value or other\r\n";
    settings += "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\n";
    const WindowBench started = bench(settings);
    QVERIFY(started.started);
    QCOMPARE(started.desktop.boxes.size(), 0);
    QCOMPARE(started.window->windowTitle(), QStringLiteral("Brenik - Calvorn  v2.0 - AD9851"));
    QVERIFY(content(started.folder).startsWith(settings));
}

void TestFirstRun::aFolderInPlaceOfTheFileDoesNotPreventAStart()
{
    WindowBench started = [this] {
        test::dismissNextDialog();
        return bench({});
    }();
    started.window.reset();
    QVERIFY(QFile::remove(started.folder.iniPath()));
    QVERIFY(QDir().mkdir(started.folder.iniPath()));
    QVERIFY(QDir(started.folder.iniPath()).mkdir(QStringLiteral("mine")));
    test::dismissNextDialog();
    started.open();
    QVERIFY(started.started);
    QCOMPARE(started.desktop.boxes.size(), 0);
    QVERIFY(started.window->close());
    QVERIFY(QDir(started.folder.iniPath() + QStringLiteral("/mine")).exists());
}

QTEST_MAIN(TestFirstRun)
#include "test_first_run.moc"
