// SPDX-License-Identifier: MIT
// The context menus of the graph's two axes.
#include "tests/support/fake_server_control.h"
#include "tests/support/walk_hands.h"
#include "tests/support/while_modal.h"

#include <QContextMenuEvent>
#include <QMenu>

using namespace calvorn;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;

namespace {

// Row r is at 1 MHz + (r - 1) x 10 kHz.
const QByteArray kSettings = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n"
                             "Marker 1=1500000\r\nMarker 2=3000000\r\nScale=0\r\nMax scaleV=2.5\r\n";

struct Bench : test::WindowBench
{
    WalkHands hands{*this};

    Bench()
        : WindowBench(test::FakeServerControl::program(), kSettings)
    {
        hands.settle();
        hands.updateTimer()->setInterval(0);
    }

    // Presses the right button in the middle of a widget and sends the context menu event that the window system would
    // send.
    void rightClick(const char *name) const
    {
        QWidget *widget = find(name);
        const QPoint at = widget->rect().center();
        QTest::mousePress(widget, Qt::RightButton, {}, at);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, widget->mapToGlobal(at));
        QApplication::sendEvent(widget, &event);
    }
    static QMenu *openMenu() { return qobject_cast<QMenu *>(QApplication::activePopupWidget()); }

    void choose(const char *widget, const char *action) const
    {
        rightClick(widget);
        QMenu *menu = openMenu();
        if (!menu)
            qFatal("no menu opened over %s", widget);
        auto *entry = window->findChild<QAction *>(QString::fromLatin1(action));
        if (!menu->actions().contains(entry))
            qFatal("the menu over %s has no entry %s", widget, action);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    }
    QString range() const { return QStringLiteral("%1 %2").arg(configuration.startFreq).arg(configuration.stopFreq); }
};

} // namespace

class TestAxisMenus : public QObject
{
    Q_OBJECT

    test::FakeServerControl m_server;

private slots:
    void theAmplitudesOfferTheScales();
    void theFrequenciesOfferTheSpans();
    void theMarkersBecomeTheRange();
    void aTextThatIsTypedIsTakenFirst();
    void thePlotHasNoMenu();
    void everyEntryHasALetter();
};

void TestAxisMenus::theAmplitudesOfferTheScales()
{
    const Bench bench;
    bench.choose("lblVolt_2", "mnuScalaLogaritmica1dB");
    QCOMPARE(bench.configuration.scaleType, std::int16_t{2});
    // The menu also opens where there is no label, and the current scale is checked.
    QWidget *axis = bench.find("lblVolt_2")->parentWidget();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, axis->height() / 2 + 20),
                            axis->mapToGlobal(QPoint(3, axis->height() / 2 + 20)));
    QApplication::sendEvent(axis, &event);
    QMenu *menu = Bench::openMenu();
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 5);
    QVERIFY(menu->actions().at(2)->isChecked());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(0)).center());
    QCOMPARE(bench.configuration.scaleType, std::int16_t{0});
}

void TestAxisMenus::theFrequenciesOfferTheSpans()
{
    const Bench bench;
    bench.choose("lblCentro", "mnuFullRange");
    QCOMPARE(bench.range(), QStringLiteral("10 60000000"));
    bench.choose("lblStart", "mnuSpanBack");
    QCOMPARE(bench.range(), QStringLiteral("1000000 5000000"));
    bench.choose("lblStop", "mnuSpanForth");
    QCOMPARE(bench.range(), QStringLiteral("10 60000000"));
    bool opened = false;
    test::whileModal([&](QWidget &dialog) {
        opened = dialog.objectName() == u"frmSpan";
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    bench.choose("lblStop", "mnuSpan");
    QTRY_VERIFY(opened);
}

void TestAxisMenus::theMarkersBecomeTheRange()
{
    const Bench bench;
    bench.choose("lblCentro", "mnuCopyM1");
    QCOMPARE(bench.range(), QStringLiteral("1500000 5000000"));
    bench.choose("lblCentro", "mnuCopyM2");
    QCOMPARE(bench.range(), QStringLiteral("1500000 3000000"));
    QCOMPARE(bench.text("txtStop"), QStringLiteral("3,000,000"));
}

void TestAxisMenus::aTextThatIsTypedIsTakenFirst()
{
    const Bench bench;
    bench.hands.typeOver(WalkBox::M1X, QStringLiteral("2000000"));
    bench.choose("lblCentro", "mnuCopyM1");
    QCOMPARE(bench.range(), QStringLiteral("2000000 5000000"));
}

void TestAxisMenus::thePlotHasNoMenu()
{
    const Bench bench;
    bench.rightClick("picSweep");
    QVERIFY(!Bench::openMenu());
    QTest::mouseRelease(bench.find("picSweep"), Qt::RightButton, {}, bench.find("picSweep")->rect().center());
    QCOMPARE(bench.hands.graph()->line(GraphItem::M2).x1, 200.0);
}

void TestAxisMenus::everyEntryHasALetter()
{
    const Bench bench;
    for (const char *name : {"menuAmplitudes", "menuFrequencies"}) {
        QStringList letters;
        for (const QAction *entry : bench.find<QMenu>(name)->actions()) {
            if (entry->isSeparator())
                continue;
            QVERIFY2(entry->text().contains(u'&'), qPrintable(entry->text()));
            QVERIFY2(!entry->objectName().isEmpty() && entry->toolTip() != entry->text(), qPrintable(entry->text()));
            letters.append(entry->text().section(u'&', 1).left(1).toLower());
        }
        QCOMPARE(letters.removeDuplicates(), 0);
    }
}

QTEST_MAIN(TestAxisMenus)
#include "test_axis_menus.moc"
