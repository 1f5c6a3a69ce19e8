// SPDX-License-Identifier: MIT
#include "tests/display/display_bench.h"
#include "tests/support/walk_numbers.h"

#include <cmath>

using namespace calvorn;
using calvorn::test::addLocaleRows;
using calvorn::test::DisplayBench;
using calvorn::test::inLocale;

class TestScaleChange : public QObject
{
    Q_OBJECT

private:
    // The expected marker values, computed here from the electrical definitions only.
    static double reference(int scale) { return scale >= 3 ? 10.0 : 1.0; }
    static double rounded(double value, int decimals)
    {
        const double power = std::pow(10.0, decimals);
        return std::nearbyint(value * power) / power;
    }
    static double expectedMarker(int from, int to, double value)
    {
        if (from == to || (from > 0 && to > 0 && reference(from) == reference(to)))
            return value;
        const double volts = from == 0 ? value : rounded(std::pow(10.0, value / 20.0) * reference(from), 3);
        if (to == 0)
            return volts;
        const double takenAt = from == 0 && to == 4 ? 1.0 : reference(to);
        return volts > 0.0 ? rounded(20.0 * std::log10(volts / takenAt), 2) : -100.0;
    }
    static double expectedDifference(int to, double m3, double m4)
    {
        if (to == 0)
            return std::abs(m4 - m3);
        return m3 * m4 > 0.0 ? m4 - m3 : std::abs(m3) + std::abs(m4);
    }
    static QString shown(double value, int decimals)
    {
        QString text = QString::number(rounded(value, decimals), 'f', decimals);
        return text.toDouble() == 0.0 && text.startsWith(u'-') ? text.mid(1) : text;
    }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void everyChangeInEveryLocale_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        const QList<QLocale> locales{QLocale(QLocale::English, QLocale::UnitedStates),
                                     QLocale(QLocale::Italian, QLocale::Italy),
                                     QLocale(QLocale::French, QLocale::France), QLocale::c()};
        for (const QLocale &locale : locales) {
            for (int from = 0; from < 5; ++from) {
                for (int to = 0; to < 5; ++to)
                    QTest::addRow("%s %d to %d", qPrintable(locale.name()), from, to) << locale << from << to;
            }
        }
    }
    void everyChangeInEveryLocale()
    {
        QFETCH(QLocale, locale);
        QFETCH(int, from);
        QFETCH(int, to);
        QLocale::setDefault(locale);
        const QList<QPair<double, double>> pairs{{-3.0, 5.0},  {-3.0, -10.0}, {2.5, 4.0},
                                                 {0.0, -20.0}, {0.5, 0.2},    {0.0, 0.0}};
        for (const auto &[m3, m4] : pairs) {
            DisplayBench bench(static_cast<std::int16_t>(from));
            for (int row = 1; row <= kSweepPoints; ++row)
                bench.table.setText(row, SweepTable::SampleColumn, QString::number(row));
            bench.find(QStringLiteral("txtM3Y"))->setText(inLocale(locale, QString::number(m3)));
            bench.find(QStringLiteral("txtM4Y"))->setText(inLocale(locale, QString::number(m4)));
            bench.find<QWidget>(QStringLiteral("txtX"))->setProperty("text", QStringLiteral("1"));
            bench.find<QWidget>(QStringLiteral("txtY"))->setProperty("text", QStringLiteral("1"));
            bench.scaleAction(to)->trigger();

            const double new3 = expectedMarker(from, to, m3);
            const double new4 = expectedMarker(from, to, m4);
            const int decimals = to == 0 ? 3 : 1;
            QCOMPARE(bench.text(QStringLiteral("txtM3Y")), inLocale(locale, shown(new3, decimals)));
            QCOMPARE(bench.text(QStringLiteral("txtM4Y")), inLocale(locale, shown(new4, decimals)));
            QCOMPARE(bench.text(QStringLiteral("txtM4M3")),
                     inLocale(locale, shown(expectedDifference(to, new3, new4), decimals)));
            QCOMPARE(bench.configuration.scaleType, static_cast<std::int16_t>(to));
            checkDisplay(bench, locale, to);
            const double factor = to == 0 ? 1000.0 : -1000.0;
            QVERIFY(std::abs(bench.panel.graph().line(GraphItem::M3).y1 - rounded(new3, decimals) * factor) < 1e-6);
            QVERIFY(std::abs(bench.panel.graph().line(GraphItem::M4).y2 - rounded(new4, decimals) * factor) < 1e-6);
        }
    }

    static void checkDisplay(DisplayBench &bench, const QLocale &locale, int to)
    {
        for (int scale = 0; scale < 5; ++scale)
            QCOMPARE(bench.scaleAction(scale)->isChecked(), scale == to);
        const QString unit = to == 0 ? QStringLiteral("Volt") : QStringLiteral("dB");
        QCOMPARE(bench.find<QLabel>(QStringLiteral("Label5"))->text(), unit);
        QCOMPARE(bench.find<QLabel>(QStringLiteral("Label15"))->text(), unit);
        QCOMPARE(bench.table.text(0, 1), unit);
        // Row 200 contains 200 counts of 5 mV each.
        const QString volt = to == 0   ? QStringLiteral("1.000")
                             : to <= 2 ? QStringLiteral("0.0")
                                       : QStringLiteral("-20.0");
        QCOMPARE(bench.table.text(200, 1), inLocale(locale, volt));
        QVERIFY(bench.text(QStringLiteral("txtX")).isEmpty());
        QVERIFY(bench.text(QStringLiteral("txtY")).isEmpty());
        const bool raised = to == 2 || to == 4;
        QCOMPARE(bench.panel.graph().coordinates().top(), to == 0 ? 1996.0 : raised ? -10000.0 : 0.0);
        QCOMPARE(bench.panel.graph().coordinates().bottom(), to == 0 ? -4.0 : 40000.0);
        const double y = to == 0 ? 1000.0 : to <= 2 ? 0.0 : 20000.0;
        QCOMPARE(bench.panel.graph().curve().at(199), QPointF(200.0, y));
        QCOMPARE(bench.desktop.beeps, 0);
        QVERIFY(bench.desktop.boxes.isEmpty());
    }

    void onlyTheTenVoltStepFromLinearTakesOneVolt()
    {
        DisplayBench linear;
        linear.find(QStringLiteral("txtM3Y"))->setText(QStringLiteral("1"));
        linear.scaleAction(4)->trigger();
        QCOMPARE(linear.text(QStringLiteral("txtM3Y")), QStringLiteral("0.0"));
        DisplayBench logarithmic(1);
        logarithmic.find(QStringLiteral("txtM3Y"))->setText(QStringLiteral("0"));
        logarithmic.scaleAction(4)->trigger();
        QCOMPARE(logarithmic.text(QStringLiteral("txtM3Y")), QStringLiteral("-20.0"));
    }

    void aMarkerThatIsNoNumberKeepsItsPlace()
    {
        DisplayBench bench;
        bench.find(QStringLiteral("txtM3Y"))->setText(QStringLiteral("1"));
        bench.markers.aggiornaPosMarkerY(GraphItem::M3);
        for (const char *text : {"rubbish", "", "1e999"}) {
            bench.find(QStringLiteral("txtM3Y"))->setText(QString::fromLatin1(text));
            bench.scaleAction(3)->trigger();
            QCOMPARE(bench.configuration.scaleType, std::int16_t{3});
            QCOMPARE(bench.text(QStringLiteral("txtM3Y")), QStringLiteral("-20.0"));
            bench.find(QStringLiteral("txtM3Y"))->setText(QString::fromLatin1(text));
            bench.scaleAction(0)->trigger();
            QCOMPARE(bench.text(QStringLiteral("txtM3Y")), QStringLiteral("1.000"));
        }
        QVERIFY(bench.desktop.boxes.isEmpty());
    }

    void anAbsurdMarkerStaysFinite()
    {
        DisplayBench bench(1);
        bench.find(QStringLiteral("txtM3Y"))->setText(QStringLiteral("1e300"));
        for (const int scale : {0, 4, 1, 0}) {
            bench.scaleAction(scale)->trigger();
            QCOMPARE(bench.configuration.scaleType, static_cast<std::int16_t>(scale));
            QVERIFY(std::isfinite(bench.panel.graph().line(GraphItem::M3).y1));
        }
        QVERIFY(!bench.panel.grab().isNull());
    }

    void aLevelBeyondEveryVoltageStopsNoScale_data() { addLocaleRows(); }
    void aLevelBeyondEveryVoltageStopsNoScale()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        for (const int from : {1, 4}) {
            for (int to = 0; to < kScales; ++to) {
                DisplayBench bench(static_cast<std::int16_t>(from));
                bench.show();
                QLineEdit *box = bench.find(QStringLiteral("txtM3Y"));
                box->setFocus();
                box->selectAll();
                QTest::keyClicks(box, QStringLiteral("100000"));
                QTest::keyClick(box, Qt::Key_Tab);
                QCOMPARE(box->text(), inLocale(locale, QStringLiteral("100000.0")));
                bench.scaleAction(to)->trigger();
                QCOMPARE(bench.configuration.scaleType, static_cast<std::int16_t>(to));
                QVERIFY(bench.scaleAction(to)->isChecked());
                QVERIFY(bench.desktop.boxes.isEmpty());
                // The box shows at most a million volts; in dB it shows the largest level that fits.
                if (to == 0)
                    QCOMPARE(box->text(), inLocale(locale, QStringLiteral("1000000.000")));
                else
                    QVERIFY2(test::readNumber(box->text()) > 6000.0, qPrintable(box->text()));
                bench.scaleAction(0)->trigger();
                QCOMPARE(bench.configuration.scaleType, std::int16_t{0});
            }
        }
    }

    // An invalid scale is treated as dB relative to 1 V, and no menu entry is checked.
    void aDamagedScaleIsKept()
    {
        for (const std::int16_t damaged : {std::int16_t{-1}, std::int16_t{5}, std::int16_t{32767}}) {
            DisplayBench bench(damaged);
            QCOMPARE(bench.configuration.scaleType, damaged);
            QCOMPARE(bench.text(QStringLiteral("Label5")), QStringLiteral("dB"));
            QCOMPARE(bench.table.text(1, SweepTable::AmplitudeColumn), QStringLiteral("-100.0"));
            for (int scale = 0; scale < 5; ++scale)
                QVERIFY(!bench.scaleAction(scale)->isChecked());
            bench.scaleAction(2)->trigger();
            QVERIFY(bench.scaleAction(2)->isChecked());
        }
    }

    void aPendingEntryCountsAsLeft()
    {
        DisplayBench bench(1);
        bench.show();
        QLineEdit *box = bench.find(QStringLiteral("txtMaxDb"));
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("60"));
        bench.scaleAction(2)->trigger();
        QCOMPARE(bench.configuration.maxScaleDb, -60);
        QCOMPARE(box->text(), QStringLiteral("-60.0"));
    }

    void actionsBearTheirNames()
    {
        DisplayBench bench;
        const QList<QPair<QString, QString>> expected{
            {QStringLiteral("mnuScalaLineare"), QStringLiteral("Linear")},
            {QStringLiteral("mnuScalaLogaritmica1"), QStringLiteral("Logarithmic (1V)")},
            {QStringLiteral("mnuScalaLogaritmica1dB"), QStringLiteral("Logarithmic (1V + 10dB)")},
            {QStringLiteral("mnuScalaLogaritmica10"), QStringLiteral("Logarithmic (10V)")},
            {QStringLiteral("mnuScalaLogaritmica10dB"), QStringLiteral("Logarithmic (10V +10dB)")}};
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(bench.scaleAction(i)->objectName(), expected[i].first);
            QCOMPARE(bench.scaleAction(i)->text().remove(u'&'), expected[i].second);
        }
    }
};

QTEST_MAIN(TestScaleChange)
#include "test_scale_change.moc"
