// SPDX-License-Identifier: MIT
// How a large window uses its space: the height of the views below the graph, the markers beside the table, and the
// controls above the Measure panel.
#include "tests/support/fake_server_control.h"
#include "tests/support/walk_hands.h"
#include "tests/support/window_bench.h"

#include <QDockWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabWidget>

using namespace calvorn;
using calvorn::test::WalkHands;
using calvorn::test::WindowBench;

namespace {

constexpr char kSettings[] = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n"
                             "[Calvorn]\r\nScale=1\r\nStart=1000000\r\nStop=5000000\r\nMax scaleDb=-60\r\n";

struct Bench : WindowBench
{
    Bench()
        : WindowBench(test::FakeServerControl::program(), kSettings)
    {
    }

    QWidget *widget(const char *name) const { return find<QWidget>(name); }
    // Returns the geometry in window coordinates.
    QRect place(const char *name) const
    {
        const QWidget *found = widget(name);
        return {found->mapTo(window.get(), QPoint()), found->size()};
    }
    bool becomes(QSize size) const
    {
        // A widget that has just been closed still occupies space.
        return QTest::qWaitFor([&] {
            window->resize(size);
            return window->size() == size;
        });
    }
    void dragBar(int by) const
    {
        QWidget *bar = widget("splitView");
        const QPoint from = bar->rect().center();
        QTest::mousePress(bar, Qt::LeftButton, {}, from);
        // The bar moves with the mouse.
        const QPoint to = bar->mapToGlobal(from + QPoint(0, by));
        WalkHands::moveMouse(bar, bar->mapFromGlobal(to), Qt::LeftButton);
        QTest::mouseRelease(bar, Qt::LeftButton, {}, bar->mapFromGlobal(to));
        QTest::qWait(0);
    }
    void openPanel() const { QTest::keyClick(window.get(), Qt::Key_M, Qt::ControlModifier); }
    bool isPanelBelowControls() const
    {
        const QRect panel = place("dockMeasure");
        const QRect exit = place("cmdExit");
        return panel.top() > exit.bottom() && panel.left() < exit.right();
    }
};

} // namespace

class TestWindowRoom : public QObject
{
    Q_OBJECT

private slots:
    void theTableBecomesHigher();
    void theMarkersStandBesideAHighTable();
    void aSmallerWindowTakesTheRoomBack();
    void theHeightIsRemembered();
    void thePanelGoesBelowTheControls();
    void aLowWindowHasItBeside();
    void itsPagesScrollUpAndDownOnly();
    void floatingItLeavesTheControlsAlone();
    void theKeysGoTheSameWay();

private:
    test::FakeServerControl m_server;
};

void TestWindowRoom::theTableBecomesHigher()
{
    const Bench bench;
    QVERIFY(bench.becomes({1200, 900}));
    bench.click("cmdView_1");
    const QRect graph = bench.place("picSweep");
    const QRect table = bench.place("MSFlexGridV");
    bench.dragBar(-150);
    QCOMPARE(bench.place("MSFlexGridV").height(), table.height() + 150);
    QCOMPARE(bench.place("picSweep").height(), graph.height() - 150);
    // The table gets no more space than the graph can spare, and at most half of the window.
    bench.dragBar(-800);
    QVERIFY(bench.place("MSFlexGridV").height() <= 450);
    QVERIFY(bench.place("picSweep").height() >= 200);
    bench.dragBar(800);
    QVERIFY(bench.place("MSFlexGridV").height() >= bench.widget("MSFlexGridV")->minimumSizeHint().height());
    QTest::mouseDClick(bench.widget("splitView"), Qt::LeftButton);
    QTRY_COMPARE(bench.place("picSweep"), graph);
    QCOMPARE(bench.place("MSFlexGridV"), table);
}

void TestWindowRoom::theMarkersStandBesideAHighTable()
{
    const Bench bench;
    QVERIFY(bench.becomes({1400, 900}));
    bench.click("cmdView_1");
    QVERIFY(!bench.isShown("txtM1X"));
    bench.dragBar(-150);
    QTRY_VERIFY(bench.isShown("txtM1X"));
    QVERIFY(bench.isShown("MSFlexGridV"));
    QVERIFY(!bench.isShown("frameView_0"));
    QVERIFY(bench.place("txtM1X").left() > bench.place("MSFlexGridV").right());
    // The markers work there.
    bench.type("txtM1X", QStringLiteral("3000000"));
    QTRY_COMPARE(bench.find<SweepGraph>("picSweep")->line(GraphItem::M1).x1, 201.0);
    bench.click("cmdView_0");
    QVERIFY(bench.isShown("frameView_0") && bench.isShown("txtM1X"));
    QVERIFY(bench.widget("frameView_0")->isAncestorOf(bench.widget("txtM1X")));
    bench.click("cmdView_1");
    QTRY_VERIFY(bench.isShown("txtM1X"));
    QTest::mouseDClick(bench.widget("splitView"), Qt::LeftButton);
    QTRY_VERIFY(!bench.isShown("txtM1X"));
}

void TestWindowRoom::aSmallerWindowTakesTheRoomBack()
{
    const Bench bench;
    const QSize first = bench.window->size();
    const QRect graph = bench.place("picSweep");
    QVERIFY(bench.becomes({1600, 1000}));
    bench.click("cmdView_1");
    bench.dragBar(-400);
    QTRY_VERIFY(bench.isShown("txtM1X"));
    QVERIFY(bench.becomes(first));
    QTRY_VERIFY(!bench.isShown("txtM1X"));
    QVERIFY(bench.place("MSFlexGridV").height() <= first.height() / 2);
    QVERIFY(bench.place("picSweep").height() > 150);
    QTest::mouseDClick(bench.widget("splitView"), Qt::LeftButton);
    QTRY_COMPARE(bench.place("picSweep").width(), graph.width());
}

void TestWindowRoom::theHeightIsRemembered()
{
    Bench bench;
    bench.window->close();
    QCOMPARE(bench.folder.setting("View", "Height"), QString());
    bench.open();
    QVERIFY(bench.becomes({1200, 900}));
    bench.dragBar(-100);
    const int height = bench.widget("splitView")->parentWidget()->height() - bench.place("splitView").bottom();
    bench.window->close();
    QVERIFY(bench.folder.setting("View", "Height").toInt() > 100);
    bench.open();
    QVERIFY(bench.becomes({1200, 900}));
    QTRY_COMPARE(bench.widget("splitView")->parentWidget()->height() - bench.place("splitView").bottom(), height);
    QTest::mouseDClick(bench.widget("splitView"), Qt::LeftButton);
    bench.window->close();
    QCOMPARE(bench.folder.setting("View", "Height"), QStringLiteral("0"));
}

void TestWindowRoom::thePanelGoesBelowTheControls()
{
    const Bench bench;
    QVERIFY(bench.becomes({1900, 1000}));
    const QRect graph = bench.place("picSweep");
    const QRect start = bench.place("cmdStart");
    bench.openPanel();
    QTRY_VERIFY(bench.isPanelBelowControls());
    QCOMPARE(bench.place("cmdStart").top(), start.top());
    // The graph shrinks only by the difference between the widths of the panel and the controls.
    QTRY_VERIFY(bench.place("picSweep").width() > graph.width() - 130);
    QCOMPARE(bench.place("picSweep").height(), graph.height());
    bench.openPanel();
    QTRY_COMPARE(bench.place("picSweep"), graph);
    QCOMPARE(bench.place("cmdStart"), start);
}

void TestWindowRoom::aLowWindowHasItBeside()
{
    const Bench bench;
    const QSize first = bench.window->size();
    const QRect start = bench.place("cmdStart");
    QVERIFY(bench.becomes({1900, 1000}));
    bench.openPanel();
    QTRY_VERIFY(bench.isPanelBelowControls());
    QVERIFY(bench.becomes({1100, 600}));
    QTRY_VERIFY(!bench.isPanelBelowControls());
    QVERIFY(bench.place("dockMeasure").left() > bench.place("cmdExit").right());
    bench.openPanel();
    QVERIFY(bench.becomes(first));
    QTRY_COMPARE(bench.place("cmdStart"), start);
}

// The bar of a page that scrolls lies over the page's margin.
void TestWindowRoom::itsPagesScrollUpAndDownOnly()
{
    const Bench bench;
    QVERIFY(bench.becomes({1900, 900}));
    bench.openPanel();
    QTRY_VERIFY(bench.isPanelBelowControls());
    auto *pages = bench.find<QTabWidget>("tabMeasure");
    int scrolling = 0;
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        QTest::qWait(0);
        const auto *area = qobject_cast<const QScrollArea *>(pages->currentWidget());
        QVERIFY(area);
        scrolling += area->verticalScrollBar()->isVisible() ? 1 : 0;
        QVERIFY(!area->horizontalScrollBar()->isVisible());
        for (const auto *button : area->widget()->findChildren<QPushButton *>())
            QVERIFY2(button->mapTo(area->widget(), button->rect().topRight()).x() < area->viewport()->width(),
                     qPrintable(button->objectName()));
    }
    QVERIFY(scrolling > 0);
}

void TestWindowRoom::floatingItLeavesTheControlsAlone()
{
    const Bench bench;
    QVERIFY(bench.becomes({1900, 1000}));
    const QRect graph = bench.place("picSweep");
    bench.openPanel();
    QTRY_VERIFY(bench.isPanelBelowControls());
    auto *panel = bench.find<QDockWidget>("dockMeasure");
    panel->setFloating(true);
    QTRY_COMPARE(bench.place("picSweep"), graph);
    panel->setFloating(false);
    QTRY_VERIFY(bench.isPanelBelowControls());
}

// The Tab key visits the same controls in the same order, wherever they are.
void TestWindowRoom::theKeysGoTheSameWay()
{
    const Bench bench;
    QVERIFY(bench.becomes({1900, 1000}));
    const auto names = [&] {
        QStringList visited;
        bench.window->setFocus();
        for (const QWidget *next = bench.window->nextInFocusChain(); next != bench.window.get();
             next = next->nextInFocusChain())
            if ((next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && next->isVisible() && next->isEnabled() &&
                !bench.widget("dockMeasure")->isAncestorOf(next))
                visited.append(next->objectName());
        return visited;
    };
    const QStringList before = names();
    QVERIFY(before.size() > 10);
    bench.openPanel();
    QTRY_VERIFY(bench.isPanelBelowControls());
    QCOMPARE(names(), before);
    bench.openPanel();
    QTRY_VERIFY(!bench.isShown("dockMeasure"));
    QCOMPARE(names(), before);
}

QTEST_MAIN(TestWindowRoom)
#include "test_window_room.moc"
