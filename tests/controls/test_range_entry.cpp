// SPDX-License-Identifier: MIT
#include "controls/range_entry.h"

#include "tests/support/fake_desktop.h"
#include "tests/support/locales.h"

#include <QSignalSpy>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWheelEvent>

using namespace calvorn;
using calvorn::test::inLocale;

class TestRangeEntry : public QObject
{
    Q_OBJECT

private:
    // The widget with the objects that it needs.
    struct Bench
    {
        Configuration configuration;
        test::FakeDesktop desktop;
        Messages messages{configuration, desktop};
        Log log{configuration};
        ErrorBoundary boundary{messages, log};
        SweepTable table{configuration};
        FrequencyReadouts readouts;
        RangeEntry entry{configuration, table, readouts, messages, boundary};

        Bench()
        {
            configuration.ddsMinFreq = 10;
            configuration.ddsMaxFreq = 60000000;
            configuration.startFreq = 1000000;
            configuration.stopFreq = 10000000;
            entry.aggiornaLblFrequenza();
            entry.show();
            entry.activateWindow();
            (void)QTest::qWaitForWindowActive(&entry);
        }

        QScrollBar *bar(const char *prefix, int index)
        {
            return entry.findChild<QScrollBar *>(QStringLiteral("%1_%2").arg(QString::fromLatin1(prefix)).arg(index));
        }

        // Clicks a digit's up or down arrow.
        void arrow(const char *prefix, int index, QStyle::SubControl which)
        {
            QScrollBar *target = bar(prefix, index);
            QStyleOptionSlider option;
            option.initFrom(target);
            option.orientation = Qt::Vertical;
            option.minimum = target->minimum();
            option.maximum = target->maximum();
            option.sliderPosition = option.sliderValue = target->value();
            option.subControls = QStyle::SC_All;
            const QRect place = target->style()->subControlRect(QStyle::CC_ScrollBar, &option, which, target);
            QVERIFY(!place.isEmpty());
            QTest::mouseClick(target, Qt::LeftButton, {}, place.center());
            QCOMPARE(target->value(), 2);
        }
        void up(const char *prefix, int index) { arrow(prefix, index, QStyle::SC_ScrollBarSubLine); }
        void down(const char *prefix, int index) { arrow(prefix, index, QStyle::SC_ScrollBarAddLine); }

        QString step() const
        {
            return entry.findChild<QWidget *>(QStringLiteral("txtStep"))->property("text").toString();
        }
        QLineEdit *box(const char *name) { return entry.findChild<QLineEdit *>(QString::fromLatin1(name)); }

        void type(const char *name, const QString &text)
        {
            QLineEdit *edit = box(name);
            edit->setFocus();
            edit->selectAll();
            // No keyboard has a key for a narrow space; users type a plain one.
            QTest::keyClicks(edit, QString(text).replace(u'\u202F', u' '));
            QTest::keyClick(edit, Qt::Key_Tab);
        }
    };

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void thePlanIsShown_data() { test::addLocaleRows(); }
    void thePlanIsShown()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Bench bench;
        const auto expect = [&](const char *text) { return inLocale(locale, QString::fromLatin1(text)); };
        QCOMPARE(bench.box("txtStart")->text(), expect("1,000,000"));
        QCOMPARE(bench.box("txtStop")->text(), expect("10,000,000"));
        QCOMPARE(bench.step(), expect("22,500"));
        QCOMPARE(bench.readouts.startText(), expect("1,000,000"));
        QCOMPARE(bench.readouts.findChild<QLabel *>(QStringLiteral("lblCentro"))->text(), expect("5,477,500"));
        QCOMPARE(bench.readouts.stopText(), expect("9,977,500"));
        QCOMPARE(bench.entry.sampleCountLabel()->text(), QStringLiteral("N.Campioni 399"));
        QVERIFY(!bench.entry.isPlanStale());
    }

    void aRangeTooSmallIsCorrectedAndTold()
    {
        Bench bench;
        bench.configuration.startFreq = 1000;
        bench.configuration.stopFreq = 1200;
        bench.entry.aggiornaLblFrequenza();
        QCOMPARE(bench.desktop.beeps, 1);
        QCOMPARE(bench.desktop.boxes.size(), 1);
        const auto box = bench.desktop.boxes.first();
        QCOMPARE(box.text,
                 QStringLiteral("Minimum sweeping range is 400 Hz.\r\rStop frequency will be set to 1,400 Hz"));
        QCOMPARE(box.icon, BoxIcon::Warning);
        QCOMPARE(box.buttons, BoxButtons::Ok);
        QCOMPARE(box.title, QStringLiteral("Brenik - Calvorn  v2.0"));
        QCOMPARE(bench.box("txtStop")->text(), QStringLiteral("1,400"));
        QCOMPARE(bench.step(), QStringLiteral("1"));
    }

    void aDescendingPairNearZeroNamesBothEnds()
    {
        Bench bench;
        bench.configuration.startFreq = 300;
        bench.configuration.stopFreq = 100;
        bench.entry.calcolaStep();
        QCOMPARE(bench.desktop.lastText(), QStringLiteral("Minimum sweeping range is 400 Hz.\r"
                                                          "Start frequency will be set to 401 Hz\r"
                                                          "Stop frequency will be set to 1 Hz"));
        QCOMPARE(bench.configuration.stepFreq, -1);
    }

    void typedFrequenciesAreTaken_data() { test::addLocaleRows(); }
    void typedFrequenciesAreTaken()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        Bench bench;
        QSignalSpy changed(&bench.entry, &RangeEntry::rangeChanged);
        bench.type("txtStart", QStringLiteral("2500000"));
        QCOMPARE(bench.configuration.startFreq, 2500000);
        QCOMPARE(bench.box("txtStart")->text(), inLocale(locale, QStringLiteral("2,500,000")));
        QCOMPARE(changed.count(), 1);
        QVERIFY(bench.entry.isPlanStale());
        bench.type("txtStop", inLocale(locale, QStringLiteral("3,500,000")));
        QCOMPARE(bench.configuration.stopFreq, 3500000);
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void enteringTheBoxShowsPlainDigits()
    {
        Bench bench;
        bench.box("txtStart")->setFocus();
        bench.box("txtStop")->setFocus();
        QCOMPARE(bench.box("txtStop")->text(), QStringLiteral("10000000"));
        QTest::keyClick(bench.box("txtStop"), Qt::Key_Tab);
        QCOMPARE(bench.box("txtStop")->text(), QStringLiteral("10,000,000"));
    }

    // The plan is updated shortly after the user leaves the first box, possibly while the second is being typed.
    void aPlanDoesNotOverwriteWhatIsBeingTyped()
    {
        Bench bench;
        bench.type("txtStart", QStringLiteral("2000000"));
        QLineEdit *stop = bench.box("txtStop");
        QVERIFY(stop->hasFocus());
        bench.entry.aggiornaLblFrequenza();
        QCOMPARE(stop->text(), QStringLiteral("10000000"));
        QCOMPARE(stop->selectedText(), stop->text());
        QTest::keyClicks(stop, QStringLiteral("4500"));
        bench.entry.aggiornaLblFrequenza();
        QTest::keyClicks(stop, QStringLiteral("000"));
        QTest::keyClick(stop, Qt::Key_Tab);
        QCOMPARE(bench.configuration.stopFreq, 4500000);
        QCOMPARE(stop->text(), QStringLiteral("4,500,000"));
    }

    void badEntriesAreCorrectedInPlace()
    {
        Bench bench;
        bench.type("txtStop", QStringLiteral("hello"));
        QCOMPARE(bench.box("txtStop")->text(), QStringLiteral("10,000,000"));
        QCOMPARE(bench.desktop.beeps, 0);
        bench.type("txtStart", QStringLiteral("5"));
        QCOMPARE(bench.box("txtStart")->text(), QStringLiteral("10"));
        QCOMPARE(bench.desktop.beeps, 1);
        bench.type("txtStop", QStringLiteral("99999999999"));
        QCOMPARE(bench.box("txtStop")->text(), QStringLiteral("60,000,000"));
        QCOMPARE(bench.desktop.beeps, 2);
        QCOMPARE(bench.desktop.boxes.size(), 0);
    }

    void keysStepTheDigitAtTheCaret()
    {
        Bench bench;
        QLineEdit *box = bench.box("txtStart");
        box->setFocus();
        box->setText(QStringLiteral("1000000"));
        box->setCursorPosition(4); // after the thousands digit
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(bench.configuration.startFreq, 1001000);
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(bench.configuration.startFreq, 1002000);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(bench.configuration.startFreq, 1001000);
        QCOMPARE(box->text(), QStringLiteral("1001000")); // without separators while the box has the focus
        box->end(false);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(bench.configuration.startFreq, 1000999);
        box->home(false); // before the first digit
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(bench.configuration.startFreq, 11000999);
        // The step applies to the number that is being typed.
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("2000000"));
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(bench.configuration.startFreq, 2000001);
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void digitsStepDownToTheMinimum()
    {
        Bench bench;
        QSignalSpy changed(&bench.entry, &RangeEntry::rangeChanged);
        bench.configuration.startFreq = 15;
        bench.down("VScrollStart", 0);
        QCOMPARE(bench.configuration.startFreq, 14);
        QCOMPARE(bench.desktop.beeps, 0);
        QCOMPARE(changed.count(), 1);
        bench.configuration.startFreq = 11;
        bench.down("VScrollStart", 0);
        QCOMPARE(bench.configuration.startFreq, 10);
        QCOMPARE(bench.desktop.beeps, 1);
        bench.down("VScrollStart", 0);
        QCOMPARE(bench.configuration.startFreq, 10);
        QCOMPARE(bench.desktop.beeps, 2);
        QCOMPARE(bench.box("txtStart")->text(), QStringLiteral("10"));
    }

    void aStepLargerThanTheFrequencyChangesNothing()
    {
        Bench bench;
        bench.configuration.startFreq = 50;
        bench.down("VScrollStart", 2);
        QCOMPARE(bench.configuration.startFreq, 50);
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void digitsStepUpToTheMaximum()
    {
        Bench bench;
        bench.configuration.stopFreq = 55000000;
        bench.up("VScrollStop", 7);
        QCOMPARE(bench.configuration.stopFreq, 60000000);
        QCOMPARE(bench.desktop.beeps, 1);
        QCOMPARE(bench.box("txtStop")->text(), QStringLiteral("60,000,000"));
        QCOMPARE(bench.configuration.startFreq, 1000000);
    }

    void everyDigitStepsItsWeight()
    {
        Bench bench;
        bench.configuration.ddsMaxFreq = 2000000000;
        std::int32_t expected = 1000000;
        std::int32_t weight = 1;
        for (int index = 0; index < 9; ++index, weight *= 10) {
            bench.up("VScrollStart", index);
            expected += weight;
            QCOMPARE(bench.configuration.startFreq, expected);
        }
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void theWheelStepsTheDigitUnderTheMouse()
    {
        Bench bench;
        QScrollBar *tens = bench.bar("VScrollStart", 1);
        QLineEdit *box = bench.box("txtStart");
        const QPoint over = box->mapFrom(&bench.entry, tens->mapTo(&bench.entry, tens->rect().center()));
        const QPointF inBox(over.x(), box->height() / 2.0);
        const auto turn = [&](QWidget *target, const QPointF &at, int delta) {
            QWheelEvent wheel(at, target->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(target, &wheel);
        };
        turn(box, inBox, 120);
        QCOMPARE(bench.configuration.startFreq, 1000010);
        turn(box, inBox, -120);
        QCOMPARE(bench.configuration.startFreq, 1000000);
        turn(tens, QPointF(tens->rect().center()), 120);
        QCOMPARE(bench.configuration.startFreq, 1000010);

        // A focused box shows its number without separators, so the digits are closer together.
        bench.entry.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&bench.entry));
        // A digit's centre is half a digit to the left of the caret that follows it.
        const auto digitOf = [&](int digit) {
            box->setCursorPosition(static_cast<int>(box->text().size()) - digit);
            box->repaint(); // aligns the text
            const QRectF caret = box->inputMethodQuery(Qt::ImCursorRectangle).toRectF();
            return QPointF(caret.center().x() - QFontMetrics(box->font()).horizontalAdvance(u'8') / 2.0,
                           box->height() / 2.0);
        };
        int expected = 1000010;
        for (int digit = 0, weight = 1; digit < 7; ++digit, weight *= 10) {
            bench.box("txtStop")->setFocus(); // a step restores the separators
            box->setFocus();
            QTRY_COMPARE(box->text(), QString::number(expected));
            turn(box, digitOf(digit), 120);
            expected += weight;
            QCOMPARE(bench.configuration.startFreq, expected);
        }
    }

    void aDoubleClickMarksTheWholeNumber()
    {
        EntryBox box;
        box.resize(200, 30);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        for (const char *number : {"1,000,000", "-12.753", "0,5"}) {
            box.setText(QString::fromLatin1(number));
            QTest::mouseDClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 20, box.height() / 2));
            QCOMPARE(box.selectedText(), QString::fromLatin1(number));
        }
        QTest::keyClicks(&box, QStringLiteral("0.3"));
        QCOMPARE(box.text(), QStringLiteral("0.3"));
    }

    void barsStandOverTheirDigits()
    {
        Bench bench;
        for (int index = 1; index < 9; ++index) {
            const QRect right = bench.bar("VScrollStart", index - 1)->geometry();
            const QRect left = bench.bar("VScrollStart", index)->geometry();
            QVERIFY2(left.right() < right.left(), qPrintable(QString::number(index)));
            QVERIFY(left.left() >= 0);
        }
    }

    void whatIsBeingTypedCountsBeforeAStep()
    {
        Bench bench;
        QLineEdit *box = bench.box("txtStart");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("2000000"));
        bench.up("VScrollStart", 3);
        QCOMPARE(bench.configuration.startFreq, 2001000);
    }

    void returnTakesTheEntryToo()
    {
        Bench bench;
        QLineEdit *box = bench.box("txtStart");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("3000000"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(bench.configuration.startFreq, 3000000);
        QCOMPARE(box->text(), QStringLiteral("3000000"));
    }
};

QTEST_MAIN(TestRangeEntry)
#include "test_range_entry.moc"
