// SPDX-License-Identifier: MIT
// Runs calvorn-sweep in its own program folder, as a user or a script would.
#include "tests/support/fake_server_control.h"
#include "tests/support/interface_rows.h"
#include "tests/support/interface_settings.h"
#include "tests/support/locales.h"
#include "tests/support/null_device.h"
#include "tests/support/sweep_tool.h"
#include "tests/support/window_bench.h"

#include <QImage>

#include <csignal>

#include <sys/stat.h>

using namespace calvorn;
using calvorn::test::builtServer;
using calvorn::test::contents;
using calvorn::test::ProgramFolder;
using calvorn::test::Tool;

namespace {

QByteArray fakeSettings()
{
    return "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
           "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n";
}

} // namespace

class TestCalvornSweep : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void itsSweepIsThatOfTheWindow_data() { test::addInterfaceRows(); }
    void itsSweepIsThatOfTheWindow();
    void theResponseIsPrinted();
    void theResponseIsThisText_data();
    void theResponseIsThisText();
    void theResponseIsTheSameOnEveryScale();
    void theScaleIsTaken_data();
    void theScaleIsTaken();
    void theMarkersOfAPictureFollowTheScale_data();
    void theMarkersOfAPictureFollowTheScale();
    void rangeAndSweepsAreTaken();
    void otherSettingsReachTheServerToo();
    void theSettingsAreNeverWritten();
    void missingSettingsAreNotMade();
    void badArguments_data();
    void badArguments();
    void badSettings();
    void aPortThatDoesNotOpen();
    void aRefusal();
    void noAnswerInTime();
    void aBoardThatFails_data();
    void aBoardThatFails();
    void aFileThatCannotBeWritten();
    void whatIsNoFileIsNotReplaced();
    void aSignalLeavesNothing_data();
    void aSignalLeavesNothing();
    void helpAndManualNameEveryOption();
};

void TestCalvornSweep::itsSweepIsThatOfTheWindow()
{
    QFETCH(int, interfaceType);
    Tool tool(test::crystalSettings(static_cast<std::int16_t>(interfaceType)));
    const QStringList files{QStringLiteral("--output"), QStringLiteral("sweep.csv"), QStringLiteral("--picture"),
                            QStringLiteral("sweep.png")};
    QCOMPARE(tool.run(files), 0);
    QCOMPARE(tool.out, tool.inFolder("sweep.csv") + u'\n' + tool.inFolder("sweep.png") + u'\n');
    const QByteArray csv = contents(tool.inFolder("sweep.csv"));
    QCOMPARE(csv.count("\r\n"), 401);
    QCOMPARE(QImage(tool.inFolder("sweep.png")).size(), QSize(1200, 800));
    QTRY_COMPARE(tool.serversRunning(), 0);

    // Imported into the window, the file shows the same curve; exported again, it is unchanged.
    test::WindowBench window(test::FakeServerControl::program(), contents(tool.folder.iniPath()));
    window.desktop.fileChoice = tool.inFolder("sweep.csv");
    window.window->findChild<QAction *>(QStringLiteral("mnuOpenCSV"))->trigger();
    QVERIFY2(window.desktop.boxes.isEmpty(), qPrintable(window.desktop.lastText()));
    const QPolygonF curve = window.find<SweepGraph>("picSweep")->curve();
    QCOMPARE(curve.size(), 400);
    const QList<QByteArray> lines = csv.split('\n');
    double highest = 0.0;
    for (int row = 1; row <= kSweepPoints; ++row) {
        const QList<QByteArray> fields = lines[row].trimmed().split(',');
        QCOMPARE(fields[0].toInt(), row);
        QVERIFY(std::abs(curve[row - 1].y() - fields[3].toDouble()) < 1e-6);
        highest = std::max(highest, fields[3].toDouble());
    }
    QVERIFY2(highest > 200.0, "the crystal must transmit its resonance");
    window.desktop.fileChoice = tool.inFolder("again.csv");
    window.window->findChild<QAction *>(QStringLiteral("mnuSaveCSV"))->trigger();
    QCOMPARE(contents(tool.inFolder("again.csv")), csv);
}

void TestCalvornSweep::theResponseIsPrinted()
{
    Tool tool(ProgramFolder::preparedSettings());
    QCOMPARE(tool.run(), 0);
    const QStringList lines = tool.out.split(u'\n');
    QVERIFY(lines[0].startsWith(QStringLiteral("Peak ")) && lines[0].endsWith(QStringLiteral(" V")));
    QVERIFY(lines[4].startsWith(QStringLiteral("-3 dB bandwidth")));
    // The prepared board measures a 600 kHz wide band-pass filter at 7.1 MHz.
    const auto hertz = [&lines](int line) {
        return lines[line].mid(18).remove(QStringLiteral(" Hz")).remove(u',').trimmed().toDouble();
    };
    QVERIFY2(std::abs(hertz(1) - 7.1e6) < 400e3, qPrintable(lines[1]));
    QVERIFY2(std::abs(hertz(4) - 600e3) < 60e3, qPrintable(lines[4]));
    QVERIFY(tool.out.count(u'*') > 80);
    for (const QString &line : lines)
        QVERIFY2(line.size() <= 80, qPrintable(line));
}

void TestCalvornSweep::theResponseIsThisText_data()
{
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QString>("text");
    QTest::newRow("linear")
        << QStringLiteral("linear")
        << QString::fromLatin1("Peak                         0.839 V\n"
                               "Peak at                 7,072,500 Hz\n"
                               "-3 dB from              6,806,530 Hz\n"
                               "-3 dB to                7,406,374 Hz\n"
                               "-3 dB bandwidth           599,844 Hz\n"
                               "\n"
                               "  0.839 |                              **\n"
                               "        |                             *  *\n"
                               "        |                             *  *\n"
                               "        |                             *  *\n"
                               "  0.629 |                             *  *\n"
                               "        |                             *  *\n"
                               "        |                             *  *\n"
                               "        |                             *  *\n"
                               "  0.420 |                             *   *\n"
                               "        |                             *   *\n"
                               "        |                             *   *\n"
                               "        |                            *    *\n"
                               "  0.210 |                            *    *\n"
                               "        |                            *    *\n"
                               "        |                            *     *\n"
                               "        |                          **      ***\n"
                               "  0.000 |***************************         ***********************************\n"
                               "        +-----------------------------------------------------------------------\n"
                               "         1,000,000                      7,965,000                     14,965,000\n");
    QTest::newRow("1V") << QStringLiteral("1V")
                        << QString::fromLatin1(
                               "Peak                         -1.5 dB\n"
                               "Peak at                 7,072,500 Hz\n"
                               "-3 dB from              6,806,530 Hz\n"
                               "-3 dB to                7,406,374 Hz\n"
                               "-3 dB bandwidth           599,844 Hz\n"
                               "\n"
                               "   -1.5 |                             ****\n"
                               "        |                             *  *\n"
                               "        |                             *   *\n"
                               "        |                            **   *\n"
                               "  -14.6 |                            *    *\n"
                               "        |                            *    **\n"
                               "        |                           **     *\n"
                               "        |                           *      **\n"
                               "  -27.8 |                           *       *\n"
                               "        |                          *        **\n"
                               "        |                         **         **\n"
                               "        |                         *           ***\n"
                               "  -40.9 |                        **            ***\n"
                               "        |  *** ***** *** ***** ***              *******  ****  *********  *** *\n"
                               "        |************************                 ******************************\n"
                               "        | **** *      **** **                     * **   **   * **   **   *  ***\n"
                               "  -54.0 | **** *      **** **                     * **   **   * **   **   *  ***\n"
                               "        +-----------------------------------------------------------------------\n"
                               "         1,000,000                      7,965,000                     14,965,000\n");
}

// The prepared board's noise is reproducible.
void TestCalvornSweep::theResponseIsThisText()
{
    QFETCH(QString, scale);
    QFETCH(QString, text);
    Tool tool(ProgramFolder::preparedSettings());
    QCOMPARE(tool.run({QStringLiteral("--scale"), scale}), 0);
    QCOMPARE(tool.out, text);
    QCOMPARE(tool.errors,
             (QStringList{QStringLiteral("Sweeping from 1,000,000 to 15,000,000 Hz"), QStringLiteral("Sweep 1 of 1")}));
}

void TestCalvornSweep::theResponseIsTheSameOnEveryScale()
{
    QStringList volts;
    Tool tool(ProgramFolder::preparedSettings());
    for (const char *scale : {"linear", "1V", "1V+10dB", "10V", "10V+10dB"}) {
        QCOMPARE(tool.run({QStringLiteral("--scale"), QString::fromLatin1(scale)}), 0);
        QVERIFY(tool.out.section(u'\n', 0, 0).endsWith(volts.isEmpty() ? QStringLiteral(" V") : QStringLiteral(" dB")));
        // All lines except the level, whose unit depends on the scale.
        const QStringList response = tool.out.split(u'\n').mid(1, 4);
        QVERIFY2(response[3].endsWith(QStringLiteral(" Hz")), qPrintable(response[3]));
        if (volts.isEmpty())
            volts = response;
        QCOMPARE(response, volts);
    }
}

void TestCalvornSweep::theScaleIsTaken_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<int>("scale");
    const QStringList names{QStringLiteral("linear"), QStringLiteral("1V"), QStringLiteral("1V+10dB"),
                            QStringLiteral("10V"), QStringLiteral("10V+10dB")};
    for (int scale = 0; scale < names.size(); ++scale) {
        QTest::newRow(qPrintable(names[scale])) << names[scale] << scale;
        if (scale % 2 == 0)
            QTest::addRow("%d", scale) << QString::number(scale) << scale;
    }
    QTest::newRow("small letters") << QStringLiteral("10v+10db") << 4;
}

void TestCalvornSweep::theScaleIsTaken()
{
    QFETCH(QString, option);
    QFETCH(int, scale);
    // The stored scale differs from the option; the file must be as if the window had been closed with this scale.
    const QByteArray stored = "Scale=" + QByteArray::number((scale + 1) % 5);
    Tool tool(ProgramFolder::preparedSettings().replace("Scale=0", stored));
    QCOMPARE(tool.run({QStringLiteral("--output=sweep.csv"), QStringLiteral("--scale"), option}), 0);
    Tool closed(ProgramFolder::preparedSettings().replace("Scale=0", "Scale=" + QByteArray::number(scale)));
    QCOMPARE(closed.run({QStringLiteral("--output=sweep.csv")}), 0);
    QCOMPARE(contents(tool.inFolder("sweep.csv")), contents(closed.inFolder("sweep.csv")));
    QCOMPARE(tool.folder.setting("Calvorn", "Scale"), QString::number((scale + 1) % 5));
}

void TestCalvornSweep::theMarkersOfAPictureFollowTheScale_data()
{
    test::addLocaleRows();
}

void TestCalvornSweep::theMarkersOfAPictureFollowTheScale()
{
    QFETCH(QLocale, locale);
    // M3 and M4 are at 0.5 V and 0.8 V.
    Tool tool(ProgramFolder::preparedSettings());
    tool.setLocale(locale);
    const auto shows = [&](const char *scale, const char *m3, const char *m4) {
        const QString option = QStringLiteral("--scale=") + QString::fromLatin1(scale);
        if (tool.run({QStringLiteral("--picture=sweep.svg"), option}) != 0)
            return false;
        const QString picture = QString::fromUtf8(contents(tool.inFolder("sweep.svg")));
        return picture.contains(test::inLocale(locale, QString::fromLatin1(m3))) &&
               picture.contains(test::inLocale(locale, QString::fromLatin1(m4)));
    };
    QVERIFY(shows("linear", "0.500", "0.800"));
    QVERIFY(shows("1V", "-6.0", "-1.9"));
    QVERIFY(shows("10V+10dB", "-26.0", "-21.9"));
    // 100,000 dB, converted to volts, overflows a double.
    tool.folder.set("Calvorn", "Scale", QStringLiteral("3"));
    tool.folder.set("Calvorn", "Marker 3", QStringLiteral("100000"));
    tool.folder.set("Calvorn", "Marker 4", QStringLiteral("-14"));
    QVERIFY(shows("linear", "1.995", "1.995"));
}

void TestCalvornSweep::rangeAndSweepsAreTaken()
{
    Tool tool(test::crystalSettings(kInterfaceLpt));
    QCOMPARE(tool.run({QStringLiteral("--start"), QStringLiteral("2000000"), QStringLiteral("--stop=2800000"),
                       QStringLiteral("--sweeps"), QStringLiteral("3"), QStringLiteral("--output"),
                       QStringLiteral("sweep.csv")}),
             0);
    const QList<QByteArray> lines = contents(tool.inFolder("sweep.csv")).split('\n');
    QVERIFY(lines[1].startsWith("1,2000000,"));
    QVERIFY(lines[400].startsWith("400,2798000,"));
    QCOMPARE(tool.errors.filter(QStringLiteral(" of 3")).size(), 3);
    // A range that is too small is widened and reported, as in the window.
    QCOMPARE(tool.run({QStringLiteral("--start=2000000"), QStringLiteral("--stop=2000001"),
                       QStringLiteral("--output=sweep.csv")}),
             0);
    QCOMPARE(tool.errors.filter(QStringLiteral("will be set to 2,000,400 Hz")).size(), 1);
}

void TestCalvornSweep::otherSettingsReachTheServerToo()
{
    Tool tool(ProgramFolder::preparedSettings());
    QFile other(tool.inFolder("other.ini"));
    QVERIFY(other.open(QIODevice::WriteOnly));
    QByteArray settings = ProgramFolder::preparedSettings();
    QVERIFY(settings.contains("Device=bandpass"));
    other.write(settings.replace("Device=bandpass", "Device=notch").replace("Start=1000000", "Start=2000000"));
    other.close();
    const QByteArray before = contents(tool.inFolder("other.ini"));
    QCOMPARE(tool.run({QStringLiteral("--settings=other.ini"), QStringLiteral("--output=notch.csv")}), 0);
    QCOMPARE(tool.run({QStringLiteral("--output=bandpass.csv"), QStringLiteral("--start=2000000")}), 0);
    QCOMPARE(contents(tool.inFolder("other.ini")), before);
    // The filters are opposites: far from the centre, one blocks and the other passes.
    const auto amplitude = [&tool](const char *name) {
        return contents(tool.inFolder(name)).split('\n')[1].trimmed().split(',')[3].toDouble();
    };
    QVERIFY(amplitude("notch.csv") > 10.0 * std::max(amplitude("bandpass.csv"), 1.0));
}

void TestCalvornSweep::theSettingsAreNeverWritten()
{
    // Most keys are missing; the window would write them.
    Tool tool("[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\n[Parallel Port]\r\nLPT=0\r\n");
    const QByteArray before = contents(tool.folder.iniPath());
    const QDateTime written = QFileInfo(tool.folder.iniPath()).lastModified();
    const QStringList files = tool.files();
    QCOMPARE(tool.run(), 0);
    QCOMPARE(contents(tool.folder.iniPath()), before);
    QCOMPARE(QFileInfo(tool.folder.iniPath()).lastModified(), written);
    QCOMPARE(tool.files(), files);
}

void TestCalvornSweep::missingSettingsAreNotMade()
{
    Tool tool({});
    const QStringList files = tool.files();
    QCOMPARE(tool.run(), 2);
    QVERIFY2(tool.sentence().endsWith(QStringLiteral("cannot be read: it does not exist.")),
             qPrintable(tool.sentence()));
    QCOMPARE(tool.files(), files);
}

void TestCalvornSweep::badArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    const auto row = [](const char *arguments) {
        QTest::newRow(arguments) << QString::fromLatin1(arguments).split(u' ');
    };
    row("--unknown");
    row("stray");
    row("--start 7.1");
    row("--start -5");
    row("--start 4000000000");
    row("--stop 70000001");
    row("--start 999");
    row("--sweeps 0");
    row("--sweeps many");
    row("--scale");
    row("--scale=");
    row("--scale 5");
    row("--scale -1");
    row("--scale 01");
    row("--scale 10");
    row("--scale logarithmic");
    row("--output");
    row("--output=");
    row("--picture sweep.jpg");
    row("--settings=");
}

void TestCalvornSweep::badArguments()
{
    QFETCH(QStringList, arguments);
    Tool tool(ProgramFolder::preparedSettings());
    QCOMPARE(tool.run(arguments), 1);
    QCOMPARE(tool.errors.size(), 1);
    QVERIFY2(tool.sentence().size() > 10, qPrintable(tool.errors.join(u'\n')));
    QVERIFY(tool.out.isEmpty());
}

void TestCalvornSweep::badSettings()
{
    Tool tool("[Config]\r\nInterface=2\r\nDDS Device=AD1234\r\n");
    QCOMPARE(tool.run(), 2);
    QVERIFY(tool.sentence().contains(QStringLiteral("unsupported")));
    QCOMPARE(tool.run({QStringLiteral("--settings"), QStringLiteral("nowhere.ini")}), 2);
    QVERIFY(tool.sentence().contains(QStringLiteral("nowhere.ini cannot be read")));
    QCOMPARE(tool.run({QStringLiteral("--settings"), QStringLiteral("/")}), 2);
}

void TestCalvornSweep::aPortThatDoesNotOpen()
{
    Tool tool(ProgramFolder::preparedSettings().replace("LPT=0\r\n", "LPT=&H3F0\r\n"));
    QCOMPARE(tool.run({QStringLiteral("--output=sweep.csv")}), 3);
    QVERIFY2(tool.sentence().contains(QStringLiteral("0x3F0")), qPrintable(tool.sentence()));
    QVERIFY(!QFile::exists(tool.inFolder("sweep.csv")));
    Tool serial(test::crystalSettings(kInterfacePic).replace("CommPort=100", "CommPort=77"));
    QCOMPARE(serial.run(), 3);
    QVERIFY2(serial.sentence().contains(QStringLiteral("COM77")), qPrintable(serial.sentence()));
    // Without a server the port cannot be opened either, and the message names the server.
    QFile::remove(tool.inFolder("CalvornAsync"));
    QCOMPARE(tool.run(), 3);
    QVERIFY2(tool.sentence().contains(QStringLiteral("CalvornAsync")), qPrintable(tool.sentence()));
}

void TestCalvornSweep::aRefusal()
{
    Tool tool(fakeSettings(), test::FakeServerControl::program());
    m_server.setRules({QStringLiteral("fail RunSweep")});
    QCOMPARE(tool.run({QStringLiteral("--output=sweep.csv")}), 4);
    QVERIFY2(tool.sentence().contains(QStringLiteral("as told")), qPrintable(tool.sentence()));
    m_server.setRules({QStringLiteral("die RunSweep")});
    QCOMPARE(tool.run({QStringLiteral("--output=sweep.csv")}), 4);
    QVERIFY(!tool.sentence().isEmpty());
    QVERIFY(!QFile::exists(tool.inFolder("sweep.csv")));
}

void TestCalvornSweep::noAnswerInTime()
{
    Tool tool(fakeSettings(), test::FakeServerControl::program());
    m_server.setRules({QStringLiteral("hang RunSweep")});
    QCOMPARE(tool.run({QStringLiteral("--output=sweep.csv")}), 5);
    QVERIFY2(tool.sentence().contains(QStringLiteral("did not answer in time")), qPrintable(tool.sentence()));
    QCOMPARE(tool.serversRunning(), 0);
}

void TestCalvornSweep::aBoardThatFails_data()
{
    QTest::addColumn<std::int16_t>("interfaceType");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("code");
    QTest::newRow("PIC, silent") << kInterfacePic << QStringLiteral("silence") << 5;
    QTest::newRow("MiniVNA, silent") << kInterfaceVna << QStringLiteral("silence") << 5;
    QTest::newRow("PIC, unplugged") << kInterfacePic << QStringLiteral("unplug") << 3;
    QTest::newRow("MiniVNA, unplugged") << kInterfaceVna << QStringLiteral("unplug") << 3;
    QTest::newRow("PIC, refusing") << kInterfacePic << QStringLiteral("refuse") << 4;
}

void TestCalvornSweep::aBoardThatFails()
{
    QFETCH(std::int16_t, interfaceType);
    QFETCH(QString, fault);
    QFETCH(int, code);
    Tool tool(test::crystalSettings(interfaceType, fault));
    // The first sweeps may succeed.
    QCOMPARE(tool.run({QStringLiteral("--sweeps=2000"), QStringLiteral("--output=sweep.csv")}), code);
    QVERIFY2(!tool.sentence().isEmpty(), qPrintable(tool.errors.join(u'\n')));
    QVERIFY(!QFile::exists(tool.inFolder("sweep.csv")));
    QTRY_COMPARE(tool.serversRunning(), 0);
}

void TestCalvornSweep::aFileThatCannotBeWritten()
{
    Tool tool(test::crystalSettings(kInterfaceLpt));
    QCOMPARE(tool.run({QStringLiteral("--output=missing/sweep.csv")}), 6);
    QVERIFY(tool.sentence().contains(QStringLiteral("missing/sweep.csv")));
    QCOMPARE(tool.run({QStringLiteral("--picture=/proc/sweep.png")}), 6);
    QVERIFY(tool.sentence().contains(QStringLiteral("/proc/sweep.png")));
    QVERIFY(tool.out.isEmpty());
}

void TestCalvornSweep::whatIsNoFileIsNotReplaced()
{
    Tool tool(test::crystalSettings(kInterfaceLpt));
    const QByteArray pipe = tool.inFolder("pipe.png").toLocal8Bit();
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    const QString device = test::nullDevice(tool.folder.path());
    QVERIFY(QFile::link(device, tool.inFolder("null.csv")));
    QVERIFY(QDir(tool.folder.path()).mkdir(QStringLiteral("folder.csv")));
    const QStringList before = tool.files();
    for (const char *name : {"--output=null.csv", "--output=folder.csv", "--picture=pipe.png"}) {
        QCOMPARE(tool.run({QString::fromLatin1(name)}), 6);
        const QString path = QString::fromLatin1(name).section(u'=', 1);
        QCOMPARE(tool.sentence(), QStringLiteral("File error: %1: it is not a file").arg(path));
        QVERIFY(tool.out.isEmpty());
        QCOMPARE(tool.files(), before);
    }
    struct stat state = {};
    QVERIFY(lstat(pipe.constData(), &state) == 0 && S_ISFIFO(state.st_mode));
    QCOMPARE(QFile::symLinkTarget(tool.inFolder("null.csv")), device);
    QVERIFY(QFileInfo::exists(device) && !QFileInfo(device).isFile());
}

void TestCalvornSweep::aSignalLeavesNothing_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGKILL") << SIGKILL;
}

void TestCalvornSweep::aSignalLeavesNothing()
{
    QFETCH(int, signal);
    Tool tool(ProgramFolder::preparedSettings());
    const QByteArray old("what was there before");
    QFile csv(tool.inFolder("sweep.csv"));
    QVERIFY(csv.open(QIODevice::WriteOnly));
    csv.write(old);
    csv.close();
    const QStringList files = tool.files();
    const QByteArray settings = contents(tool.folder.iniPath());
    tool.start({QStringLiteral("--sweeps=100000"), QStringLiteral("--output=sweep.csv")});
    QVERIFY(tool.sweepsTwice());
    QCOMPARE(tool.serversRunning(), 1);
    ::kill(static_cast<pid_t>(tool.process.processId()), signal);
    QVERIFY(tool.process.waitForFinished(5000));
    if (signal == SIGKILL)
        QCOMPARE(tool.process.exitStatus(), QProcess::CrashExit);
    else
        QCOMPARE(tool.process.exitCode(), 128 + signal);
    QTRY_COMPARE_WITH_TIMEOUT(tool.serversRunning(), 0, 3000);
    QCOMPARE(tool.files(), files);
    QCOMPARE(contents(tool.inFolder("sweep.csv")), old);
    QCOMPARE(contents(tool.folder.iniPath()), settings);
}

void TestCalvornSweep::helpAndManualNameEveryOption()
{
    Tool tool(ProgramFolder::preparedSettings());
    QCOMPARE(tool.run({QStringLiteral("--version")}), 0);
    QVERIFY(tool.out.startsWith(QStringLiteral("calvorn-sweep 2.")));
    QCOMPARE(tool.run({QStringLiteral("--help")}), 0);
    const QString help = tool.out;
    QString manual = QString::fromUtf8(contents(QStringLiteral(CALVORN_SOURCE_DIR "/docs/man/calvorn-sweep.1")));
    // roff escapes a literal hyphen with a backslash.
    manual.remove(u'\\');
    for (const char *option :
         {"settings", "start", "stop", "sweeps", "average", "scale", "input", "reference", "results", "fixture",
          "limits", "format", "output", "picture", "traces", "listen", "help", "version"}) {
        const QString name = QStringLiteral("--") + QString::fromLatin1(option);
        QVERIFY2(help.contains(name), option);
        QVERIFY2(manual.contains(name), option);
    }
    for (const char *scale : {"linear", "1V", "1V+10dB", "10V", "10V+10dB"}) {
        QVERIFY2(help.contains(QString::fromLatin1(scale)), scale);
        QVERIFY2(manual.contains(QStringLiteral(".B %1\n").arg(QString::fromLatin1(scale))), scale);
    }
    for (int code = 0; code <= 8; ++code)
        QVERIFY2(manual.contains(QStringLiteral(".B %1\n").arg(code)), qPrintable(QString::number(code)));
}

QTEST_MAIN(TestCalvornSweep)
#include "test_calvorn_sweep.moc"
