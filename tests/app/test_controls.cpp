// SPDX-License-Identifier: MIT
// Every control of the main window has a tool tip, an accessible name, a place in the tab order and room for its
// text.
#include "tests/support/cut_off_texts.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/window_bench.h"

#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScopeGuard>
#include <QScrollBar>

using namespace calvorn;
using calvorn::test::WindowBench;

namespace {

const QByteArray kSettings = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.001\r\nADC Offset=0\r\n"
                             "[Debug]\r\nLog=1\r\n[Parallel Port]\r\nLPT=0\r\n"
                             "[Calvorn]\r\nStart=1000000\r\nStop=60000000\r\nScale=0\r\nMax scaleV=1.5\r\n"
                             "[Aux1]\r\nEnabled=1\r\n[Aux2]\r\nEnabled=1\r\nPotMax=255\r\nPotMin=0\r\n";

// Returns whether the program has named the widget: the internal parts of a control have toolkit names or no name.
bool isNamed(const QWidget *widget)
{
    return !widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_");
}

QList<QWidget *> controls(const WindowBench &bench)
{
    QList<QWidget *> found;
    for (QWidget *widget : bench.window->findChildren<QWidget *>()) {
        const bool control = qobject_cast<QAbstractButton *>(widget) || qobject_cast<QLineEdit *>(widget) ||
                             qobject_cast<QScrollBar *>(widget) || qobject_cast<QAbstractItemView *>(widget) ||
                             widget->objectName() == u"picSweep";
        if (control && isNamed(widget))
            found.append(widget);
    }
    return found;
}

} // namespace

class TestControls : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

private slots:
    void everyControlHasATipAndAName();
    void menuEntriesTellWhatTheyDo();
    void theTabKeyFollowsTheEye();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
};

void TestControls::everyControlHasATipAndAName()
{
    WindowBench bench(m_server.program(), kSettings);
    const QList<QWidget *> all = controls(bench);
    QVERIFY2(all.size() > 60, qPrintable(QString::number(all.size())));
    for (const QWidget *control : all) {
        QVERIFY2(!control->toolTip().isEmpty(), qPrintable(QStringLiteral("no tip: ") + control->objectName()));
        const auto *button = qobject_cast<const QAbstractButton *>(control);
        QVERIFY2(!control->accessibleName().isEmpty() || (button && !button->text().isEmpty()),
                 qPrintable(QStringLiteral("no name: ") + control->objectName()));
    }
}

void TestControls::menuEntriesTellWhatTheyDo()
{
    WindowBench bench(m_server.program(), kSettings);
    QStringList mnemonics;
    for (const QAction *menu : bench.window->menuBar()->actions()) {
        mnemonics.append(menu->text().section(u'&', 1).left(1));
        QVERIFY2(menu->menu()->toolTipsVisible(), qPrintable(menu->text()));
        QStringList inside;
        for (const QAction *entry : menu->menu()->actions()) {
            if (entry->isSeparator())
                continue;
            QVERIFY2(entry->text().contains(u'&'), qPrintable(entry->text()));
            inside.append(entry->text().section(u'&', 1).left(1).toLower());
            QVERIFY2(!entry->objectName().isEmpty(), qPrintable(entry->text()));
        }
        QCOMPARE(inside.removeDuplicates(), 0);
    }
    QCOMPARE(mnemonics.removeDuplicates(), 0);
    // For an action without a tool tip, QAction::toolTip() returns the caption.
    for (const char *name : {"mnuConfig", "mnuCalibraDDS", "mnuCalibraDetector", "mnuView_0", "mnuScalaLogaritmica1"}) {
        const auto *entry = bench.window->findChild<QAction *>(QString::fromLatin1(name));
        QVERIFY2(entry && entry->toolTip().size() > entry->text().size(), name);
    }
}

void TestControls::theTabKeyFollowsTheEye()
{
    WindowBench bench(m_server.program(), kSettings);
    QStringList order;
    bench.find("txtStart")->setFocus();
    for (int i = 0; i < 60; ++i) {
        const QWidget *focused = QApplication::focusWidget();
        QVERIFY(focused);
        if (order.contains(focused->objectName()))
            break;
        order.append(focused->objectName());
        QTest::keyClick(const_cast<QWidget *>(focused), Qt::Key_Tab);
    }
    const QStringList expected{
        QStringLiteral("txtStart"),   QStringLiteral("txtStop"),      QStringLiteral("optSpeed_0"),
        QStringLiteral("cmdStart"),   QStringLiteral("cmdExit"),      QStringLiteral("lstLOG"),
        QStringLiteral("cmdFreqDDS"), QStringLiteral("cmdFreqStart"), QStringLiteral("cmdFreqStep"),
        QStringLiteral("cmdReset"),   QStringLiteral("cmdDraw"),      QStringLiteral("cmdClear"),
        QStringLiteral("cmdMisura"),  QStringLiteral("cmdSwStop"),    QStringLiteral("txtMaxVolt"),
        QStringLiteral("picSweep"),   QStringLiteral("cmdView_1"),    QStringLiteral("cmdView_2"),
        QStringLiteral("cmdView_3"),  QStringLiteral("txtM1X"),       QStringLiteral("txtM2X"),
        QStringLiteral("txtM3Y"),     QStringLiteral("txtM4Y"),       QStringLiteral("cmdCopyM1"),
        QStringLiteral("cmdCopyM2")};
    // Other controls may lie between these; the test checks only the order.
    QStringList found;
    for (const QString &name : order) {
        if (expected.contains(name))
            found.append(name);
    }
    QCOMPARE(found, expected);
}

void TestControls::nothingIsCutOff_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("points"); // 0: the desktop's default font
    QTest::newRow("at the start") << QSize(800, 600) << 0;
    QTest::newRow("a small screen") << QSize(1024, 570) << 0;
    QTest::newRow("a netbook") << QSize(1024, 600) << 0;
    QTest::newRow("a large screen") << QSize(1900, 1050) << 0;
    QTest::newRow("9 pt") << QSize(1024, 570) << 9;
    QTest::newRow("11 pt") << QSize(1024, 570) << 11;
    QTest::newRow("13 pt") << QSize(1024, 570) << 13;
    QTest::newRow("15 pt") << QSize(1024, 580) << 15;
    QTest::newRow("15 pt with room") << QSize(1280, 760) << 15;
}

void TestControls::nothingIsCutOff()
{
    QFETCH(QSize, size);
    QFETCH(int, points);
    QByteArray settings = kSettings;
    const QFont usual = QApplication::font();
    const auto back = qScopeGuard([usual] { QApplication::setFont(usual); });
    if (points > 0) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        // With a large font, a small screen has no room for the test panel.
        settings.replace("Log=1", "Log=0");
    }
    WindowBench bench(m_server.program(), settings);
    bench.window->resize(size);
    QCoreApplication::processEvents();
    // The layout fits: it does not enlarge the window beyond the requested size.
    QCOMPARE(bench.window->size(), size);
    for (int view = 0; view < 4; ++view) {
        auto *button = bench.find<QAbstractButton>(qPrintable(QStringLiteral("cmdView_%1").arg(view)));
        button->click();
        QCoreApplication::processEvents();
        QCOMPARE(test::cutOffTexts(*bench.window), QString());
    }
}

QTEST_MAIN(TestControls)
#include "test_controls.moc"
