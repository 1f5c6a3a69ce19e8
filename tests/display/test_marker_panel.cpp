// SPDX-License-Identifier: MIT
#include "core/number_text.h"
#include "tests/display/display_bench.h"
#include "tests/support/overlaps.h"
#include "tests/support/walk_numbers.h"

#include <cmath>

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
        bench.type(QStringLiteral("txtM1X"), QStringLiteral("3000000"));
        QCOMPARE(graph.line(GraphItem::M1).x1, 81.0);
        bench.type(QStringLiteral("txtM1X"), QStringLiteral("5"));
        QCOMPARE(graph.line(GraphItem::M1).x1, 1.0);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), inLocale(locale, QStringLiteral("1,000,000")));
        bench.type(QStringLiteral("txtM2X"), QStringLiteral("60000000"));
        QCOMPARE(graph.line(GraphItem::M2).x1, 400.0);
        QCOMPARE(bench.text(QStringLiteral("txtM2X")), inLocale(locale, QStringLiteral("10,975,000")));
        QCOMPARE(bench.text(QStringLiteral("txtM2M1")), inLocale(locale, QStringLiteral("9,975,000")));
        // A frequency between two rows snaps to the upper one; the user may type group separators.
        bench.type(QStringLiteral("txtM1X"), inLocale(locale, QStringLiteral("2,000,001")));
        QCOMPARE(graph.line(GraphItem::M1).x1, 42.0);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), inLocale(locale, QStringLiteral("2,025,000")));
        QCOMPARE(bench.desktop.beeps, 0);
    }

    void everyReadOutHasAPlaceOfItsOwn()
    {
        DisplayBench bench;
        bench.show();
        QCOMPARE(test::overlaps(bench.markers), QString());
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
        // The floating cross follows the curve.
        bench.configuration.cursorMode = 1;
        QTest::mouseMove(&graph, QPoint(0, graph.height() / 2));
        QTRY_COMPARE(bench.text(QStringLiteral("txtY")), QStringLiteral("-3.0"));
        QCOMPARE(graph.line(GraphItem::CursorV).x1, 1.0);
        QCOMPARE(graph.line(GraphItem::CursorH).y1, 3000.0);
        QCOMPARE(bench.desktop.boxes.size(), 0);
    }

    void clicksPutTheMarkers()
    {
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        QTest::mouseClick(&graph, Qt::RightButton, {}, QPoint(graph.width() / 2, 50));
        QVERIFY(graph.line(GraphItem::M2).x1 > 190.0);
        // A click at the left edge selects row 1.
        QTest::mouseClick(&graph, Qt::RightButton, {}, QPoint(0, 50));
        QCOMPARE(graph.line(GraphItem::M2).x1, 1.0);
        QCOMPARE(bench.text(QStringLiteral("txtM2X")), QStringLiteral("1,000,000"));
        QTest::mouseClick(&graph, Qt::LeftButton, {}, QPoint(graph.width() - 1, 50));
        QCOMPARE(graph.line(GraphItem::M1).x1, 400.0);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), QStringLiteral("10,975,000"));
        // The difference is positive, whichever marker is on the left.
        QCOMPARE(bench.text(QStringLiteral("txtM2M1")), QStringLiteral("9,975,000"));
        QTest::mouseClick(&graph, Qt::LeftButton, Qt::ShiftModifier, QPoint(100, graph.height() / 2));
        const double m3 = test::readNumber(bench.text(QStringLiteral("txtM3Y")));
        QVERIFY(std::abs(m3 - 0.998) < 0.01);
        QCOMPARE(graph.line(GraphItem::M3).y1, m3 * 1000.0);
        QTest::mouseClick(&graph, Qt::RightButton, Qt::ShiftModifier, QPoint(100, graph.height() / 4));
        const double m4 = test::readNumber(bench.text(QStringLiteral("txtM4Y")));
        QVERIFY(std::abs(m4 - 1.497) < 0.01);
        QCOMPARE(bench.text(QStringLiteral("txtM4M3")), test::shownAmplitude(true, m4 - m3));
        QCOMPARE(graph.line(GraphItem::M1).x1, 400.0);
        QCOMPARE(bench.desktop.boxes.size(), 0);
    }

    void otherButtonsChangeNothing()
    {
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        QTest::mouseClick(&graph, Qt::MiddleButton, {}, QPoint(200, 50));
        QTest::mouseClick(&graph, Qt::MiddleButton, Qt::ShiftModifier, QPoint(200, 50));
        for (const GraphItem item : {GraphItem::M1, GraphItem::M2})
            QCOMPARE(graph.line(item).x1, 1.0);
        for (const GraphItem item : {GraphItem::M3, GraphItem::M4})
            QCOMPARE(graph.line(item).y1, 0.0);
    }

    void theKeyboardDoesWhatTheMouseDoes()
    {
        DisplayBench bench(1); // 0 to -40 dB
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        graph.setFocus(Qt::TabFocusReason);
        QVERIFY(graph.hasFocus());
        QTest::keyClick(&graph, Qt::Key_Home);
        QCOMPARE(bench.text(QStringLiteral("txtX")), QStringLiteral("1,000,000"));
        QCOMPARE(bench.text(QStringLiteral("txtY")), QStringLiteral("-20.0"));
        QTest::keyClick(&graph, Qt::Key_Right, Qt::ControlModifier);
        QTest::keyClick(&graph, Qt::Key_Right);
        QTest::keyClick(&graph, Qt::Key_Left);
        QTest::keyClick(&graph, Qt::Key_1);
        QCOMPARE(graph.line(GraphItem::M1).x1, 11.0);
        QCOMPARE(bench.text(QStringLiteral("txtM1X")), QStringLiteral("1,250,000"));
        QTest::keyClick(&graph, Qt::Key_End);
        QTest::keyClick(&graph, Qt::Key_2);
        QCOMPARE(graph.line(GraphItem::M2).x1, 400.0);
        QTest::keyClick(&graph, Qt::Key_3);
        QCOMPARE(bench.text(QStringLiteral("txtM3Y")), QStringLiteral("-20.0"));
        const double before = graph.line(GraphItem::M3).y1;
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(&graph, Qt::Key_Up, Qt::ControlModifier);
        QTest::keyClick(&graph, Qt::Key_4);
        const double lines = std::round((before - graph.line(GraphItem::M4).y1) / 40000.0 * graph.height());
        QVERIFY2(std::abs(lines - 30.0) <= 1.0, qPrintable(QString::number(lines)));
        QTest::keyClick(&graph, Qt::Key_Tab);
        QVERIFY(!graph.hasFocus());
        QCOMPARE(bench.desktop.boxes.size(), 0);
    }

    void theFloatingCrossAimsTheAmplitudeMarkers()
    {
        DisplayBench bench(1);
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        bench.configuration.cursorMode = 1;
        for (int row = 1; row <= kSweepPoints; ++row)
            bench.table.setText(row, SweepTable::AmplitudeColumn, QStringLiteral("-12.5"));
        QTest::mouseMove(&graph, QPoint(100, 20));
        QTRY_COMPARE(graph.line(GraphItem::CursorH).y1, 12500.0);
        QTest::mouseClick(&graph, Qt::LeftButton, Qt::ShiftModifier, QPoint(100, 20));
        QCOMPARE(bench.text(QStringLiteral("txtM3Y")), QStringLiteral("-12.5"));
    }

    void linesAreDragged()
    {
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        bench.type(QStringLiteral("txtM2X"), QStringLiteral("6000000"));
        const int from = static_cast<int>(0.5 + 201.0 / 400.0 * (graph.width() - 1)); // row 201 is at 6 MHz
        QTest::mousePress(&graph, Qt::LeftButton, {}, QPoint(from + 2, 100));
        QTest::mouseMove(&graph, QPoint(from + 40, 100));
        QTRY_VERIFY(graph.line(GraphItem::M2).x1 > 220.0);
        // The read-outs follow the mouse during the drag.
        QVERIFY(bench.text(QStringLiteral("txtM2X")) != QStringLiteral("6,000,000"));
        QTest::mouseRelease(&graph, Qt::LeftButton, {}, QPoint(graph.width() - 1, 100));
        QCOMPARE(graph.line(GraphItem::M2).x1, 400.0);
        QCOMPARE(graph.line(GraphItem::M1).x1, 1.0);
        // Clicking a line without moving the mouse is still a click.
        QTest::mouseClick(&graph, Qt::LeftButton, {}, QPoint(graph.width() - 1, 100));
        QCOMPARE(graph.line(GraphItem::M1).x1, 400.0);
        // Afterwards, a click far from every line sets M1 as usual.
        QTest::mouseClick(&graph, Qt::LeftButton, {}, QPoint(graph.width() / 2, 100));
        QVERIFY(std::abs(graph.line(GraphItem::M1).x1 - 200.0) <= 1.0);
    }

    void escapeBringsADraggedLineBack()
    {
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        bench.type(QStringLiteral("txtM2X"), QStringLiteral("6000000"));
        const int from = static_cast<int>(0.5 + 201.0 / 400.0 * (graph.width() - 1));
        QTest::mousePress(&graph, Qt::LeftButton, {}, QPoint(from, 100));
        QTest::mouseMove(&graph, QPoint(from + 40, 100));
        QTRY_VERIFY(graph.line(GraphItem::M2).x1 > 220.0);
        QTest::keyPress(&bench.window, Qt::Key_Escape);
        QCOMPARE(graph.line(GraphItem::M2).x1, 201.0);
        QTest::keyRelease(&bench.window, Qt::Key_Escape);
        QTest::mouseMove(&graph, QPoint(from + 60, 100));
        QTest::mouseRelease(&graph, Qt::LeftButton, {}, QPoint(from + 60, 100));
        QCOMPARE(graph.line(GraphItem::M2).x1, 201.0);
        QCOMPARE(bench.text(QStringLiteral("txtM2X")), QStringLiteral("6,000,000"));
    }

    void markersAreCopiedIntoTheRange()
    {
        DisplayBench bench;
        bench.show();
        bench.type(QStringLiteral("txtM1X"), QStringLiteral("2000000"));
        bench.type(QStringLiteral("txtM2X"), QStringLiteral("3000000"));
        QList<std::int32_t> copied;
        connect(&bench.markers, &MarkerPanel::startCopied, this, [&](std::int32_t hertz) { copied.append(hertz); });
        connect(&bench.markers, &MarkerPanel::stopCopied, this, [&](std::int32_t hertz) { copied.append(-hertz); });
        for (const char *name : {"cmdCopyM1", "cmdCopyM2"})
            QTest::mouseClick(bench.window.findChild<QPushButton *>(QString::fromLatin1(name)), Qt::LeftButton);
        QCOMPARE(copied, (QList<std::int32_t>{2000000, -3000000}));
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
        // Return commits the entry without leaving the box, which is ready for the next entry.
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
        bench.find<ReadOut>(QStringLiteral("txtM1Y"))->setText(QStringLiteral("9"));
        bench.find<ReadOut>(QStringLiteral("txtM2Y"))->setText(QStringLiteral("9"));
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
        // Invalid settings leave the markers in place.
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
            const auto *box = bench.find<QWidget>(QString::fromLatin1(name));
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
