// SPDX-License-Identifier: MIT
#include "controls/test_panel.h"

#include "core/number_text.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/locales.h"
#include "tests/support/walk_numbers.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDate>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <cmath>
#include <memory>

using namespace calvorn;

namespace {

struct Bench
{
    Configuration configuration;
    test::FakeDesktop desktop;
    Messages messages{configuration, desktop};
    Log log{configuration};
    ErrorBoundary boundary{messages, log};
    SweepTable table{configuration};
    QStringList calls;
    // Created last, after the early log lines.
    std::unique_ptr<TestPanel> panel;

    explicit Bench(bool logging = true)
    {
        configuration.logDebug = logging;
        configuration.adcStep = 0.001F;
        configuration.adcOffset = 0.5F;
    }

    void open()
    {
        panel = std::make_unique<TestPanel>(configuration, table, messages, log, boundary);
        panel->setHooks(
            {[this] { calls.append(QStringLiteral("grid")); }, [this] { calls.append(QStringLiteral("frequencies")); },
             [this] { calls.append(QStringLiteral("M1 M2")); }, [this] { calls.append(QStringLiteral("M3 M4")); }});
        QObject::connect(&table, &SweepTable::changed, panel.get(), [this] { calls.append(QStringLiteral("curve")); });
        panel->show();
        if (!QTest::qWaitForWindowExposed(panel.get()))
            qFatal("the panel is not shown");
    }

    template <typename Widget = QWidget>
    Widget *find(const char *name) const
    {
        return panel->findChild<Widget *>(QString::fromLatin1(name));
    }
    QListWidget *list() const { return find<QListWidget>("lstLOG"); }
    QString text(const char *name) const { return find<QLineEdit>(name)->text(); }
    void click(const char *name) const { QTest::mouseClick(find(name), Qt::LeftButton); }
};

} // namespace

class TestTestPanel : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theListFollowsItsNewestLine();
    void theListStaysEmptyWhileTheLogIsOff();
    void selectedLinesAreCopied();
    void theLogIsSavedWhole();
    void theMenuOfTheLog();
    void aLogThatCannotBeSavedIsTold();
    void samplesAndErrorsAreShown();
    void theForcedStopIsPassedOn();
    void aFullListIsAnErrorAndNotACrash();
    void drawWritesEveryRow_data() { test::addLocaleRows(); }
    void drawWritesEveryRow();
    void clearEmptiesTheReceiveBox();
    void withoutADriverTheGeneratorButtonsDoNothing();
};

void TestTestPanel::theListFollowsItsNewestLine()
{
    Bench bench;
    bench.log.writeLog(QStringLiteral("before the panel"));
    bench.open();
    for (int i = 0; i < 100; ++i)
        bench.log.writeLog(QStringLiteral("line %1").arg(i));
    QCOMPARE(bench.list()->count(), 101);
    QCOMPARE(bench.list()->item(0)->text(), QStringLiteral("before the panel"));
    QCOMPARE(bench.list()->currentRow(), 100);
    QCOMPARE(bench.list()->selectedItems().size(), 1);
    const QRect newest = bench.list()->visualItemRect(bench.list()->item(100));
    QVERIFY(bench.list()->viewport()->rect().contains(newest.center()));
}

void TestTestPanel::theListStaysEmptyWhileTheLogIsOff()
{
    Bench bench(false);
    bench.open();
    bench.log.writeLog(QStringLiteral("L> Start sweep"));
    QCOMPARE(bench.list()->count(), 0);
}

void TestTestPanel::selectedLinesAreCopied()
{
    Bench bench;
    bench.open();
    for (const char *line : {"one", "two", "three"})
        bench.log.writeLog(QString::fromLatin1(line));
    bench.list()->setFocus();
    QTest::keyClick(bench.list(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("three"));
    QTest::keyClick(bench.list(), Qt::Key_A, Qt::ControlModifier);
    // A new line does not change the selection.
    bench.log.writeLog(QStringLiteral("four"));
    QCOMPARE(bench.list()->currentRow(), 3);
    QTest::keyClick(bench.list(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("one\ntwo\nthree"));
    bench.list()->clearSelection();
    bench.list()->item(1)->setSelected(true);
    bench.find<QAction>("mnuCopyLog")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("two"));
}

void TestTestPanel::theLogIsSavedWhole()
{
    const QTemporaryDir folder;
    Bench bench;
    bench.open();
    for (const char *line : {"P> Start sweep", "P> Stop sweep"})
        bench.log.writeLog(QString::fromLatin1(line));
    auto *save = bench.find<QAction>("mnuSaveLog");
    QVERIFY(bench.list()->actions().contains(save));
    save->trigger(); // no file chosen
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    QCOMPARE(bench.desktop.suggestions, QStringList{QStringLiteral("log %1.txt").arg(today)});
    bench.desktop.fileChoice = folder.filePath(QStringLiteral("log.txt"));
    save->trigger();
    QFile file(bench.desktop.fileChoice);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("P> Start sweep\nP> Stop sweep\n"));
    save->trigger();
    QCOMPARE(bench.desktop.suggestions.last(), bench.desktop.fileChoice);
    QCOMPARE(bench.desktop.boxes.size(), 0);
}

void TestTestPanel::theMenuOfTheLog()
{
    const QTemporaryDir folder;
    Bench bench;
    bench.open();
    for (const char *line : {"P> Start sweep", "P> Stop sweep"})
        bench.log.writeLog(QString::fromLatin1(line));
    bench.desktop.fileChoice = folder.filePath(QStringLiteral("log.txt"));
    // Opens the context menu and selects the entry with this mnemonic.
    const auto choose = [&](char letter) {
        bool opened = false;
        QTimer::singleShot(0, qApp, [&] {
            QWidget *menu = QApplication::activePopupWidget();
            opened = menu != nullptr;
            if (menu)
                QTest::keyClick(menu, letter);
        });
        QWidget *view = bench.list()->viewport();
        const QPoint at = view->rect().center();
        QTest::mousePress(view, Qt::RightButton, {}, at);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, view->mapToGlobal(at));
        QCoreApplication::sendEvent(view, &event);
        return opened;
    };
    QVERIFY(choose('a'));
    QCOMPARE(bench.list()->selectedItems().size(), 2);
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    QVERIFY(choose('c'));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("P> Start sweep\nP> Stop sweep"));
    // Without a selection, "Copy" leaves the clipboard unchanged.
    bench.list()->clearSelection();
    QVERIFY(choose('c'));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("P> Start sweep\nP> Stop sweep"));
    QVERIFY(choose('s'));
    QVERIFY(QFile::exists(bench.desktop.fileChoice));
}

void TestTestPanel::aLogThatCannotBeSavedIsTold()
{
    Bench bench;
    bench.open();
    bench.desktop.fileChoice = QStringLiteral("/nowhere/log.txt");
    bench.find<QAction>("mnuSaveLog")->trigger();
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY2(bench.desktop.lastText().contains(QStringLiteral("/nowhere/log.txt")),
             qPrintable(bench.desktop.lastText()));
}

void TestTestPanel::samplesAndErrorsAreShown()
{
    Bench bench;
    bench.open();
    bench.panel->echoSample(400, 1023);
    QCOMPARE(bench.text("txtRX"), QStringLiteral("400:1023"));
    // The buttons are as wide as their column.
    QCOMPARE(bench.find("cmdDraw")->width(), bench.find("cmdFreqStart")->width());
    for (int i = 0; i < 3; ++i)
        bench.panel->countError();
    QCOMPARE(bench.text("txtErrori"), QStringLiteral("3"));
    for (const char *name : {"txtRX", "txtErrori"}) {
        const QString shown = bench.text(name);
        QTest::keyClicks(bench.find(name), QStringLiteral("7"));
        QCOMPARE(bench.text(name), shown);
    }
}

void TestTestPanel::theForcedStopIsPassedOn()
{
    Bench bench;
    bench.open();
    QSignalSpy stops(bench.panel.get(), &TestPanel::forcedStop);
    bench.click("cmdSwStop");
    QCOMPARE(stops.count(), 1);
}

void TestTestPanel::aFullListIsAnErrorAndNotACrash()
{
    Bench bench;
    bench.open();
    QStringList lines;
    for (int i = 0; i < 32766; ++i)
        lines.append(QStringLiteral("x"));
    bench.list()->addItems(lines);
    bench.log.writeLog(QStringLiteral("the last that fits"));
    QCOMPARE(bench.desktop.boxes.size(), 0);
    bench.log.writeLog(QStringLiteral("one too many"));
    QCOMPARE(bench.list()->count(), 32767);
    QCOMPARE(bench.desktop.boxes.size(), 1);
    QVERIFY(bench.desktop.lastText().startsWith(QStringLiteral("Overflow")));
}

void TestTestPanel::drawWritesEveryRow()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    Bench bench;
    bench.open();
    QSignalSpy changes(&bench.table, &SweepTable::dataChanged);
    QSet<int> counts;
    for (const std::int16_t scale : {std::int16_t{0}, std::int16_t{1}}) {
        bench.configuration.scaleType = scale;
        for (int sweep = 0; sweep < 20; ++sweep) {
            bench.click("cmdDraw");
            for (int row = 1; row <= 400; ++row) {
                const int count = bench.table.text(row, SweepTable::SampleColumn).toInt();
                QVERIFY(count >= 0 && count <= 1023);
                counts.insert(count);
                const double volts = count * 0.001 + 0.5;
                const QString amplitude = bench.table.text(row, SweepTable::AmplitudeColumn);
                if (scale == 0)
                    QCOMPARE(amplitude, test::shownAmplitude(true, volts));
                else // rounded to hundredths first
                    QVERIFY(std::abs(test::readNumber(amplitude) - 20.0 * std::log10(volts)) < 0.0551);
            }
        }
    }
    QVERIFY(counts.size() > 900);
    QCOMPARE(changes.count(), 40);
    QCOMPARE(bench.calls.first(4), (QStringList{QStringLiteral("grid"), QStringLiteral("curve"),
                                                QStringLiteral("M1 M2"), QStringLiteral("M3 M4")}));
    QCOMPARE(bench.calls.size(), 160);
}

void TestTestPanel::clearEmptiesTheReceiveBox()
{
    Bench bench;
    bench.open();
    bench.panel->echoSample(1, 2);
    bench.panel->countError();
    bench.click("cmdClear");
    QCOMPARE(bench.text("txtRX"), QString());
    QCOMPARE(bench.text("txtErrori"), QStringLiteral("1"));
    QCOMPARE(bench.calls,
             (QStringList{QStringLiteral("grid"), QStringLiteral("frequencies"), QStringLiteral("M1 M2")}));
}

void TestTestPanel::withoutADriverTheGeneratorButtonsDoNothing()
{
    Bench bench;
    bench.open();
    for (const char *button : {"cmdFreqDDS", "cmdFreqStart", "cmdFreqStep", "cmdReset", "cmdMisura"})
        bench.click(button);
    QCOMPARE(bench.find<QToolButton>("cmdMisura")->text(), QStringLiteral("DUT"));
    QCOMPARE(bench.desktop.boxes.size(), 0);
    QCOMPARE(bench.list()->count(), 0);
}

QTEST_MAIN(TestTestPanel)
#include "test_test_panel.moc"
