// SPDX-License-Identifier: MIT
#include "tests/support/locales.h"
#include "tests/support/set_up_bench.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>

using namespace calvorn;
using calvorn::test::SetUpBench;

namespace {

constexpr char kSettings[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9850\r\nDDS Xtal freq=80000000\r\n"
                             "DDS Max freq=20000000\r\nDDS Min freq=1000\r\nADC Step=0.00244\r\n";

struct Bench : SetUpBench
{
    explicit Bench(const char *page, const QByteArray &settings = kSettings)
        : SetUpBench(settings)
    {
        click(page);
    }

    // Types an entry, and checks the resulting text of the box and the number of beeps.
    void typed(const char *box, const QString &entry, const QString &shown, int beeps)
    {
        desktop.beeps = 0;
        type(box, entry);
        QCOMPARE(text(box), shown);
        QCOMPARE(desktop.beeps, beeps);
    }
};

} // namespace

// Tests how the configuration dialog's boxes and options handle entries.
class TestSetUpEntries : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void clocks_data() { test::addLocaleRows(); }
    void clocks();
    void editingShowsNoGroups();
    void limits();
    void chipsHaveFramesAndMultipliers();
    void theMultiplierOfTheAd9951();
    void aFactorOffTheBarIsShown_data();
    void aFactorOffTheBarIsShown();
    void aClockBeyond32BitsIsToldInPlace();
    void theStepInMillivolts_data() { test::addLocaleRows(); }
    void theStepInMillivolts();
    void theChannel();
    void theMeaningOfTheChannel();
    void boxesAreAsWideAsTheirNumbers();
    void thePotentiometerRange();
    void aPositionIsReplacedByItsValueOnly();
    void storedPositionsStay();
    void stepsOfAnOutput();
    void returnTakesTheEntryOnly();
    void aTitleHasFortyCharacters();
    void eachInterfaceIsShownAsChosen();
};

void TestSetUpEntries::clocks()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench("cmdDDS");
    const auto shown = [&](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    bench.typed("txtClk9850", QStringLiteral("125000000"), shown("125,000,000"), 0);
    QCOMPARE(bench.label("Label4"), shown("125,000,000"));
    // Uses the locale's group separator, but types a plain space in place of a narrow one.
    QString grouped = shown("100,000,000");
    for (QChar &c : grouped)
        c = c.unicode() > 127 ? QChar(u' ') : c;
    bench.typed("txtClk9850", grouped, shown("100,000,000"), 0);
    // The mask shows at least six digits.
    bench.typed("txtClk9850", QStringLiteral("1000000"), shown("1,000,000"), 0);
    bench.typed("txtClk9850", QStringLiteral("5"), shown("1,000,000"), 1);
    bench.typed("txtClk9850", QStringLiteral("2000000000"), shown("1,000,000,000"), 1);
    bench.typed("txtClk9850", QStringLiteral("fast"), shown("1,000,000,000"), 1);
    bench.typed("txtClk9850", QString(), shown("1,000,000,000"), 1);
    bench.typed("txtClk9850", QStringLiteral("1e400"), shown("1,000,000,000"), 1);
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

void TestSetUpEntries::editingShowsNoGroups()
{
    Bench bench("cmdDDS");
    for (const char *name : {"txtClk9850", "txtMaxFreq"}) {
        bench.find("cmdDDS")->setFocus();
        auto *box = bench.find<QLineEdit>(name);
        QVERIFY(box->text().contains(u','));
        box->setFocus();
        QVERIFY(!box->text().contains(u','));
        QTest::keyClick(box, Qt::Key_Tab);
        QVERIFY(box->text().contains(u','));
    }
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestSetUpEntries::limits()
{
    Bench bench("cmdDDS");
    bench.typed("txtMaxFreq", QStringLiteral("26000000"), QStringLiteral("26,000,000"), 0);
    QVERIFY(bench.label("Label10").contains(QStringLiteral("within the limits of the AD9850")));
    bench.typed("txtMaxFreq", QStringLiteral("26000001"), QStringLiteral("26,000,001"), 0);
    QVERIFY(bench.label("Label10").contains(QStringLiteral("Above 26,000,000 Hz")));
    bench.typed("txtMaxFreq", QStringLiteral("3000000000"), QStringLiteral("2,147,483,647"), 1);
    // The dialog keeps the limits far enough apart for a sweep.
    bench.typed("txtMaxFreq", QStringLiteral("1399"), QStringLiteral("001,400"), 1);
    bench.typed("txtMinFreq", QStringLiteral("1001"), QStringLiteral("1,000"), 1);
    bench.typed("txtMinFreq", QStringLiteral("0"), QStringLiteral("1"), 1);
    bench.typed("txtMinFreq", QStringLiteral("-5"), QStringLiteral("1"), 1);
    bench.typed("txtMinFreq", QStringLiteral("x"), QStringLiteral("1"), 1);
    bench.typed("txtMinFreq", QStringLiteral("500.5"), QStringLiteral("500"), 0);
}

void TestSetUpEntries::chipsHaveFramesAndMultipliers()
{
    Bench bench("cmdDDS");
    QVERIFY(!bench.isShown("frmAD9851"));
    QVERIFY(!bench.isShown("frmAD9951"));
    bench.click("optDDSselect_2");
    QVERIFY(bench.isShown("frmAD9851"));
    QVERIFY(!bench.isShown("frmAD9951"));
    bench.typed("txtClk9851", QStringLiteral("30000000"), QStringLiteral("30,000,000"), 0);
    QCOMPARE(bench.label("Label4"), QStringLiteral("30,000,000"));
    bench.click("optDDSx6");
    QCOMPARE(bench.label("Label4"), QStringLiteral("180,000,000"));
    QVERIFY(bench.label("Label10").contains(QStringLiteral("within the limits of the AD9851")));
    bench.click("optDDSselect_3");
    QVERIFY(bench.isShown("frmAD9951"));
    QVERIFY(!bench.isShown("frmAD9851"));
    QCOMPARE(bench.text("txtClk9951"), QStringLiteral("30,000,000"));
    QCOMPARE(bench.label("Label4"), QStringLiteral("30,000,000"));
    bench.click("optDDSselect_2");
    QCOMPARE(bench.label("Label4"), QStringLiteral("180,000,000"));
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Config", "DDS Device"), QStringLiteral("AD9851"));
    QCOMPARE(bench.folder.setting("Config", "DDS Multiplier"), QStringLiteral("6"));
}

void TestSetUpEntries::theMultiplierOfTheAd9951()
{
    Bench bench("cmdDDS");
    bench.click("optDDSselect_3");
    bench.typed("txtClk9951", QStringLiteral("20000000"), QStringLiteral("20,000,000"), 0);
    QVERIFY(bench.isChecked("optMultiplier_0"));
    auto *factor = bench.find<QScrollBar>("HScroll1");
    QCOMPARE(factor->minimum(), 4);
    QCOMPARE(factor->maximum(), 20);
    bench.click("optMultiplier_1");
    QCOMPARE(bench.label("Label4"), QStringLiteral("80,000,000"));
    // The Tab key moves the focus to the bar.
    bench.find("optMultiplier_1")->setFocus();
    QTest::keyClick(bench.find("optMultiplier_1"), Qt::Key_Tab);
    QVERIFY(factor->hasFocus());
    QTest::keyClick(factor, Qt::Key_Right);
    QCOMPARE(bench.label("Label4"), QStringLiteral("100,000,000"));
    QTest::keyClick(factor, Qt::Key_PageUp);
    QCOMPARE(bench.label("Label4"), QStringLiteral("180,000,000"));
    QTest::keyClick(factor, Qt::Key_PageDown);
    QCOMPARE(bench.label("Label4"), QStringLiteral("100,000,000"));
    QTest::keyClick(factor, Qt::Key_End);
    QCOMPARE(bench.label("Label4"), QStringLiteral("400,000,000"));
    bench.click("optMultiplier_0");
    QCOMPARE(bench.label("Label4"), QStringLiteral("20,000,000"));
    // Moving the bar selects its option.
    QTest::keyClick(factor, Qt::Key_Left);
    QVERIFY(bench.isChecked("optMultiplier_1"));
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Config", "DDS Multiplier"), QStringLiteral("19"));
}

void TestSetUpEntries::aFactorOffTheBarIsShown_data()
{
    QTest::addColumn<QByteArray>("factor");
    QTest::addColumn<QString>("clock");
    QTest::newRow("below") << QByteArray("3") << QStringLiteral("60,000,000");
    QTest::newRow("above") << QByteArray("25") << QStringLiteral("500,000,000");
    QTest::newRow("none") << QByteArray("0") << QStringLiteral("000,000");
}

void TestSetUpEntries::aFactorOffTheBarIsShown()
{
    QFETCH(QByteArray, factor);
    QFETCH(QString, clock);
    Bench bench("cmdDDS", "[Config]\r\nInterface=2\r\nDDS Device=AD9951\r\nDDS Xtal freq=20000000\r\n"
                          "DDS Multiplier=" +
                              factor + "\r\n");
    QVERIFY(bench.isChecked("optMultiplier_1"));
    QCOMPARE(bench.label("lblMultiplier"), QStringLiteral("× ") + QString::fromLatin1(factor));
    QCOMPARE(bench.label("Label4"), clock);
    QVERIFY(!bench.label("Label10").contains(QStringLiteral("within")));
    // The factor does not change until the user selects another one.
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Config", "DDS Multiplier"), QString::fromLatin1(factor));
    auto *bar = bench.find<QScrollBar>("HScroll1");
    QTest::keyClick(bar, Qt::Key_Home);
    QTest::keyClick(bar, Qt::Key_Right);
    QCOMPARE(bench.label("lblMultiplier"), QStringLiteral("× 5"));
    QCOMPARE(bench.label("Label4"), QStringLiteral("100,000,000"));
}

void TestSetUpEntries::aClockBeyond32BitsIsToldInPlace()
{
    Bench bench("cmdDDS");
    bench.click("optDDSselect_3");
    bench.type("txtClk9951", QStringLiteral("1000000000"));
    bench.click("optMultiplier_1");
    QCOMPARE(bench.label("Label4"), QStringLiteral("Overflow."));
    QVERIFY(bench.label("Label10").contains(QStringLiteral("must not exceed 400,000,000 Hz")));
    QCOMPARE(bench.desktop.boxes.size(), 0);
    bench.type("txtClk9951", QStringLiteral("100000000"));
    QCOMPARE(bench.label("Label4"), QStringLiteral("400,000,000"));
}

void TestSetUpEntries::theStepInMillivolts()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench("cmdADC");
    const auto shown = [&](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    QCOMPARE(bench.text("txtADCstep"), shown("2.440"));
    // Both decimal separators are accepted.
    bench.typed("txtADCstep", QStringLiteral("4.883"), shown("4.883"), 0);
    bench.typed("txtADCstep", QStringLiteral("9,766"), shown("9.766"), 0);
    bench.typed("txtADCstep", QStringLiteral("-1"), shown("0.000"), 1);
    bench.typed("txtADCstep", QStringLiteral("5000"), shown("1000.000"), 1);
    bench.typed("txtADCstep", QStringLiteral("2.44"), shown("2.440"), 0);
    bench.typed("txtADCstep", QStringLiteral("much"), shown("2.440"), 1);
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Config", "ADC Step"), QString(shown("0.00244")));
}

void TestSetUpEntries::theChannel()
{
    Bench bench("cmdADC");
    bench.typed("txtADCchannel", QStringLiteral("7"), QStringLiteral("7"), 0);
    bench.typed("txtADCchannel", QStringLiteral("8"), QStringLiteral("7"), 1);
    bench.typed("txtADCchannel", QStringLiteral("-1"), QStringLiteral("0"), 1);
    bench.typed("txtADCchannel", QStringLiteral("a"), QStringLiteral("0"), 1);
    Bench vna("cmdADC", "[Config]\r\nInterface=3\r\nDDS Device=AD9951\r\n");
    vna.typed("txtADCchannel", QStringLiteral("0"), QStringLiteral("1"), 1);
    vna.typed("txtADCchannel", QStringLiteral("4"), QStringLiteral("3"), 1);
}

void TestSetUpEntries::theMeaningOfTheChannel()
{
    Bench bench("cmdADC", "[Config]\r\nInterface=3\r\nDDS Device=AD9951\r\nADC Channel=3\r\n"
                          "[Interface1]\r\nDDS Device=AD9850\r\nADC Channel=1\r\n");
    QCOMPARE(bench.label("lblADCchannel"), QStringLiteral("device under test"));
    auto *box = bench.find<QLineEdit>("txtADCchannel");
    const auto typedOver = [&](const char *entry) {
        QTest::mouseDClick(box, Qt::LeftButton);
        QTest::keyClicks(box, QString::fromLatin1(entry));
        return bench.label("lblADCchannel");
    };
    // The label changes with each key press, not only when the user leaves the box.
    QCOMPARE(typedOver("1"), QStringLiteral("angle"));
    QCOMPARE(typedOver("2"), QStringLiteral("return loss"));
    QCOMPARE(box->accessibleDescription(), QStringLiteral("return loss"));
    QCOMPARE(typedOver("9"), QStringLiteral("1 angle, 2 return loss, 3 device under test"));
    QTest::keyClick(box, Qt::Key_Tab);
    QCOMPARE(bench.text("txtADCchannel"), QStringLiteral("3"));
    QCOMPARE(bench.label("lblADCchannel"), QStringLiteral("device under test"));
    bench.click("cmdInterface");
    bench.click("optInterface_1");
    bench.click("cmdADC");
    QCOMPARE(bench.label("lblADCchannel"), QStringLiteral("not used by this interface"));
    QCOMPARE(typedOver("2"), QStringLiteral("not used by this interface"));
}

// A box is at least as wide as its widest number, but not much wider.
void TestSetUpEntries::boxesAreAsWideAsTheirNumbers()
{
    Bench bench("cmdDDS");
    const auto check = [&bench](const char *name, const char *widest) {
        const auto *box = bench.find<QLineEdit>(name);
        const int text = box->fontMetrics().horizontalAdvance(QLatin1String(widest));
        const int digit = box->fontMetrics().horizontalAdvance(u'0');
        const QByteArray found = QByteArray(name) + ' ' + QByteArray::number(box->width());
        QVERIFY2(box->width() >= text + 8 && box->width() <= text + 4 * digit, found.constData());
    };
    bench.dialog->resize(1000, 560);
    check("txtClk9850", "2,147,483,647");
    check("txtMaxFreq", "2,147,483,647");
    check("txtMinFreq", "2,147,483,647");
    bench.click("cmdADC");
    check("txtADCstep", "1000.000");
    check("txtADCchannel", "0");
    bench.click("cmdAux");
    check("txtAux1Val_0", "-32768");
    check("txtVscrollMax", "255");
    check("txtVScrollMin", "255");
    bench.click("cmdPort");
    check("txtAddressRS232", "0000");
    check("txtAddressLPT", "65535");
}

void TestSetUpEntries::thePotentiometerRange()
{
    Bench bench("cmdAux");
    const auto *bar = bench.find<QScrollBar>("VScroll1");
    QVERIFY(!bar->isEnabled());
    bench.typed("txtVscrollMax", QStringLiteral("255"), QStringLiteral("255"), 0);
    bench.typed("txtVScrollMin", QStringLiteral("16"), QStringLiteral("16"), 0);
    QVERIFY(bar->isEnabled());
    QCOMPARE(bar->minimum(), 16);
    QCOMPARE(bar->maximum(), 255);
    bench.typed("txtVscrollMax", QStringLiteral("256"), QStringLiteral("255"), 1);
    bench.typed("txtVScrollMin", QStringLiteral("9"), QStringLiteral("9"), 0);
    QCOMPARE(bar->minimum(), 9);
    // The range changes with each key press, not only when the user leaves the box.
    auto *box = bench.find<QLineEdit>("txtVscrollMax");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("25"));
    QCOMPARE(bar->maximum(), 25);
    QTest::keyClicks(box, QStringLiteral("9"));
    QCOMPARE(box->text(), QStringLiteral("255"));
    QCOMPARE(bar->maximum(), 255);
    QTest::keyClicks(box, QStringLiteral("x"));
    QCOMPARE(box->text(), QStringLiteral("255"));
}

void TestSetUpEntries::aPositionIsReplacedByItsValueOnly()
{
    Bench bench("cmdAux");
    bench.typed("txtVscrollMax", QStringLiteral("0200"), QStringLiteral("0200"), 0);
    QCOMPARE(bench.find<QScrollBar>("VScroll1")->maximum(), 200);
    bench.typed("txtVScrollMin", QStringLiteral("0012"), QStringLiteral("0012"), 0);
    QCOMPARE(bench.find<QScrollBar>("VScroll1")->minimum(), 12);
    bench.typed("txtVscrollMax", QStringLiteral("00256"), QStringLiteral("255"), 1);
    // A number that does not fit in 32 bits.
    bench.typed("txtVscrollMax", QStringLiteral("0"), QStringLiteral("0"), 0);
    auto *box = bench.find<QLineEdit>("txtVscrollMax");
    QGuiApplication::clipboard()->setText(QStringLiteral("99999999999999999999"));
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(box->text(), QStringLiteral("255"));
    bench.typed("txtVscrollMax", QString(), QString(), 0);
}

void TestSetUpEntries::storedPositionsStay()
{
    Bench bench("cmdAux", QByteArray(kSettings) + "[Aux2]\r\nPotMax=0200\r\nPotMin=0012\r\n");
    QCOMPARE(bench.text("txtVscrollMax"), QStringLiteral("0200"));
    QCOMPARE(bench.text("txtVScrollMin"), QStringLiteral("0012"));
    QCOMPARE(bench.desktop.beeps, 0);
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Aux2", "PotMax"), QStringLiteral("0200"));
    QCOMPARE(bench.folder.setting("Aux2", "PotMin"), QStringLiteral("0012"));
}

void TestSetUpEntries::stepsOfAnOutput()
{
    Bench bench("cmdAux");
    QCOMPARE(bench.find("txtAux1_3")->toolTip(),
             QStringLiteral("Enter the label or leave 'blank' to disable this button"));
    QCOMPARE(bench.find("txtAux2Val_3")->toolTip(), QStringLiteral("Enter the value to be sent to the attenuator"));
    // In the settings file, a ";" would split the line at the wrong place.
    bench.typed("txtAux1_3", QStringLiteral("a;b"), QStringLiteral("ab"), 0);
    bench.typed("txtAux1Val_3", QStringLiteral("12"), QStringLiteral("12"), 0);
    bench.typed("txtAux1Val_3", QStringLiteral("x"), QStringLiteral("12"), 1);
    bench.typed("txtAux1Val_3", QStringLiteral("40000"), QStringLiteral("32767"), 1);
    bench.typed("txtAux2Val_0", QStringLiteral("-4"), QStringLiteral("-4"), 0);
    bench.typed("txtAux2Val_1", QStringLiteral("-40000"), QStringLiteral("-32768"), 1);
    bench.click("cmdApply");
    QCOMPARE(bench.folder.setting("Aux1", "Step 3"), QStringLiteral("ab;32767"));
    QCOMPARE(bench.folder.setting("Aux2", "Step 0"), QStringLiteral("10dB;-4"));
}

void TestSetUpEntries::returnTakesTheEntryOnly()
{
    Bench bench("cmdDDS");
    auto *box = bench.find<QLineEdit>("txtMaxFreq");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("99"));
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(bench.desktop.beeps, 1);
    QCOMPARE(bench.desktop.boxes.size(), 0);
    QVERIFY(bench.dialog->isVisible());
}

void TestSetUpEntries::aTitleHasFortyCharacters()
{
    Bench bench("cmdAux");
    bench.type("txtTitoloAux1", QString(50, u'x'));
    QCOMPARE(bench.text("txtTitoloAux1"), QString(40, u'x'));
}

void TestSetUpEntries::eachInterfaceIsShownAsChosen()
{
    for (int interfaceType = 1; interfaceType <= 3; ++interfaceType) {
        const Bench bench("cmdInterface", "[Config]\r\nInterface=" + QByteArray::number(interfaceType) + "\r\n");
        for (int option = 1; option <= 3; ++option) {
            const QByteArray name = "optInterface_" + QByteArray::number(option);
            QCOMPARE(bench.isChecked(name.constData()), option == interfaceType);
        }
    }
}

QTEST_MAIN(TestSetUpEntries)
#include "test_set_up_entries.moc"
