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

struct Hands : test::WidgetHands
{
    explicit Hands(QWidget &opened)
        : dialog(&opened)
    {
    }
    QWidget *root() const override { return dialog; }

    QWidget *dialog;
};

// Performs the action in the next configuration dialog, and closes the dialog even if the action fails halfway.
void inNextDialog(const std::function<void(const Hands &)> &action)
{
    test::whileModal([action](QWidget &dialog) {
        action(Hands(dialog));
        if (dialog.isVisible())
            QTest::keyClick(&dialog, Qt::Key_Escape);
    });
}

} // namespace

// Tests starting without settings and with settings that no dialog could have written, and the configuration dialog in
// between.
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
    void theFirstStartProposesTheSimulatedBoard_data();
    void theFirstStartProposesTheSimulatedBoard();
    void theFirstStartBringsThePreparedSections();
    void theWholeFileOfTheFirstSession();
    void settingsWithoutADeviceStayAsTheyAre();
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

void TestFirstRun::theFirstStartProposesTheSimulatedBoard_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("empty file") << QByteArray("\r\n");
}

void TestFirstRun::theFirstStartProposesTheSimulatedBoard()
{
    QFETCH(QByteArray, settings);
    inNextDialog([](const Hands &hands) {
        QVERIFY(hands.isChecked("optInterface_2"));
        hands.click("cmdPort");
        QVERIFY(hands.isChecked("optParallelPort_0"));
        QCOMPARE(hands.text("txtAddressRS232"), QStringLiteral("100"));
        hands.click("cmdDDS");
        QVERIFY(hands.isChecked("optDDSselect_2"));
        QVERIFY(hands.isChecked("optDDSx6"));
        QCOMPARE(hands.text("txtClk9851"), QStringLiteral("30,000,000"));
        hands.click("cmdADC");
        QCOMPARE(hands.text("txtADCstep"), QStringLiteral("2.440"));
    });
    const WindowBench first = bench(settings);
    QVERIFY(first.started);
    QCOMPARE(first.desktop.boxes.size(), 0);
    // Only "Apply" puts the proposal into effect.
    QCOMPARE(first.configuration.ddsDevice, QStringLiteral("AD9850"));
    QCOMPARE(first.configuration.lptAddress, static_cast<std::int16_t>(888));
    QCOMPARE(first.configuration.adcOffset, 5.0F);
    QCOMPARE(m_server.takeCalls().first(), QStringLiteral("aLPT.OpenPort(888)"));
    // When opened again, the dialog shows the actual configuration.
    inNextDialog([](const Hands &hands) {
        hands.click("cmdPort");
        QVERIFY(hands.isChecked("optParallelPort_1"));
    });
    first.window->findChild<QAction *>(QStringLiteral("mnuConfig"))->trigger();
}

void TestFirstRun::theFirstStartBringsThePreparedSections()
{
    test::dismissNextDialog();
    const WindowBench first = bench({});
    const QString prepared = QStringLiteral(CALVORN_SOURCE_DIR "/packaging/Calvorn.ini");
    for (const char *name : {"Interface1", "Interface2", "Interface3", "Simulator"}) {
        const QString section = QString::fromLatin1(name);
        const QVector<ProfileEntry> wanted = readProfileSection(prepared, section);
        const QVector<ProfileEntry> found = readProfileSection(first.folder.iniPath(), section);
        QVERIFY2(!wanted.isEmpty(), name);
        QCOMPARE(found.size(), wanted.size());
        for (qsizetype i = 0; i < wanted.size(); ++i)
            QCOMPARE(found[i].key + u'=' + found[i].value, wanted[i].key + u'=' + wanted[i].value);
    }
    // There are settings for each of the three "Default" buttons.
    inNextDialog([](const Hands &hands) {
        for (const char *button : {"cmdDefault1", "cmdDefault3", "cmdDefault2"})
            hands.click(button);
        hands.click("cmdDDS");
        QVERIFY(hands.isChecked("optDDSselect_2"));
    });
    first.window->findChild<QAction *>(QStringLiteral("mnuConfig"))->trigger();
    QCOMPARE(first.desktop.boxes.size(), 0);
}

// The file after start-up, after a session that changed some values, and after "Apply".
void TestFirstRun::theWholeFileOfTheFirstSession()
{
    const QByteArray prepared =
        "[Interface1]\r\nDDS Device=AD9850\r\nDDS Multiplier=1\r\nDDS Xtal freq=125000000\r\n"
        "DDS Max freq=40000000\r\nDDS Min freq=1000\r\nDDS Offset=0\r\nADC Device=10bit\r\nADC Offset=0\r\n"
        "ADC Step=0.00244\r\nADC Channel=1\r\n"
        "[Interface2]\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\nDDS Xtal freq=30000000\r\n"
        "DDS Max freq=70000000\r\nDDS Min freq=1000\r\nDDS Offset=0\r\nADC Device=10bit\r\nADC Offset=0\r\n"
        "ADC Step=0.00244\r\nADC Channel=1\r\n"
        "[Interface3]\r\nDDS Device=AD9951\r\nDDS Multiplier=20\r\nDDS Xtal freq=20000000\r\n"
        "DDS Max freq=180000000\r\nDDS Min freq=100000\r\nDDS Offset=0\r\nADC Device=10bit\r\nADC Offset=0\r\n"
        "ADC Step=0.00244\r\nADC Channel=3\r\n"
        "[Simulator]\r\nDevice=bandpass\r\nPace=real\r\nSeed=1\r\nFault=none\r\n";
    const QByteArray started =
        "[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nDDS Multiplier=1\r\nDDS Xtal freq=80000000\r\n"
        "DDS Max freq=60000000\r\nDDS Min freq=10\r\nDDS Offset=0\r\nADC Device=10bit\r\nADC Offset=5\r\n"
        "ADC Step=0\r\nADC Channel=1\r\n" +
        prepared +
        "[Debug]\r\nLog=0\r\nUSB API=0\r\nSlow CPU=0\r\n[Parallel Port]\r\nLPT=&H378\r\n"
        "[Serial Port]\r\nCommPort=6\r\nSettings=115200,N,8,1\r\n"
        "[Calvorn]\r\nScale=0\r\nStart=1000000\r\nStop=10000000\r\nMarker 0=0\r\nMax scaleV=1.5\r\n"
        "Max scaleDb=-40\r\nSweep mode=0\r\nCursor mode=0\r\nAux_1=0\r\nAux_2=0\r\nPot_2=0\r\nMarker 3=0\r\n"
        "Marker 4=0\r\nMarker 1=1000000\r\nMarker 2=2000000\r\n"
        "[Aux1]\r\nTitle=Aux 1\r\n[Aux2]\r\nTitle=Aux 2\r\n";
    test::dismissNextDialog();
    WindowBench first = bench({});
    QCOMPARE(content(first.folder).split('\n'), started.split('\n'));

    first.type("txtStart", QStringLiteral("2000000"));
    first.type("txtStop", QStringLiteral("6000000"));
    first.click("optSpeed_2");
    first.click("cmdView_1");
    QVERIFY(first.window->close());
    const QByteArray closed = QByteArray(started)
                                  .replace("\nStart=1000000", "\nStart=2000000")
                                  .replace("\nStop=10000000", "\nStop=6000000")
                                  .replace("Marker 0=0", "Marker 0=1")
                                  .replace("Sweep mode=0", "Sweep mode=2")
                                  .replace("Marker 2=2000000", "Marker 2=2012500")
                                  .replace("Marker 3=0", "Marker 3=0.000")
                                  .replace("Marker 4=0", "Marker 4=0.000");
    QCOMPARE(content(first.folder).split('\n'), closed.split('\n'));

    first.open();
    inNextDialog([](const Hands &hands) {
        hands.click("cmdDefault2");
        hands.click("cmdPort");
        hands.click("optParallelPort_0");
        hands.click("cmdAux");
        hands.click("chkBoxEnableAux1");
        hands.click("cmdApply");
    });
    first.window->findChild<QAction *>(QStringLiteral("mnuConfig"))->trigger();
    const QByteArray steps = "Step 0=10dB;10\r\nStep 1=20dB;20\r\nStep 2=30dB;30\r\nStep 3=40dB;40\r\n"
                             "Step 4=50dB;50\r\nStep 5=60dB;60\r\nStep 6=70dB;70\r\nStep 7=80dB;80\r\n";
    const QByteArray applied =
        "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nDDS Multiplier=6\r\nDDS Xtal freq=30000000\r\n"
        "DDS Max freq=70000000\r\nDDS Min freq=1000\r\nDDS Offset=0\r\nADC Device=10bit\r\nADC Offset=0\r\n"
        "ADC Step=0.00244\r\nADC Channel=1\r\n" +
        QByteArray(closed)
            .mid(closed.indexOf("[Interface1]"))
            .replace("LPT=&H378", "LPT=&H0")
            .replace("Title=Aux 1\r\n", "Title=Aux 1\r\nEnabled=1\r\n" + steps + "Inverse Logic=0\r\n")
            .replace("Title=Aux 2\r\n",
                     "Title=Aux 2\r\nEnabled=0\r\n" + steps + "Inverse Logic=0\r\nPotMax=\r\nPotMin=\r\n");
    QCOMPARE(content(first.folder).split('\n'), applied.split('\n'));
}

void TestFirstRun::settingsWithoutADeviceStayAsTheyAre()
{
    inNextDialog([](const Hands &hands) {
        hands.click("cmdPort");
        QVERIFY(hands.isChecked("optParallelPort_2"));
    });
    const WindowBench started = bench("[Parallel Port]\r\nLPT=&H278\r\n");
    QVERIFY(started.started);
    QVERIFY(readProfileSection(started.folder.iniPath(), QStringLiteral("Interface2")).isEmpty());
}

void TestFirstRun::applyEndsTheProgramAndTheNextStartWorks()
{
    inNextDialog([](const Hands &hands) { hands.click("cmdApply"); });
    WindowBench first = bench({});
    QVERIFY(!first.started);
    QVERIFY(!first.window->isVisible());
    QCOMPARE(first.desktop.boxes.size(), 1);
    QCOMPARE(m_server.takeCalls(), QStringList());
    // The file contains only what the dialog wrote.
    QCOMPARE(first.folder.setting("Calvorn", "Start"), QString());
    QVERIFY(content(first.folder).startsWith("[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\n"));

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
    const WindowBench started = bench("[Config]\r\nDDS Device=AD9999\r\nDDS Max freq=many\r\nADC Device=12bit\r\n");
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
    // The port is closed, and the values in use do not overwrite the new ones.
    QCOMPARE(m_server.takeCalls().last(), QStringLiteral("aLPT.ClosePort()"));
    QCOMPARE(running.folder.setting("Config", "DDS Offset"), QStringLiteral("1"));
    QCOMPARE(running.folder.setting("Calvorn", "Start"), QStringLiteral("1000000"));
    // Destroying the hidden window has no further effect.
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
    // 10 MB of another program's section before our section.
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
    QCOMPARE(started.desktop.boxes.size(), 1);
    QCOMPARE(started.desktop.lastText(),
             QStringLiteral("The settings file %1 is not used: it is not a file.").arg(started.folder.iniPath()));
    // At exit, the path may be a file again. The window has not read that file and must not overwrite it.
    QVERIFY(QDir(started.folder.iniPath()).removeRecursively());
    const QByteArray mine("[Config]\r\nDDS Device=AD9951\r\n");
    QFile file(started.folder.iniPath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(mine);
    file.close();
    QVERIFY(started.window->close());
    QCOMPARE(content(started.folder), mine);
}

QTEST_MAIN(TestFirstRun)
#include "test_first_run.moc"
