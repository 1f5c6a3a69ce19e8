// SPDX-License-Identifier: MIT
#include "tests/display/display_bench.h"

using namespace calvorn;
using calvorn::test::DisplayBench;
using calvorn::test::inLocale;

class TestMarkerPanel : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void typedFrequencies_data() { test::addLocaleRows(); }
    void typedFrequencies()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        DisplayBench bench;
        bench.show();
        const SweepGraph &graph = bench.panel.graph();
        bench.type(QStringLiteral("txtM1X"), QStringLiteral("5"));
        QCOMPARE(graph.line(GraphItem::M1).x1, 1.0);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), inLocale(locale, QStringLiteral("1,000,000")));
        bench.type(QStringLiteral("txtM2X"), QStringLiteral("60000000"));
        QCOMPARE(graph.line(GraphItem::M2).x1, 400.0);
        QCOMPARE(bench.text(QStringLiteral("txtM2X")), inLocale(locale, QStringLiteral("10,975,000")));
        QCOMPARE(bench.text(QStringLiteral("txtM2M1")), inLocale(locale, QStringLiteral("9,975,000")));
        // A frequency between two rows snaps to the upper one; grouping may be typed.
        bench.type(QStringLiteral("txtM1X"), inLocale(locale, QStringLiteral("2,000,001")));
        QCOMPARE(graph.line(GraphItem::M1).x1, 42.0);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), inLocale(locale, QStringLiteral("2,025,000")));
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void theReadOutFollowsTheMouse()
    {
        DisplayBench bench(1);
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        bench.table.setText(201, SweepTable::AmplitudeColumn, QStringLiteral("-12.5"));
        bench.table.setText(1, SweepTable::AmplitudeColumn, QStringLiteral("-3.0"));
        // The left edge is row 1, the middle row 200 or 201; the bottom of this scale is -40 dB.
        QTest::mouseMove(&graph, QPoint(0, graph.height() - 1));
        QTRY_COMPARE(bench.text(QStringLiteral("txtX")), QStringLiteral("1,000,000"));
        QCOMPARE(bench.text(QStringLiteral("txtY")), QStringLiteral("-40.0"));
        QTest::mouseMove(&graph, QPoint(graph.width() - 1, 0));
        QTRY_COMPARE(bench.text(QStringLiteral("txtX")), QStringLiteral("10,975,000"));
        QCOMPARE(bench.text(QStringLiteral("txtY")), QStringLiteral("0.0"));
        // The floating cross rides on the curve.
        bench.configuration.cursorMode = 1;
        QTest::mouseMove(&graph, QPoint(0, graph.height() / 2));
        QTRY_COMPARE(bench.text(QStringLiteral("txtY")), QStringLiteral("-3.0"));
        QCOMPARE(graph.line(GraphItem::CursorV).x1, 1.0);
        QCOMPARE(graph.line(GraphItem::CursorH).y1, 3000.0);
        QCOMPARE(bench.desktop.boxes.size(), 0);
    }

    void badFrequencies_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::newRow("letters") << "abc";
        QTest::newRow("blank") << " ";
        QTest::newRow("too large") << "99999999999";
    }
    void badFrequencies()
    {
        QFETCH(QString, typed);
        DisplayBench bench;
        bench.show();
        bench.type(QStringLiteral("txtM1X"), QStringLiteral("2000000"));
        const QString before = bench.text(QStringLiteral("txtM1X"));
        bench.type(QStringLiteral("txtM1X"), typed);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), before);
        QCOMPARE(bench.desktop.beeps, 1);
        QVERIFY(bench.desktop.boxes.isEmpty());
    }

    void enteringDropsTheGrouping_data() { test::addLocaleRows(); }
    void enteringDropsTheGrouping()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        DisplayBench bench;
        bench.show();
        bench.type(QStringLiteral("txtM2X"), QStringLiteral("3000000"));
        QLineEdit *box = bench.find(QStringLiteral("txtM2X"));
        box->setFocus(Qt::TabFocusReason);
        QCOMPARE(box->text(), QStringLiteral("3000000"));
        // Return acts as leaving, and the box is ready for the next entry.
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("4000000"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(bench.panel.graph().line(GraphItem::M2).x1, 121.0);
        QCOMPARE(box->text(), QStringLiteral("4000000"));
        QTest::keyClick(box, Qt::Key_Tab);
        QCOMPARE(box->text(), inLocale(locale, QStringLiteral("4,000,000")));
    }

    void differenceOfFrequenciesHasNoSign()
    {
        DisplayBench bench;
        SweepGraph &graph = bench.panel.graph();
        graph.moveLine(GraphItem::M1, 100);
        graph.moveLine(GraphItem::M2, 140);
        bench.markers.aggiornaLblMarkerX();
        const QString difference = bench.text(QStringLiteral("txtM2M1"));
        QCOMPARE(difference, QStringLiteral("1,000,000"));
        graph.moveLine(GraphItem::M1, 140);
        graph.moveLine(GraphItem::M2, 100);
        bench.markers.aggiornaLblMarkerX();
        QCOMPARE(bench.text(QStringLiteral("txtM2M1")), difference);
    }

    void amplitudeDifference_data()
    {
        QTest::addColumn<bool>("linear");
        QTest::addColumn<double>("m3");
        QTest::addColumn<double>("m4");
        QTest::addColumn<double>("difference");
        QTest::newRow("both sides") << false << -3.0 << 5.0 << 8.0;
        QTest::newRow("both below") << false << -3.0 << -10.0 << -7.0;
        QTest::newRow("both above") << false << 2.0 << 5.0 << 3.0;
        QTest::newRow("one at zero") << false << 0.0 << -10.0 << 10.0;
        QTest::newRow("linear") << true << 0.5 << 0.2 << 0.3;
        QTest::newRow("linear, both sides") << true << -0.5 << 0.2 << 0.7;
    }
    void amplitudeDifference()
    {
        QFETCH(bool, linear);
        QFETCH(double, m3);
        QFETCH(double, m4);
        QTEST(markerDifference(linear, m3, m4), "difference");
    }

    void typedAmplitudes_data() { test::addLocaleRows(); }
    void typedAmplitudes()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        DisplayBench bench(1);
        bench.show();
        bench.type(QStringLiteral("txtM3Y"), inLocale(locale, QStringLiteral("-3")));
        bench.type(QStringLiteral("txtM4Y"), inLocale(locale, QStringLiteral("5.04")));
        QCOMPARE(bench.text(QStringLiteral("txtM3Y")), inLocale(locale, QStringLiteral("-3.0")));
        QCOMPARE(bench.text(QStringLiteral("txtM4Y")), inLocale(locale, QStringLiteral("5.0")));
        QCOMPARE(bench.text(QStringLiteral("txtM4M3")), inLocale(locale, QStringLiteral("8.0")));
        QCOMPARE(bench.panel.graph().line(GraphItem::M3).y1, 3000.0);
        QCOMPARE(bench.panel.graph().line(GraphItem::M4).y2, -5000.0);
        bench.type(QStringLiteral("txtM3Y"), QStringLiteral("high"));
        QCOMPARE(bench.text(QStringLiteral("txtM3Y")), inLocale(locale, QStringLiteral("-3.0")));
        QCOMPARE(bench.desktop.beeps, 1);
        DisplayBench linear;
        linear.show();
        linear.type(QStringLiteral("txtM3Y"), inLocale(locale, QStringLiteral("0.25")));
        QCOMPARE(linear.text(QStringLiteral("txtM3Y")), inLocale(locale, QStringLiteral("0.250")));
        QCOMPARE(linear.panel.graph().line(GraphItem::M3).y1, 250.0);
    }

    void aRebuiltTableHasNoReadouts()
    {
        DisplayBench bench;
        bench.find(QStringLiteral("txtM1Y"))->setText(QStringLiteral("9"));
        bench.find(QStringLiteral("txtM2Y"))->setText(QStringLiteral("9"));
        bench.table.inizializzaGrid();
        QCOMPARE(bench.text(QStringLiteral("txtM1Y")), QStringLiteral("0"));
        QCOMPARE(bench.text(QStringLiteral("txtM2Y")), QStringLiteral("0"));
    }

    void savedMarkersComeBack()
    {
        DisplayBench bench(1);
        WindowSettings saved;
        saved.marker1 = QStringLiteral("2000000");
        saved.marker2 = QStringLiteral("3000000");
        saved.marker3 = QStringLiteral("-3");
        saved.marker4 = QStringLiteral("-7.5");
        bench.markers.restore(saved);
        bench.markers.aggiornaLblMarkerX();
        bench.markers.aggiornaLblMarkerY();
        QCOMPARE(bench.panel.graph().line(GraphItem::M1).x1, 41.0);
        QCOMPARE(bench.panel.graph().line(GraphItem::M2).x1, 81.0);
        QCOMPARE(bench.text(QStringLiteral("txtM4M3")), QStringLiteral("-4.5"));
        WindowSettings kept;
        bench.markers.save(kept);
        QCOMPARE(kept.marker1, QStringLiteral("2,000,000"));
        QCOMPARE(kept.marker4, QStringLiteral("-7.5"));
        // Texts of a damaged file leave the markers where they stand.
        WindowSettings damaged;
        damaged.marker1 = QStringLiteral("?");
        damaged.marker3 = QStringLiteral("?");
        bench.markers.restore(damaged);
        QCOMPARE(bench.panel.graph().line(GraphItem::M1).x1, 41.0);
        QCOMPARE(bench.panel.graph().line(GraphItem::M3).y1, 3000.0);
    }

    void controlsAreNamedAndExplained()
    {
        DisplayBench bench;
        for (const char *name : {"txtM1X", "txtM1Y", "txtM2X", "txtM2Y", "txtM2M1", "txtM3Y", "txtM4Y", "txtM4M3",
                                 "txtX", "txtY", "txtMaxVolt", "txtMaxDb"}) {
            QLineEdit *box = bench.find(QString::fromLatin1(name));
            QVERIFY2(box, name);
            QVERIFY2(!box->toolTip().isEmpty() && !box->accessibleName().isEmpty(), name);
        }
        QCOMPARE(bench.find(QStringLiteral("txtM1X"))->toolTip(),
                 QStringLiteral("Enter freq in Hz or ClickLeft the graph"));
        QVERIFY(bench.markers.minimumSizeHint().width() <= 560);
        QVERIFY(bench.markers.minimumSizeHint().height() <= 110);
    }
};

QTEST_MAIN(TestMarkerPanel)
#include "test_marker_panel.moc"
