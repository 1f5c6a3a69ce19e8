// SPDX-License-Identifier: MIT
// Tests reading and writing the detector's law in the settings file, with invalid entries; a linear law writes nothing.
#include "core/detector_settings.h"

#include "core/settings.h"
#include "tests/support/detector_laws.h"
#include "tests/support/locales.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;
using calvorn::test::tableLaw;

namespace {

constexpr const char *kPlain = "[Config]\r\nDDS Device=AD9850\r\nADC Device=10bit\r\n";

} // namespace

class TestDetectorSettings : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void silenceIsLinear();
    void aLogarithmicDetectorIsRead();
    void aTableIsRead();
    void damageIsToldOnceAndLinear_data();
    void damageIsToldOnceAndLinear();
    void aLawThatIsNotInForceHarmsNobody();
    void writtenAndReadAgain_data() { test::addLocaleRows(); }
    void writtenAndReadAgain();
    void fewerPointsEmptyTheOthers();
    void aDamagedTableStaysInTheFile();
    void slopesAtTheirEnds_data();
    void slopesAtTheirEnds();
    void theSettingsLoaderReadsIt();

private:
    Profile write(const QByteArray &content) const
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write the test's settings");
        file.close();
        return Profile(path());
    }
    QString path() const { return m_folder.filePath(QStringLiteral("Calvorn.ini")); }

    QTemporaryDir m_folder;
};

void TestDetectorSettings::silenceIsLinear()
{
    QStringList faults;
    const Profile profile = write(kPlain);
    const DetectorLaw law = readDetectorLaw(profile, faults);
    QCOMPARE(law.kind, DetectorLaw::Kind::Linear);
    QVERIFY(faults.isEmpty());
    QVERIFY(detectorLawEntries(law, profile).isEmpty());
    QVERIFY(readDetectorLaw(Profile(m_folder.filePath(QStringLiteral("none.ini"))), faults) == DetectorLaw());
    QVERIFY(faults.isEmpty());
}

void TestDetectorSettings::aLogarithmicDetectorIsRead()
{
    QStringList faults;
    const DetectorLaw law =
        readDetectorLaw(write("[Config]\r\nADC Law= LOG \r\n[Detector]\r\nSlope=-24.5\r\nIntercept=21,5\r\n"), faults);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    QCOMPARE(law.kind, DetectorLaw::Kind::Log);
    QCOMPARE(law.slope, -24.5);
    QCOMPARE(law.intercept, 21.5);
    // The defaults match the first preset.
    const DetectorLaw bare = readDetectorLaw(write("[Config]\r\nADC Law=log\r\n"), faults);
    QCOMPARE(bare.slope, 25.0);
    QCOMPARE(bare.intercept, -84.0);
}

void TestDetectorSettings::aTableIsRead()
{
    QStringList faults;
    const DetectorLaw law =
        readDetectorLaw(write("[Config]\r\nADC Law=table\r\n[Detector]\r\nPoint 1=0.01;-30\r\nPoint 2=0,2;-10.5\r\n"
                              "Point 3=1;5\r\nPoint 33=x\r\n"),
                        faults);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    QVERIFY(law == tableLaw({{0.01, -30.0}, {0.2, -10.5}, {1.0, 5.0}}));
}

void TestDetectorSettings::damageIsToldOnceAndLinear_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("place");
    const QByteArray table = "[Config]\r\nADC Law=table\r\n[Detector]\r\n";
    QTest::newRow("a law that is none") << QByteArray("[Config]\r\nADC Law=cubic\r\n") << "[Config] \"ADC Law\"";
    QTest::newRow("a slope that is no number")
        << QByteArray("[Config]\r\nADC Law=log\r\n[Detector]\r\nSlope=steep\r\n") << "[Detector] \"Slope\"";
    QTest::newRow("a slope of nothing") << QByteArray("[Config]\r\nADC Law=log\r\n[Detector]\r\nSlope=0\r\n")
                                        << "[Detector] \"Slope\"";
    QTest::newRow("an intercept that is no number")
        << QByteArray("[Config]\r\nADC Law=log\r\n[Detector]\r\nIntercept=x\r\n") << "[Detector] \"Intercept\"";
    QTest::newRow("no table") << table << "[Detector] \"Point 1\"";
    QTest::newRow("a table of one") << table + "Point 1=0.1;-30\r\n"
                                    << "[Detector] \"Point 2\"";
    QTest::newRow("half a point") << table + "Point 1=0.1;-30\r\nPoint 2=0.2\r\nPoint 3=0.3;-10\r\n"
                                  << "[Detector] \"Point 2\"";
    QTest::newRow("words") << table + "Point 1=0.1;-30\r\nPoint 2=a;b\r\n"
                           << "[Detector] \"Point 2\"";
    QTest::newRow("levels that turn") << table + "Point 1=0.1;-30\r\nPoint 2=0.2;-20\r\nPoint 3=0.3;-25\r\n"
                                      << "[Detector] \"Point 3\"";
    QTest::newRow("levels that stand") << table + "Point 1=0.1;-30\r\nPoint 2=0.2;-30\r\n"
                                       << "[Detector] \"Point 2\"";
    QTest::newRow("volts that turn") << table + "Point 1=0.2;-30\r\nPoint 2=0.1;-20\r\n"
                                     << "[Detector] \"Point 2\"";
    QTest::newRow("a hole") << table + "Point 1=0.1;-30\r\nPoint 2=0.2;-20\r\nPoint 4=0.4;-10\r\n"
                            << "[Detector] \"Point 3\"";
    QTest::newRow("a hole before the last of all points")
        << table + "Point 1=0.1;-30\r\nPoint 2=0.2;-20\r\nPoint 32=0.4;-10\r\n"
        << "[Detector] \"Point 3\"";
    QTest::newRow("no first point") << table + "Point 2=0.2;-20\r\nPoint 3=0.4;-10\r\n"
                                    << "[Detector] \"Point 1\"";
    QTest::newRow("a level that is none") << table + "Point 1=0.1;-30\r\nPoint 2=0.2;201\r\n"
                                          << "[Detector] \"Point 2\"";
    QTest::newRow("volts that are none") << table + "Point 1=0.1;-30\r\nPoint 2=1001;20\r\n"
                                         << "[Detector] \"Point 2\"";
    const QByteArray log = "[Config]\r\nADC Law=log\r\n[Detector]\r\n";
    for (const char *slope : {"0.99", "-0.99", "1e-300", "1000.1", "-1000.1"})
        QTest::addRow("a slope of %s", slope) << log + "Slope=" + slope + "\r\n"
                                              << "[Detector] \"Slope\"";
    for (const char *intercept : {"200.1", "-200.1", "1e300"})
        QTest::addRow("an intercept of %s", intercept) << log + "Intercept=" + intercept + "\r\n"
                                                       << "[Detector] \"Intercept\"";
}

void TestDetectorSettings::damageIsToldOnceAndLinear()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, place);
    QStringList faults;
    const DetectorLaw law = readDetectorLaw(write(settings), faults);
    QCOMPARE(law.kind, DetectorLaw::Kind::Linear);
    QCOMPARE(faults.size(), 1);
    QVERIFY2(faults.first().startsWith(place + u':'), qPrintable(faults.first()));
    // The values shown in the configuration dialog are usable.
    DetectorLaw log = law;
    log.kind = DetectorLaw::Kind::Log;
    QVERIFY(log.isUsable());
    QVERIFY2(faults.first().endsWith(QLatin1String("The detector is treated as linear.")), qPrintable(faults.first()));
}

void TestDetectorSettings::aLawThatIsNotInForceHarmsNobody()
{
    QStringList faults;
    const DetectorLaw law = readDetectorLaw(write("[Detector]\r\nSlope=steep\r\nPoint 1=x\r\n"), faults);
    QVERIFY(faults.isEmpty());
    QVERIFY(law == DetectorLaw());
}

void TestDetectorSettings::writtenAndReadAgain()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    DetectorLaw law = tableLaw({{0.0125, -40.25}, {0.5, -10.0}, {1.75, 3.5}});
    law.slope = -24.375;
    law.intercept = 21.125;
    for (const DetectorLaw::Kind kind : {DetectorLaw::Kind::Table, DetectorLaw::Kind::Log, DetectorLaw::Kind::Linear}) {
        law.kind = kind;
        const Profile before = write(kPlain);
        QVERIFY(writeProfileStrings(path(), detectorLawEntries(law, before)));
        QStringList faults;
        const Profile after(path());
        QVERIFY(readDetectorLaw(after, faults) == law);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
        QVERIFY(detectorLawEntries(law, after).isEmpty());
    }
}

void TestDetectorSettings::fewerPointsEmptyTheOthers()
{
    write(kPlain);
    const DetectorLaw three = tableLaw({{0.1, -30.0}, {0.2, -20.0}, {0.3, -10.0}});
    const DetectorLaw two = tableLaw({{0.1, -30.0}, {0.4, 0.0}});
    for (const DetectorLaw &law : {three, two}) {
        QVERIFY(writeProfileStrings(path(), detectorLawEntries(law, Profile(path()))));
        QStringList faults;
        QVERIFY(readDetectorLaw(Profile(path()), faults) == law);
    }
}

// Selecting another law leaves an invalid table in the file, so that the user can repair it by hand.
void TestDetectorSettings::aDamagedTableStaysInTheFile()
{
    QStringList faults;
    const Profile damaged =
        write("[Config]\r\nADC Law=table\r\n[Detector]\r\nPoint 1=0.1;-30\r\nPoint 2=0.2;x\r\nPoint 3=0.3;-10\r\n");
    DetectorLaw law = readDetectorLaw(damaged, faults);
    QCOMPARE(faults.size(), 1);
    law.kind = DetectorLaw::Kind::Table;
    QVERIFY(!law.isUsable());
    law.kind = DetectorLaw::Kind::Log;
    QVERIFY(writeProfileStrings(path(), detectorLawEntries(law, damaged)));
    faults.clear();
    const Profile after(path());
    QVERIFY(readDetectorLaw(after, faults) == law);
    QVERIFY(faults.isEmpty());
    const QString section = QStringLiteral("Detector");
    QCOMPARE(after.value(section, QStringLiteral("Point 2")), QStringLiteral("0.2;x"));
    QCOMPARE(after.value(section, QStringLiteral("Point 3")), QStringLiteral("0.3;-10"));
    // A new table replaces the invalid one.
    const DetectorLaw table = tableLaw({{0.1, -30.0}, {0.4, 0.0}});
    QVERIFY(writeProfileStrings(path(), detectorLawEntries(table, Profile(path()))));
    QVERIFY(readDetectorLaw(Profile(path()), faults) == table);
    QVERIFY(faults.isEmpty());
}

void TestDetectorSettings::slopesAtTheirEnds_data()
{
    QTest::addColumn<double>("slope");
    for (const double slope : {1.0, -1.0, 1000.0, -1000.0})
        QTest::addRow("%g", slope) << slope;
}

void TestDetectorSettings::slopesAtTheirEnds()
{
    QFETCH(double, slope);
    QStringList faults;
    const DetectorLaw law = readDetectorLaw(
        write("[Config]\r\nADC Law=log\r\n[Detector]\r\nIntercept=-200\r\nSlope=" + QByteArray::number(slope)), faults);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    QCOMPARE(law.kind, DetectorLaw::Kind::Log);
    QCOMPARE(law.slope, slope);
    QCOMPARE(law.intercept, -200.0);
}

void TestDetectorSettings::theSettingsLoaderReadsIt()
{
    Configuration configuration;
    WindowSettings window;
    configuration.iniPath = path();
    write(QByteArray(kPlain) + "ADC Law=log\r\n[Detector]\r\nSlope=0\r\n");
    SettingsLoader damaged(configuration, window);
    QCOMPARE(damaged.load(), LoadOutcome::Loaded);
    QCOMPARE(configuration.detectorLaw.kind, DetectorLaw::Kind::Linear);
    QCOMPARE(damaged.faults().size(), 1);

    write(QByteArray(kPlain) + "ADC Law=log\r\n");
    SettingsLoader good(configuration, window);
    QCOMPARE(good.load(), LoadOutcome::Loaded);
    QCOMPARE(configuration.detectorLaw.kind, DetectorLaw::Kind::Log);
    QVERIFY(good.faults().isEmpty());

    // The defaults written at start-up contain no law.
    write(kPlain);
    SettingsLoader plain(configuration, window);
    QCOMPARE(plain.load(), LoadOutcome::Loaded);
    const Profile after(path());
    QVERIFY(after.value(QStringLiteral("Config"), QStringLiteral("ADC Law")).isEmpty());
    QVERIFY(after.entries(QStringLiteral("Detector")).isEmpty());
}

QTEST_GUILESS_MAIN(TestDetectorSettings)
#include "test_detector_settings.moc"
