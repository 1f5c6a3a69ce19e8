// SPDX-License-Identifier: MIT
// The law of the detector in the settings file: read, damaged, written, and nowhere to be seen as long as it is linear.
#include "core/detector_settings.h"

#include "core/settings.h"
#include "tests/support/locales.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace calvorn;

namespace {

constexpr const char *kPlain = "[Config]\r\nDDS Device=AD9850\r\nADC Device=10bit\r\n";

DetectorLaw tableOf(std::vector<DetectorLaw::Point> points)
{
    DetectorLaw law;
    law.kind = DetectorLaw::Kind::Table;
    law.points = std::move(points);
    return law;
}

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
    void theSettingsLoaderReadsIt();

private:
    Profile write(const QByteArray &content) const
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write the settings of the test");
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
    // The numbers of the first detector that there is a preset for.
    const DetectorLaw bare = readDetectorLaw(write("[Config]\r\nADC Law=log\r\n"), faults);
    QCOMPARE(bare.slope, 25.0);
    QCOMPARE(bare.intercept, -84.0);
}

void TestDetectorSettings::aTableIsRead()
{
    QStringList faults;
    const DetectorLaw law =
        readDetectorLaw(write("[Config]\r\nADC Law=table\r\n[Detector]\r\nPoint 1=0.01;-30\r\nPoint 2=0,2;-10.5\r\n"
                              "Point 3=1;5\r\nPoint 5=2;9\r\n"),
                        faults);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    QVERIFY(law == tableOf({{0.01, -30.0}, {0.2, -10.5}, {1.0, 5.0}}));
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
    QVERIFY2(faults.first().endsWith(QLatin1String("The detector counts as linear.")), qPrintable(faults.first()));
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
    DetectorLaw law = tableOf({{0.0125, -40.25}, {0.5, -10.0}, {1.75, 3.5}});
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
    const DetectorLaw three = tableOf({{0.1, -30.0}, {0.2, -20.0}, {0.3, -10.0}});
    const DetectorLaw two = tableOf({{0.1, -30.0}, {0.4, 0.0}});
    for (const DetectorLaw &law : {three, two}) {
        QVERIFY(writeProfileStrings(path(), detectorLawEntries(law, Profile(path()))));
        QStringList faults;
        QVERIFY(readDetectorLaw(Profile(path()), faults) == law);
    }
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

    // The defaults that a start writes have nothing of a law.
    write(kPlain);
    SettingsLoader plain(configuration, window);
    QCOMPARE(plain.load(), LoadOutcome::Loaded);
    const Profile after(path());
    QVERIFY(after.value(QStringLiteral("Config"), QStringLiteral("ADC Law")).isEmpty());
    QVERIFY(after.entries(QStringLiteral("Detector")).isEmpty());
}

QTEST_GUILESS_MAIN(TestDetectorSettings)
#include "test_detector_settings.moc"
