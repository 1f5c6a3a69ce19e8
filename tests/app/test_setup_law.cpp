// SPDX-License-Identifier: MIT
// The detector law in the configuration dialog: which entries are accepted, and what "Apply" leaves unchanged.
#include "core/detector_settings.h"
#include "tests/support/locales.h"
#include "tests/support/set_up_bench.h"

#include <QComboBox>

using namespace calvorn;

namespace {

constexpr const char *kPlain =
    "[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nADC Device=10bit\r\nADC Step=0.00244\r\n"
    "ADC Offset=0\r\n";
// The third of the five points is unreadable.
constexpr const char *kDamaged = "ADC Law=table\r\n[Detector]\r\nPoint 1=0.1;-30\r\nPoint 2=0.2;-25\r\n"
                                 "Point 3=0.3;about -20\r\nPoint 4=0.4;-15\r\nPoint 5=0.5;-10\r\n";
constexpr const char *kLog = "ADC Law=log\r\n[Detector]\r\nSlope=24.98765\r\nIntercept=-84.01234\r\n";

struct Bench : test::SetUpBench
{
    explicit Bench(const char *law)
        : SetUpBench(QByteArray(kPlain) + law)
    {
        click("cmdADC");
    }

    // Selects an entry with the keyboard.
    void choose(const char *name, int index) const
    {
        auto *box = find<QComboBox>(name);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < index; ++i)
            QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->currentIndex(), index);
    }

    void typed(const char *name, const QString &entry, const QString &shown, int beeps)
    {
        desktop.beeps = 0;
        type(name, entry);
        QCOMPARE(text(name), shown);
        QCOMPARE(desktop.beeps, beeps);
    }

    QMap<QString, QString> section(const char *name) const
    {
        QMap<QString, QString> all;
        for (const ProfileEntry &entry : Profile(folder.iniPath()).entries(QString::fromLatin1(name)))
            all.insert(entry.key, entry.value);
        return all;
    }
};

} // namespace

class TestSetupLaw : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void anotherChangeLeavesTheLaw_data();
    void anotherChangeLeavesTheLaw();
    void aChosenLawIsWritten();
    void linearIsChosenInPlaceOfADamagedTable();
    void slopesAndIntercepts_data() { test::addLocaleRows(); }
    void slopesAndIntercepts();
    void aVisitToTheBoxesChangesNothing();
};

void TestSetupLaw::anotherChangeLeavesTheLaw_data()
{
    QTest::addColumn<QByteArray>("law");
    QTest::newRow("none") << QByteArray("");
    QTest::newRow("a damaged table") << QByteArray(kDamaged);
    QTest::newRow("a logarithmic law") << QByteArray(kLog);
    QTest::newRow("an unreadable slope") << QByteArray("ADC Law=log\r\n[Detector]\r\nSlope=steep\r\nIntercept=x\r\n");
    QTest::newRow("an unknown law") << QByteArray("ADC Law=cubic\r\n[Detector]\r\nPoint 1=1;1\r\n");
}

void TestSetupLaw::anotherChangeLeavesTheLaw()
{
    QFETCH(QByteArray, law);
    Bench bench(law.constData());
    const QMap<QString, QString> before = bench.section("Detector");
    const QString chosen = bench.section("Config").value(QStringLiteral("ADC Law"));
    bench.type("txtADCstep", QStringLiteral("9.766"));
    bench.click("cmdApply");
    QCOMPARE(bench.section("Config").value(QStringLiteral("ADC Step")), QStringLiteral("0.009766"));
    QCOMPARE(bench.section("Detector"), before);
    QCOMPARE(bench.section("Config").value(QStringLiteral("ADC Law")), chosen);
    QCOMPARE(bench.section("Config").contains(QStringLiteral("ADC Law")), !law.isEmpty());
}

void TestSetupLaw::aChosenLawIsWritten()
{
    Bench bench("");
    bench.choose("cboLaw", 1);
    bench.choose("cboPreset", 1);
    bench.click("cmdApply");
    QStringList faults;
    const DetectorLaw law = readDetectorLaw(Profile(bench.folder.iniPath()), faults);
    QCOMPARE(law.kind, DetectorLaw::Kind::Log);
    QCOMPARE(law.slope, -25.0);
    QCOMPARE(law.intercept, 20.0);
    QVERIFY(faults.isEmpty());
}

// The error message about the table no longer appears, and the points can still be repaired by hand.
void TestSetupLaw::linearIsChosenInPlaceOfADamagedTable()
{
    Bench bench(kDamaged);
    QVERIFY2(bench.desktop.lastText().contains(QLatin1String("[Detector] \"Point 3\"")),
             qPrintable(bench.desktop.lastText()));
    const QMap<QString, QString> before = bench.section("Detector");
    // The list does not offer a table, because the points before the invalid one do not count as a table.
    auto *law = bench.find<QComboBox>("cboLaw");
    law->setFocus();
    QTest::keyClick(law, Qt::Key_End);
    QCOMPARE(law->currentIndex(), 0);
    bench.choose("cboLaw", 1);
    bench.choose("cboLaw", 0);
    bench.click("cmdApply");
    QStringList faults;
    QCOMPARE(readDetectorLaw(Profile(bench.folder.iniPath()), faults).kind, DetectorLaw::Kind::Linear);
    QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
    QCOMPARE(bench.section("Detector"), before);
}

void TestSetupLaw::slopesAndIntercepts()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const auto shown = [&](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    Bench bench("ADC Law=log\r\n");
    bench.typed("txtSlope", QStringLiteral("-24.5"), shown("-24.500"), 0);
    for (const char *refused : {"0", "0.9", "-0.9", "1000.5", "-1000.5", "1e300", "steep"})
        bench.typed("txtSlope", QString::fromLatin1(refused), shown("-24.500"), 1);
    for (const char *taken : {"1", "-1", "1000", "-1000"})
        bench.typed("txtSlope", QString::fromLatin1(taken), shown((QByteArray(taken) + ".000").constData()), 0);
    bench.typed("txtIntercept", QStringLiteral("201"), shown("200.000"), 1);
    bench.typed("txtIntercept", QStringLiteral("-201"), shown("-200.000"), 1);
    bench.typed("txtIntercept", QStringLiteral("21.5"), shown("21.500"), 0);
    bench.click("cmdApply");
    QStringList faults;
    const DetectorLaw law = readDetectorLaw(Profile(bench.folder.iniPath()), faults);
    QCOMPARE(law.slope, -1000.0);
    QCOMPARE(law.intercept, 21.5);
}

// The boxes show three decimals, but the numbers retain their full precision.
void TestSetupLaw::aVisitToTheBoxesChangesNothing()
{
    Bench bench(kLog);
    const QMap<QString, QString> before = bench.section("Detector");
    bench.find("txtSlope")->setFocus();
    QTest::keyClick(bench.find("txtSlope"), Qt::Key_Tab);
    bench.type("txtIntercept", QStringLiteral("-84.012"));
    bench.click("cmdApply");
    QCOMPARE(bench.section("Detector"), before);
}

QTEST_MAIN(TestSetupLaw)
#include "test_setup_law.moc"
