// SPDX-License-Identifier: MIT
// Typing, stepping, reading and correcting numbers in the main window's boxes.
#include "display/marker_panel.h"
#include "tests/support/entry_bench.h"
#include "tests/support/locales.h"
#include "tests/support/quiet_time.h"
#include "tests/support/walk_numbers.h"

#include <QSignalSpy>

using namespace calvorn;
using calvorn::test::kEntrySettings;
using calvorn::test::masked;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;
using Bench = calvorn::test::EntryBench;

class TestEntryBoxes : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void bothDecimalSeparatorsCount_data();
    void bothDecimalSeparatorsCount();

    void aChangeOfScaleReadsTheFullScale();
    void theFullScaleBoxesCorrectWhatIsTyped_data() { test::addLocaleRows(); }
    void theFullScaleBoxesCorrectWhatIsTyped();

    void theFirstClickSelectsTheNumber_data();
    void theFirstClickSelectsTheNumber();
    void digitsAreSteppedInPlainDigits_data() { test::addLocaleRows(); }
    void digitsAreSteppedInPlainDigits();
    void aDescendingSweepKeepsItsMarkers();
    void theDifferenceFollowsTheBoxesAtZero();
    void theStepIsReadOut();
};

void TestEntryBoxes::bothDecimalSeparatorsCount_data()
{
    test::addLocaleRows();
    QTest::newRow("de_DE") << QLocale(QLocale::German, QLocale::Germany);
}

void TestEntryBoxes::bothDecimalSeparatorsCount()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    const std::array<std::pair<QString, double>, 4> entries{{{QStringLiteral("0.5"), 0.5},
                                                             {QStringLiteral("1,25"), 1.25},
                                                             {QStringLiteral("0,5"), 0.5},
                                                             {QStringLiteral("1.25"), 1.25}}};
    for (const auto &[text, volts] : entries) {
        bench.hands.typeOver(WalkBox::M3Y, text);
        bench.tab();
        QCOMPARE(bench.height(GraphItem::M3), volts * 1000.0);
        QCOMPARE(bench.shown(WalkBox::M3Y), test::shownAmplitude(true, volts));
        bench.hands.typeOver(WalkBox::M4Y, text);
        bench.hands.key(Qt::Key_Return);
        QCOMPARE(bench.height(GraphItem::M4), volts * 1000.0);
        bench.hands.typeOver(WalkBox::MaxVolt, text);
        bench.tab();
        QCOMPARE(static_cast<double>(bench.configuration.maxScaleVolt), volts);
        QCOMPARE(bench.graph()->coordinates().fullScaleVolt(), volts);
    }
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    for (const QString &text : {QStringLiteral("40.4"), QStringLiteral("40,4"), QStringLiteral("-40.4")}) {
        bench.hands.typeOver(WalkBox::MaxDb, QStringLiteral("60"));
        bench.tab();
        bench.hands.typeOver(WalkBox::MaxDb, text);
        bench.tab();
        QCOMPARE(bench.configuration.maxScaleDb, -40);
        QCOMPARE(bench.shown(WalkBox::MaxDb), test::inLocale(locale, QStringLiteral("-40.4")));
    }
    bench.hands.typeOver(WalkBox::M3Y, QStringLiteral("-12,5"));
    bench.tab();
    bench.hands.typeOver(WalkBox::M4Y, QStringLiteral("-12.5"));
    bench.tab();
    QCOMPARE(bench.height(GraphItem::M3), 12500.0);
    QCOMPARE(bench.height(GraphItem::M4), 12500.0);
    QCOMPARE(bench.desktop.beeps, 0);
}

// The configuration stores the value shown in the box, which may have fewer digits or a different sign than before.
void TestEntryBoxes::aChangeOfScaleReadsTheFullScale()
{
    QByteArray settings = kEntrySettings;
    settings.replace("Max scaleV=2.5", "Max scaleV=1.23456\r\nMax scaleDb=-60");
    const Bench bench(settings);
    QCOMPARE(bench.shown(WalkBox::MaxVolt), QStringLiteral("1.23"));
    QCOMPARE(bench.configuration.maxScaleVolt, 1.23456F);
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    bench.hands.typeOver(WalkBox::MaxDb, QStringLiteral("40.4"));
    bench.tab();
    QCOMPARE(bench.shown(WalkBox::MaxDb), QStringLiteral("-40.4"));
    bench.hands.choose(QStringLiteral("mnuScalaLineare"));
    QCOMPARE(bench.configuration.maxScaleVolt, 1.23F);
    QCOMPARE(bench.graph()->coordinates().fullScaleVolt(), static_cast<double>(1.23F));
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1dB"));
    QCOMPARE(bench.configuration.maxScaleDb, -40);
    QCOMPARE(bench.desktop.beeps, 0);
}

void TestEntryBoxes::theFullScaleBoxesCorrectWhatIsTyped()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    const auto leaves = [&](WalkBox box, const char *typed, const char *shown, bool beeps) {
        const int before = bench.desktop.beeps;
        bench.hands.typeOver(box, QString::fromLatin1(typed));
        bench.tab();
        QCOMPARE(bench.shown(box), test::inLocale(locale, QString::fromLatin1(shown)));
        QCOMPARE(bench.desktop.beeps > before, beeps);
    };
    leaves(WalkBox::MaxVolt, "0", "2.50", true);
    leaves(WalkBox::MaxVolt, "-1", "2.50", true);
    leaves(WalkBox::MaxVolt, "many", "2.50", true);
    leaves(WalkBox::MaxVolt, "10", "10.00", false);
    leaves(WalkBox::MaxVolt, "3", "3.00", false);
    leaves(WalkBox::MaxVolt, "12", "10.00", true);
    QCOMPARE(bench.configuration.maxScaleVolt, 10.0F);
    bench.hands.choose(QStringLiteral("mnuScalaLogaritmica1"));
    leaves(WalkBox::MaxDb, "15", "-15.0", false);
    leaves(WalkBox::MaxDb, "many", "-15.0", true);
    leaves(WalkBox::MaxDb, "-90", "-90.0", false);
    leaves(WalkBox::MaxDb, "-30", "-30.0", false);
    leaves(WalkBox::MaxDb, "120", "-90.0", true);
    QCOMPARE(bench.configuration.maxScaleDb, -90);
    // The typed value is used, not the value rounded for the box.
    leaves(WalkBox::MaxDb, "90.04", "-90.0", true);
}

void TestEntryBoxes::theFirstClickSelectsTheNumber_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"txtStart", "txtStop", "txtM1X", "txtM2X", "txtM3Y", "txtMaxVolt"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestEntryBoxes::theFirstClickSelectsTheNumber()
{
    QFETCH(QString, name);
    const Bench bench;
    auto *box = bench.find<QLineEdit>(qPrintable(name));
    box->setFocus();
    const QSignalSpy finished(box, &QLineEdit::editingFinished);
    bench.find("cmdStart")->setFocus();
    QCOMPARE(finished.count(), 1);
    const QPoint inside(box->width() - 14, box->height() / 2);
    QTest::mouseClick(box, Qt::LeftButton, {}, inside);
    QVERIFY(box->hasFocus());
    QCOMPARE(box->selectedText(), box->text());
    QVERIFY(!box->text().contains(u',')); // digits without separators, for editing
    // The second click places the caret.
    test::pauseOfAPerson(QApplication::doubleClickInterval() + 50);
    QTest::mouseClick(box, Qt::LeftButton, {}, inside);
    QVERIFY(!box->hasSelectedText());
    QVERIFY(box->cursorPosition() > 0);
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClick(box, Qt::Key_Escape);
    // Dragging selects part of the text, even if the drag gives the box the focus.
    bench.find("cmdStart")->setFocus();
    const int digit = box->fontMetrics().horizontalAdvance(u'8');
    const QPoint further(box->width() - 8 - 3 * digit / 2, box->height() / 2);
    QTest::mousePress(box, Qt::LeftButton, {}, QPoint(box->width() - 2, box->height() / 2));
    WalkHands::moveMouse(box, further, Qt::LeftButton);
    QTest::mouseRelease(box, Qt::LeftButton, {}, further);
    QVERIFY2(box->hasSelectedText() && box->selectedText().size() < box->text().size(),
             qPrintable(box->selectedText()));
}

void TestEntryBoxes::digitsAreSteppedInPlainDigits()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const Bench bench;
    QLineEdit *box = bench.hands.box(WalkBox::Start);
    bench.hands.enter(WalkBox::Start);
    QCOMPARE(box->text(), QStringLiteral("1000000"));
    bench.hands.wheel(QStringLiteral("VScrollStart_3"), true);
    QCOMPARE(box->text(), QStringLiteral("1001000"));
    bench.hands.key(Qt::Key_End);
    bench.hands.key(Qt::Key_Up);
    QCOMPARE(box->text(), QStringLiteral("1001001"));
    bench.hands.key(Qt::Key_Left);
    bench.hands.key(Qt::Key_Down);
    QCOMPARE(box->text(), QStringLiteral("1000991"));
    QCOMPARE(box->cursorPosition(), 6); // the caret stays next to its digit
    bench.hands.arrow(QStringLiteral("VScrollStart_6"), true);
    QCOMPARE(box->text(), QStringLiteral("2000991"));
    QVERIFY(box->hasFocus());
    QVERIFY(!box->isModified());
    // Steps a digit of a number that is still being typed.
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("1500000"));
    bench.hands.wheel(QStringLiteral("txtStart"), true);
    QCOMPARE(box->text().size(), 7);
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("1500000"));
    bench.hands.arrow(QStringLiteral("VScrollStart_0"), true);
    QCOMPARE(box->text(), QStringLiteral("1500001"));
    // The range is planned while the box is being edited.
    bench.hands.letTimePass();
    QCOMPARE(box->text(), QStringLiteral("1500001"));
    QCOMPARE(bench.cell(1), masked(1500001));
    bench.tab();
    QCOMPARE(box->text(), masked(1500001));
    // Without the focus, the box shows separators.
    bench.hands.wheel(QStringLiteral("VScrollStart_0"), true);
    QCOMPARE(box->text(), masked(1500002));
    QCOMPARE(bench.configuration.startFreq, 1500002);
    QCOMPARE(bench.desktop.beeps, 0);
}

// In a descending sweep, a search for the first row not below a frequency would always return row 1.
void TestEntryBoxes::aDescendingSweepKeepsItsMarkers()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::Start, QStringLiteral("5000000"));
    bench.hands.typeOver(WalkBox::Stop, QStringLiteral("1000000"));
    bench.tab();
    bench.hands.letTimePass();
    QCOMPARE(bench.cell(1), masked(5000000));
    QCOMPARE(bench.cell(101), masked(4000000));
    bench.clickGraph(bench.place(101, 500));
    bench.clickGraph(bench.place(301, 500), Qt::RightButton);
    for (const auto &[box, marker] : {std::pair(WalkBox::M1X, GraphItem::M1), std::pair(WalkBox::M2X, GraphItem::M2)}) {
        const double before = bench.row(marker);
        bench.hands.enter(box);
        bench.tab();
        QCOMPARE(bench.row(marker), before);
        bench.hands.enter(box);
        bench.hands.key(Qt::Key_Return);
        QCOMPARE(bench.row(marker), before);
        bench.hands.key(Qt::Key_Alt);
        bench.hands.key(Qt::Key_Escape);
        bench.tab();
        QCOMPARE(bench.row(marker), before);
        QCOMPARE(bench.unmasked(), QString());
    }
}

void TestEntryBoxes::theDifferenceFollowsTheBoxesAtZero()
{
    QByteArray settings = kEntrySettings;
    settings.replace("Scale=0", "Scale=2\r\nMax scaleDb=-10");
    const Bench bench(settings);
    bench.hands.typeOver(WalkBox::M4Y, QStringLiteral("-5"));
    bench.tab();
    const int zero = bench.place(200, 0.0).y();
    int zeros = 0;
    for (int y = zero - 12; y <= zero + 12; ++y) {
        // Checks the boxes both while the line is being dragged and after it is released.
        const int from = bench.place(200, bench.height(GraphItem::M3)).y();
        QTest::mousePress(bench.graph(), Qt::LeftButton, {}, QPoint(300, from));
        WalkHands::moveMouse(bench.graph(), QPoint(300, from + 40), Qt::LeftButton);
        for (int held = 1; held >= 0; --held) {
            if (held)
                WalkHands::moveMouse(bench.graph(), QPoint(300, y), Qt::LeftButton);
            else
                QTest::mouseRelease(bench.graph(), Qt::LeftButton, {}, QPoint(300, y));
            const double m3 = bench.number(WalkBox::M3Y);
            const double m4 = bench.number(WalkBox::M4Y);
            zeros += m3 == 0.0 ? 1 : 0;
            // M4 is at -5 dB: if M3 is above 0 dB, the box shows the sum of their distances from 0 dB.
            QCOMPARE(m4, -5.0);
            QCOMPARE(bench.text("txtM4M3"), test::shownAmplitude(false, m3 < 0.0 ? m4 - m3 : m3 + 5.0));
        }
    }
    QVERIFY(zeros > 2);
}

void TestEntryBoxes::theStepIsReadOut()
{
    const Bench bench;
    QWidget *step = bench.find("txtStep");
    QCOMPARE(bench.text("txtStep"), masked(10000));
    bench.hands.enter(WalkBox::Start);
    QTest::mouseClick(step, Qt::LeftButton, {}, step->rect().center());
    QVERIFY(!step->hasFocus());
    QVERIFY(bench.hands.box(WalkBox::Start)->hasFocus());
    QVERIFY(step->cursor().shape() != Qt::IBeamCursor);
    QTest::keyClicks(step, QStringLiteral("5"));
    QCOMPARE(bench.text("txtStep"), masked(10000));
    for (int i = 0; i < 60; ++i) {
        bench.tab();
        QVERIFY(!step->hasFocus());
    }
}

QTEST_MAIN(TestEntryBoxes)
#include "test_entry_boxes.moc"
