// SPDX-License-Identifier: MIT
#include "core/settings.h"

#include "platform/profile_file.h"
#include "tests/support/locales.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

class TestSettings : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    Configuration m_configuration;
    WindowSettings m_window;
    QStringList m_faults;
    int m_firstRuns = 0;
    bool m_goesOnAfterFirstRun = true;

    LoadOutcome load(const QByteArray &file, bool writeFirst = true)
    {
        m_configuration = Configuration();
        m_window = WindowSettings();
        m_configuration.iniPath = m_folder.filePath(QStringLiteral("Calvorn.ini"));
        if (writeFirst) {
            QFile ini(m_configuration.iniPath);
            if (!ini.open(QIODevice::WriteOnly))
                qFatal("cannot write the test's settings file");
            ini.write(file);
        }
        SettingsLoader loader(m_configuration, m_window);
        m_firstRuns = 0;
        loader.firstRun = [this] {
            ++m_firstRuns;
            return m_goesOnAfterFirstRun;
        };
        const LoadOutcome outcome = loader.load();
        if (outcome == LoadOutcome::Loaded)
            loader.loadMarkers();
        m_faults = loader.faults();
        return outcome;
    }

    QByteArray content() const
    {
        QFile file(m_configuration.iniPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

private slots:
    void init() { QFile::remove(m_folder.filePath(QStringLiteral("Calvorn.ini"))); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aMissingOrEmptyFileGivesTheDefaultsAndIsFilled_data();
    void aMissingOrEmptyFileGivesTheDefaultsAndIsFilled();
    void everyKeyIsReadIntoItsField();
    void theScaleTenReadsAsThree();
    void frequenciesAreClamped();
    void aSlowComputerHasNoUsbInterface();
    void deviceNames();
    void theFirstRunIsAnnounced();
    void theFirstRunCanEndTheProgram();
    void realsOfEitherSeparator_data() { test::addLocaleRows(); }
    void realsOfEitherSeparator();
    void theAttenuatorIsCleared();
    void badTextsGetTheDefaultAndStay();
    void savedSettingsComeBack_data() { test::addLocaleRows(); }
    void savedSettingsComeBack();
    void theWholeFileAfterAShutdown_data();
    void theWholeFileAfterAShutdown();
    void savingAddsWhatIsMissingInItsOrder();
    void whatCannotBeReadStaysUntilItIsChanged();
    void everyTextThatCannotBeReadIsNamed();
    void savingKeepsTheOtherKeys();
    void anUnwritableFileIsReportedToTheCallerOnly();
};

void TestSettings::aMissingOrEmptyFileGivesTheDefaultsAndIsFilled_data()
{
    QTest::addColumn<bool>("there");
    QTest::newRow("missing") << false;
    QTest::newRow("empty") << true;
}

void TestSettings::aMissingOrEmptyFileGivesTheDefaultsAndIsFilled()
{
    QFETCH(bool, there);
    QCOMPARE(load({}, there), LoadOutcome::Loaded);
    QCOMPARE(m_firstRuns, 1);
    QCOMPARE(m_configuration.interfaceType, std::int16_t{2});
    QCOMPARE(m_configuration.ddsDevice, QStringLiteral("AD9850"));
    QCOMPARE(m_configuration.ddsXtalFreq, 80000000);
    QCOMPARE(m_configuration.ddsMaxFreq, 60000000);
    QCOMPARE(m_configuration.ddsMinFreq, 10);
    QCOMPARE(m_configuration.adcDevice, QStringLiteral("10bit"));
    QCOMPARE(m_configuration.adcOffset, 5.0F);
    QCOMPARE(m_configuration.adcStep, 0.0F);
    QCOMPARE(m_configuration.startFreq, 1000000);
    QCOMPARE(m_configuration.stopFreq, 10000000);
    QCOMPARE(m_configuration.lptAddress, std::int16_t{888});
    QCOMPARE(m_configuration.commPort, std::int16_t{6});
    QCOMPARE(m_configuration.serialSettings, QStringLiteral("115200,N,8,1"));
    QCOMPARE(m_configuration.maxScaleVolt, 1.5F);
    QCOMPARE(m_configuration.maxScaleDb, -40);
    QCOMPARE(m_configuration.measuringMode, std::int16_t{1});
    // Every key is written; within a section, the keys are in the order in which they are read.
    QCOMPARE(content(),
             QByteArray("[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nDDS Multiplier=1\r\n"
                        "DDS Xtal freq=80000000\r\nDDS Max freq=60000000\r\nDDS Min freq=10\r\nDDS Offset=0\r\n"
                        "ADC Device=10bit\r\nADC Offset=5\r\nADC Step=0\r\nADC Channel=1\r\n"
                        "[Debug]\r\nLog=0\r\nUSB API=0\r\nSlow CPU=0\r\n"
                        "[Parallel Port]\r\nLPT=&H378\r\n"
                        "[Serial Port]\r\nCommPort=6\r\nSettings=115200,N,8,1\r\n"
                        "[Calvorn]\r\nScale=0\r\nStart=1000000\r\nStop=10000000\r\nMarker 0=0\r\n"
                        "Max scaleV=1.5\r\nMax scaleDb=-40\r\nSweep mode=0\r\nCursor mode=0\r\nAux_1=0\r\n"
                        "Aux_2=0\r\nPot_2=0\r\nMarker 3=0\r\nMarker 4=0\r\nMarker 1=1000000\r\n"
                        "Marker 2=2000000\r\n"));
    QVERIFY(m_faults.isEmpty());
}

void TestSettings::everyKeyIsReadIntoItsField()
{
    const QByteArray file(
        "[Config]\r\nInterface=1\r\nDDS Device=AD9951\r\nDDS Multiplier=20\r\nDDS Xtal freq=25000000\r\n"
        "DDS Max freq=180000000\r\nDDS Min freq=2000\r\nDDS Offset=-1.5\r\nADC Device=8bit\r\nADC Offset=0.25\r\n"
        "ADC Step=0.5\r\nADC Channel=3\r\n[Debug]\r\nLog=1\r\nUSB API=1\r\nSlow CPU=-4\r\n"
        "[Parallel Port]\r\nLPT=&H278\r\n[Serial Port]\r\nCommPort=7\r\nSettings=9600,E,7,2\r\n"
        "[Calvorn]\r\nScale=2\r\nStart=3000000\r\nStop=4000000\r\nMarker 0=1\r\nMax scaleV=2.5\r\n"
        "Max scaleDb=-70\r\nSweep mode=2\r\nCursor mode=1\r\nAux_1=11\r\nAux_2=12\r\nPot_2=13\r\n"
        "Marker 3=-3.5\r\nMarker 4=-4.5\r\nMarker 1=3100000\r\nMarker 2=3200000\r\n");
    QCOMPARE(load(file), LoadOutcome::Loaded);
    const Configuration &c = m_configuration;
    QCOMPARE(c.interfaceType, std::int16_t{1});
    QCOMPARE(c.ddsDevice, QStringLiteral("AD9951"));
    QCOMPARE(c.ddsMultiplier, std::int16_t{20});
    QCOMPARE(c.ddsXtalFreq, 25000000);
    QCOMPARE(c.ddsMaxFreq, 180000000);
    QCOMPARE(c.ddsMinFreq, 2000);
    QCOMPARE(c.ddsOffset, -1.5);
    QCOMPARE(c.adcDevice, QStringLiteral("8bit"));
    QCOMPARE(c.adcOffset, 0.25F);
    QCOMPARE(c.adcStep, 0.5F);
    QCOMPARE(c.measuringMode, std::int16_t{3});
    QVERIFY(c.logDebug);
    QVERIFY(c.usbApi);
    QCOMPARE(c.slowCpu, -4);
    QCOMPARE(c.lptAddress, std::int16_t{632});
    QCOMPARE(c.commPort, std::int16_t{7});
    QCOMPARE(c.serialSettings, QStringLiteral("9600,E,7,2"));
    QCOMPARE(c.scaleType, std::int16_t{2});
    QCOMPARE(c.startFreq, 3000000);
    QCOMPARE(c.stopFreq, 4000000);
    QCOMPARE(m_window.markerIndex, std::int16_t{1});
    QCOMPARE(c.maxScaleVolt, 2.5F);
    QCOMPARE(c.maxScaleDb, -70);
    QCOMPARE(c.sweepSpeed, std::int16_t{2});
    QCOMPARE(c.cursorMode, std::int16_t{1});
    QCOMPARE(c.aux1, std::int16_t{11});
    QCOMPARE(c.aux2, std::int16_t{12});
    QCOMPARE(c.pot2, std::int16_t{13});
    QCOMPARE(m_window.marker1, QStringLiteral("3100000"));
    QCOMPARE(m_window.marker2, QStringLiteral("3200000"));
    QCOMPARE(m_window.marker3, QStringLiteral("-3.5"));
    QCOMPARE(m_window.marker4, QStringLiteral("-4.5"));
    QVERIFY(m_faults.isEmpty());
    // Reading never rewrites an existing key.
    QCOMPARE(content(), file);
}

void TestSettings::theScaleTenReadsAsThree()
{
    load("[Calvorn]\r\nScale=10\r\n");
    QCOMPARE(m_configuration.scaleType, std::int16_t{3});
    load("[Calvorn]\r\nScale=4\r\n");
    QCOMPARE(m_configuration.scaleType, std::int16_t{4});
}

void TestSettings::frequenciesAreClamped()
{
    load("[Calvorn]\r\nStart=70000000\r\nStop=70000000\r\n");
    QCOMPARE(m_configuration.startFreq, 10);
    QCOMPARE(m_configuration.stopFreq, 60000000);
    load("[Calvorn]\r\nStart=5\r\nStop=5\r\n");
    QCOMPARE(m_configuration.startFreq, 10);
    QCOMPARE(m_configuration.stopFreq, 5);
}

void TestSettings::aSlowComputerHasNoUsbInterface()
{
    load("[Debug]\r\nUSB API=1\r\nSlow CPU=1\r\n");
    QVERIFY(!m_configuration.usbApi);
    load("[Debug]\r\nUSB API=True\r\nSlow CPU=0\r\n");
    QVERIFY(m_configuration.usbApi);
}

void TestSettings::deviceNames()
{
    QCOMPARE(load("[Config]\r\nDDS Device=AD98\r\n"), LoadOutcome::Loaded);
    QCOMPARE(load("[Config]\r\nDDS Device=9851\r\n"), LoadOutcome::Loaded);
    QCOMPARE(load("[Config]\r\nDDS Device=AD9850AD\r\n"), LoadOutcome::Loaded);
    QCOMPARE(load("[Config]\r\nDDS Device=ad9850\r\n"), LoadOutcome::UnknownDdsDevice);
    QCOMPARE(load("[Config]\r\nDDS Device=AD9852\r\n"), LoadOutcome::UnknownDdsDevice);
    QCOMPARE(load("[Config]\r\nDDS Device=AD9850\r\nADC Device=bit\r\n"), LoadOutcome::Loaded);
    QCOMPARE(load("[Config]\r\nDDS Device=AD9850\r\nADC Device=12bit\r\n"), LoadOutcome::UnknownAdcDevice);
}

void TestSettings::theFirstRunIsAnnounced()
{
    load({}, false);
    QCOMPARE(m_firstRuns, 1);
    QCOMPARE(m_configuration.msgResult, std::int16_t{0});
    load("[Config]\r\nDDS Device=AD9850\r\n");
    QCOMPARE(m_firstRuns, 0);
    QVERIFY(m_configuration.msgResult != 0);
}

void TestSettings::theFirstRunCanEndTheProgram()
{
    m_goesOnAfterFirstRun = false;
    QCOMPARE(load("[Config]\r\nInterface=3\r\n"), LoadOutcome::Ended);
    m_goesOnAfterFirstRun = true;
    QCOMPARE(content(), QByteArray("[Config]\r\nInterface=3\r\n"));
}

void TestSettings::realsOfEitherSeparator()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    for (const char *text : {"0,0048", "0.0048"}) {
        load(QByteArray("[Config]\r\nADC Step=") + text + "\r\nDDS Offset=" + text +
             "\r\n[Calvorn]\r\nMarker 3=" + text + "\r\n");
        QCOMPARE(m_configuration.adcStep, 0.0048F);
        QCOMPARE(m_configuration.ddsOffset, 0.0048);
        QCOMPARE(m_window.marker3, test::inLocale(locale, QStringLiteral("0.0048")));
        // Real-number defaults are written with a decimal point, which every locale accepts.
        QCOMPARE(m_configuration.maxScaleVolt, 1.5F);
    }
}

void TestSettings::theAttenuatorIsCleared()
{
    load("[Attenuator]\r\na=1\r\n[Config]\r\nDDS Device=AD9850\r\n");
    QCOMPARE(readProfileString(m_configuration.iniPath, QStringLiteral("Attenuator"), QStringLiteral("a")), QString());
}

void TestSettings::badTextsGetTheDefaultAndStay()
{
    QCOMPARE(load("[Config]\r\nDDS Device=AD9850\r\nDDS Xtal freq=many\r\nADC Step=1e400\r\n"
                  "[Serial Port]\r\nCommPort=99999\r\n"),
             LoadOutcome::Loaded);
    QCOMPARE(m_configuration.ddsXtalFreq, 80000000);
    QCOMPARE(m_configuration.adcStep, 0.0F);
    QCOMPARE(m_configuration.commPort, std::int16_t{6});
    QCOMPARE(m_faults.size(), 3);
    QVERIFY2(m_faults[0].contains(QStringLiteral("[Config] \"DDS Xtal freq\"")) &&
                 m_faults[0].contains(QStringLiteral("many")),
             qPrintable(m_faults[0]));
    QVERIFY(m_faults[2].contains(QStringLiteral("99999")));
    QVERIFY(content().contains("DDS Xtal freq=many\r\n"));
    QVERIFY(content().contains("CommPort=99999\r\n"));
    load("[Config]\r\nDDS Device=AD9850\r\n[Calvorn]\r\nMarker 1=abc\r\nMarker 3=x\r\nMarker 4=2.5\r\n");
    QCOMPARE(m_faults.size(), 2);
    QCOMPARE(m_window.marker1, QStringLiteral("1000000"));
    QCOMPARE(m_window.marker3, QStringLiteral("0"));
    QCOMPARE(m_window.marker4, QStringLiteral("2.5"));
}

void TestSettings::savedSettingsComeBack()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    load("[Config]\r\nDDS Device=AD9851\r\n");
    m_configuration.startFreq = 2000000;
    m_configuration.stopFreq = 3000000;
    m_configuration.maxScaleVolt = 2.25F;
    m_configuration.maxScaleDb = -60;
    m_configuration.scaleType = 4;
    m_configuration.sweepSpeed = 2;
    m_configuration.aux1 = 5;
    m_configuration.aux2 = 250;
    m_configuration.pot2 = 77;
    m_configuration.ddsOffset = -12.5;
    m_configuration.adcOffset = 0.125F;
    m_window.markerIndex = 3;
    m_window.marker1 = test::inLocale(locale, QStringLiteral("2,100,000"));
    m_window.marker2 = QStringLiteral("nonsense");
    m_window.marker3 = test::inLocale(locale, QStringLiteral("-3.5"));
    m_window.marker4 = QString();
    QVERIFY(saveSettings(m_configuration, m_window));
    QCOMPARE(readProfileString(m_configuration.iniPath, QStringLiteral("Calvorn"), QStringLiteral("Marker 1")),
             QStringLiteral("2100000"));
    QCOMPARE(readProfileString(m_configuration.iniPath, QStringLiteral("Calvorn"), QStringLiteral("Max scaleV")),
             test::inLocale(locale, QStringLiteral("2.25")));

    const QByteArray saved = content();
    load(saved);
    QCOMPARE(m_configuration.startFreq, 2000000);
    QCOMPARE(m_configuration.stopFreq, 3000000);
    QCOMPARE(m_configuration.maxScaleVolt, 2.25F);
    QCOMPARE(m_configuration.maxScaleDb, -60);
    QCOMPARE(m_configuration.scaleType, std::int16_t{4});
    QCOMPARE(m_configuration.sweepSpeed, std::int16_t{2});
    QCOMPARE(m_configuration.aux1, std::int16_t{5});
    QCOMPARE(m_configuration.aux2, std::int16_t{250});
    QCOMPARE(m_configuration.pot2, std::int16_t{77});
    QCOMPARE(m_configuration.ddsOffset, -12.5);
    QCOMPARE(m_configuration.adcOffset, 0.125F);
    QCOMPARE(m_window.markerIndex, std::int16_t{3});
    QCOMPARE(m_window.marker1, QStringLiteral("2100000"));
    QCOMPARE(m_window.marker2, QStringLiteral("0"));
    QCOMPARE(m_window.marker3, test::inLocale(locale, QStringLiteral("-3.5")));
    QCOMPARE(m_window.marker4, QStringLiteral("0"));
    QVERIFY(m_faults.isEmpty());
}

void TestSettings::theWholeFileAfterAShutdown_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QByteArray>("separator");
    QTest::newRow("C") << QLocale::c() << QByteArray(".");
    QTest::newRow("en_US") << QLocale(QStringLiteral("en_US")) << QByteArray(".");
    QTest::newRow("it_IT") << QLocale(QStringLiteral("it_IT")) << QByteArray(",");
    QTest::newRow("fr_FR") << QLocale(QStringLiteral("fr_FR")) << QByteArray(",");
}

// All fields differ from the file, but only some of them are saved.
void TestSettings::theWholeFileAfterAShutdown()
{
    QFETCH(QLocale, locale);
    QFETCH(QByteArray, separator);
    QLocale::setDefault(locale);
    load({});
    Configuration &c = m_configuration;
    c.interfaceType = 1;
    c.serialSettings = QStringLiteral("9600,E,7,2");
    c.lptAddress = 632;
    c.commPort = 9;
    c.ddsDevice = QStringLiteral("AD9951");
    c.ddsMultiplier = 20;
    c.ddsXtalFreq = 25000000;
    c.ddsMaxFreq = 1;
    c.ddsMinFreq = 2;
    c.ddsOffset = -12.5;
    c.adcDevice = QStringLiteral("8bit");
    c.adcOffset = 0.125F;
    c.adcStep = 0.25F;
    c.maxScaleVolt = 2.25F;
    c.maxScaleDb = -60;
    c.aux1 = 5;
    c.aux2 = 250;
    c.pot2 = 77;
    c.scaleType = 4;
    c.startFreq = 2000000;
    c.stopFreq = 3000000;
    c.sweepSpeed = 2;
    c.cursorMode = 1;
    c.usbApi = c.logDebug = true;
    c.slowCpu = 3;
    m_window.markerIndex = 3;
    m_window.marker1 = QStringLiteral("2100000");
    m_window.marker2 = QStringLiteral("2200000");
    m_window.marker3 = QStringLiteral("-3") + QString::fromLatin1(separator) + u'5';
    m_window.marker4 = QStringLiteral("-4");
    QVERIFY(saveSettings(m_configuration, m_window));
    QByteArray expected("[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nDDS Multiplier=1\r\n"
                        "DDS Xtal freq=80000000\r\nDDS Max freq=60000000\r\nDDS Min freq=10\r\nDDS Offset=-12.5\r\n"
                        "ADC Device=10bit\r\nADC Offset=0.125\r\nADC Step=0\r\nADC Channel=1\r\n"
                        "[Debug]\r\nLog=0\r\nUSB API=0\r\nSlow CPU=0\r\n"
                        "[Parallel Port]\r\nLPT=&H378\r\n"
                        "[Serial Port]\r\nCommPort=6\r\nSettings=115200,N,8,1\r\n"
                        "[Calvorn]\r\nScale=4\r\nStart=2000000\r\nStop=3000000\r\nMarker 0=3\r\n"
                        "Max scaleV=2.25\r\nMax scaleDb=-60\r\nSweep mode=2\r\nCursor mode=0\r\nAux_1=5\r\n"
                        "Aux_2=250\r\nPot_2=77\r\nMarker 3=-3.5\r\nMarker 4=-4\r\nMarker 1=2100000\r\n"
                        "Marker 2=2200000\r\n");
    QCOMPARE(content(), expected.replace('.', separator));
}

void TestSettings::savingAddsWhatIsMissingInItsOrder()
{
    m_configuration = Configuration();
    m_configuration.iniPath = m_folder.filePath(QStringLiteral("Calvorn.ini"));
    m_window = WindowSettings();
    QVERIFY(saveSettings(m_configuration, m_window));
    QCOMPARE(content(), QByteArray("[Calvorn]\r\nStart=0\r\nStop=0\r\nMarker 0=0\r\nMarker 1=0\r\nMarker 2=0\r\n"
                                   "Marker 3=0\r\nMarker 4=0\r\nMax scaleV=0\r\nMax scaleDb=0\r\nScale=0\r\n"
                                   "Sweep mode=0\r\nAux_1=0\r\nAux_2=0\r\nPot_2=0\r\n"
                                   "[Config]\r\nDDS Offset=0\r\nADC Offset=0\r\n"));
}

void TestSettings::whatCannotBeReadStaysUntilItIsChanged()
{
    const QByteArray file("[Config]\nDDS Device=AD9850\nDDS Offset=x\nADC Offset=y\n[Calvorn]\nScale=z\nStart=a\n"
                          "Stop=b\nMarker 0=c\nMax scaleV=d\nMax scaleDb=e\nSweep mode=f\nAux_1=g\nAux_2=h\n"
                          "Pot_2=i\nMarker 1=j\nMarker 2=k\nMarker 3=l\nMarker 4=m\n");
    load(file);
    SettingsLoader loader(m_configuration, m_window, SettingReader::Defaults::KeepOut);
    QCOMPARE(loader.load(), LoadOutcome::Loaded);
    loader.loadMarkers();
    const QVector<ProfileEntry> unreadable = loader.unreadableEntries();
    QCOMPARE(unreadable.size(), 16);
    const QByteArray before = content();
    QVERIFY(saveSettings(m_configuration, m_window, unreadable));
    QCOMPARE(content(), before);
    m_configuration.stopFreq = 3;
    m_window.marker3 = QStringLiteral("4");
    QVERIFY(saveSettings(m_configuration, m_window, unreadable));
    QCOMPARE(content(), QByteArray(before).replace("Stop=b", "Stop=3").replace("Marker 3=l", "Marker 3=4"));
}

// The faults are listed in the order in which the keys are read.
void TestSettings::everyTextThatCannotBeReadIsNamed()
{
    load("[Config]\nInterface=?\nDDS Device=AD9850\nDDS Multiplier=?\nDDS Xtal freq=?\nDDS Max freq=?\n"
         "DDS Min freq=?\nDDS Offset=?\nADC Device=10bit\nADC Offset=?\nADC Step=?\nADC Channel=?\n"
         "[Debug]\nLog=?\nUSB API=?\nSlow CPU=?\n[Parallel Port]\nLPT=?\n[Serial Port]\nCommPort=?\n"
         "[Calvorn]\nScale=?\nStart=?\nStop=?\nMarker 0=?\nMax scaleV=?\nMax scaleDb=?\nSweep mode=?\n"
         "Cursor mode=?\nAux_1=?\nAux_2=?\nPot_2=?\nMarker 3=?\nMarker 4=?\nMarker 1=?\nMarker 2=?\n");
    const QString middle = QStringLiteral(": Type mismatch: \"?\". ");
    const auto takes = [&](const char *key, const char *fallback) {
        return QString::fromLatin1(key) + middle +
               QStringLiteral("The default %1 is used.").arg(QString::fromLatin1(fallback));
    };
    QCOMPARE(m_faults,
             (QStringList{takes("[Config] \"Interface\"", "2"),
                          takes("[Debug] \"Log\"", "0"),
                          takes("[Debug] \"USB API\"", "0"),
                          takes("[Debug] \"Slow CPU\"", "0"),
                          takes("[Config] \"DDS Multiplier\"", "1"),
                          takes("[Config] \"DDS Xtal freq\"", "80000000"),
                          takes("[Config] \"DDS Max freq\"", "60000000"),
                          takes("[Config] \"DDS Min freq\"", "10"),
                          takes("[Config] \"DDS Offset\"", "0"),
                          takes("[Config] \"ADC Offset\"", "5"),
                          takes("[Config] \"ADC Step\"", "0"),
                          takes("[Config] \"ADC Channel\"", "1"),
                          QStringLiteral("[Parallel Port] \"LPT\"") + middle + QStringLiteral("No port is opened."),
                          takes("[Serial Port] \"CommPort\"", "6"),
                          takes("[Calvorn] \"Scale\"", "0"),
                          takes("[Calvorn] \"Start\"", "1000000"),
                          takes("[Calvorn] \"Stop\"", "10000000"),
                          takes("[Calvorn] \"Marker 0\"", "0"),
                          takes("[Calvorn] \"Max scaleV\"", "1.5"),
                          takes("[Calvorn] \"Max scaleDb\"", "-40"),
                          takes("[Calvorn] \"Sweep mode\"", "0"),
                          takes("[Calvorn] \"Cursor mode\"", "0"),
                          takes("[Calvorn] \"Aux_1\"", "0"),
                          takes("[Calvorn] \"Aux_2\"", "0"),
                          takes("[Calvorn] \"Pot_2\"", "0"),
                          takes("[Calvorn] \"Marker 3\"", "0"),
                          takes("[Calvorn] \"Marker 4\"", "0"),
                          takes("[Calvorn] \"Marker 1\"", "1000000"),
                          takes("[Calvorn] \"Marker 2\"", "2000000")}));
    QCOMPARE(m_configuration.lptAddress, std::int16_t{-1});
    QCOMPARE(m_configuration.interfaceType, std::int16_t{2});
    QCOMPARE(m_configuration.stopFreq, 10000000);
    QCOMPARE(m_window.marker2, QStringLiteral("2000000"));
}

void TestSettings::savingKeepsTheOtherKeys()
{
    load("; mine\r\n[Config]\r\nDDS Device=AD9851\r\nCustom=1\r\n[Calvorn]\r\nCursor mode=1\r\n");
    m_configuration.cursorMode = 0;
    QVERIFY(saveSettings(m_configuration, m_window));
    QVERIFY(content().startsWith("; mine\r\n[Config]\r\nDDS Device=AD9851\r\nCustom=1\r\n"));
    QVERIFY(content().contains("Cursor mode=1\r\n"));
}

void TestSettings::anUnwritableFileIsReportedToTheCallerOnly()
{
    m_configuration = Configuration();
    m_configuration.iniPath = m_folder.filePath(QStringLiteral("missing/Calvorn.ini"));
    SettingsLoader loader(m_configuration, m_window);
    QCOMPARE(loader.load(), LoadOutcome::Loaded);
    QCOMPARE(m_configuration.ddsDevice, QStringLiteral("AD9850"));
    QVERIFY(!saveSettings(m_configuration, m_window));
}

QTEST_APPLESS_MAIN(TestSettings)
#include "test_settings.moc"
