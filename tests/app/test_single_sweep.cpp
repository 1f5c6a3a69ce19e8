// SPDX-License-Identifier: MIT
// The "Single sweep" command on each of the three simulated boards.
#include "tests/support/crystal_sweep.h"
#include "tests/support/interface_rows.h"
#include "tests/support/quiet_time.h"
#include "tests/support/window_bench.h"

#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>

using namespace calvorn;

namespace {

struct Bench : test::WindowBench
{
    QSignalSpy stored{&station->instrument.conversion(), &SampleConversion::vectorStored};

    explicit Bench(int interfaceType, const QString &pace = QStringLiteral("none"))
        : WindowBench(test::ProgramFolder::builtFile(QStringLiteral("CalvornAsync")), settings(interfaceType, pace))
    {
    }

    static QByteArray settings(int interfaceType, const QString &pace)
    {
        QByteArray text = test::crystalSettings(static_cast<std::int16_t>(interfaceType));
        text.replace("Pace=none", "Pace=" + pace.toLatin1());
        return text;
    }

    void single() const { QTest::keyClick(window.get(), Qt::Key_F5, Qt::ShiftModifier); }
    bool isIdle() const { return isShown("cmdStart") && !isShown("cmdStop") && !station->instrument.isSweeping(); }
};

} // namespace

class TestSingleSweep : public QObject
{
    Q_OBJECT

private slots:
    void oneVectorAndThenItStops_data() { test::addInterfaceRows(); }
    void oneVectorAndThenItStops();
    void theMenuDoesTheSame();
    void aRunningSweepStopsAfterTheNextVector_data() { test::addInterfaceRows(); }
    void aRunningSweepStopsAfterTheNextVector();
    void aRangeTypedJustBeforeIsMeasuredAndKept_data() { test::addInterfaceRows(); }
    void aRangeTypedJustBeforeIsMeasuredAndKept();
    void aRangeTypedMeanwhileIsMeasuredOnce_data() { test::addInterfaceRows(); }
    void aRangeTypedMeanwhileIsMeasuredOnce();
    void continuousSweepsFollow();
};

void TestSingleSweep::oneVectorAndThenItStops()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType);
    for (int sweep = 1; sweep <= 5; ++sweep) {
        bench.single();
        QTRY_VERIFY_WITH_TIMEOUT(bench.stored.count() == sweep, 10'000);
        QTRY_VERIFY(bench.isIdle());
        QCOMPARE(test::peakRow(*bench.table()), test::kCrystalRow);
    }
    test::nothingHappensFor(200);
    QCOMPARE(bench.stored.count(), 5);
    QVERIFY2(bench.desktop.boxes.isEmpty(), qPrintable(bench.desktop.lastText()));
}

void TestSingleSweep::theMenuDoesTheSame()
{
    Bench bench(kInterfaceLpt);
    auto *entry = bench.window->findChild<QAction *>(QStringLiteral("mnuSingle"));
    QMenuBar *bar = bench.window->menuBar();
    QMenu *menu = nullptr;
    for (QAction *title : bar->actions())
        if (title->menu()->actions().contains(entry)) {
            QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(title).center());
            menu = title->menu();
        }
    QVERIFY(menu);
    QTRY_VERIFY(menu->isVisible());
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    QTRY_COMPARE_WITH_TIMEOUT(bench.stored.count(), 1, 10'000);
    QTRY_VERIFY(bench.isIdle());
    QCOMPARE(bench.stored.count(), 1);
}

void TestSingleSweep::aRunningSweepStopsAfterTheNextVector()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, QStringLiteral("real"));
    bench.click("cmdStart");
    QTRY_VERIFY_WITH_TIMEOUT(bench.stored.count() >= 2, 10'000);
    const auto before = bench.stored.count();
    bench.single();
    QTRY_VERIFY_WITH_TIMEOUT(bench.isIdle(), 10'000);
    test::nothingHappensFor(200);
    QCOMPARE(bench.stored.count(), before + 1);
}

// Starting the sweep plans the new range immediately; the delayed planning must not clear the table afterwards.
void TestSingleSweep::aRangeTypedJustBeforeIsMeasuredAndKept()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, QStringLiteral("real"));
    auto *box = bench.find<QLineEdit>("txtStop");
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("9030000"));
    bench.single();
    QTRY_VERIFY_WITH_TIMEOUT(bench.stored.count() >= 1, 10'000);
    QTRY_VERIFY_WITH_TIMEOUT(bench.isIdle(), 10'000);
    const auto *update = bench.window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
    QTRY_VERIFY_WITH_TIMEOUT(!update->isActive(), 5'000);
    QTRY_VERIFY_WITH_TIMEOUT(bench.isIdle(), 10'000);
    QVERIFY(bench.table()->hasSweep());
    QCOMPARE(bench.table()->text(400, SweepTable::FrequencyColumn), QStringLiteral("9,029,800"));
    QVERIFY(bench.table()->text(200, SweepTable::SampleColumn) != u"0");
}

void TestSingleSweep::aRangeTypedMeanwhileIsMeasuredOnce()
{
    QFETCH(int, interfaceType);
    Bench bench(interfaceType, QStringLiteral("real"));
    auto *update = bench.window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
    update->setInterval(0);
    bench.single();
    QVERIFY(bench.isShown("cmdStop"));
    bench.type("txtStop", QStringLiteral("9030000"));
    QTRY_VERIFY_WITH_TIMEOUT(bench.table()->hasSweep() && bench.isIdle() && !update->isActive(), 10'000);
    QCOMPARE(bench.table()->text(400, SweepTable::FrequencyColumn), QStringLiteral("9,029,800"));
    QCOMPARE(bench.stored.count(), 1);
}

void TestSingleSweep::continuousSweepsFollow()
{
    Bench bench(kInterfacePic);
    bench.single();
    QTRY_VERIFY_WITH_TIMEOUT(bench.stored.count() == 1 && bench.isIdle(), 10'000);
    QTest::keyClick(bench.window.get(), Qt::Key_F5);
    QTRY_VERIFY_WITH_TIMEOUT(bench.stored.count() > 20, 10'000);
    QVERIFY(bench.isShown("cmdStop"));
    QTest::keyClick(bench.window.get(), Qt::Key_F5);
    QTRY_VERIFY(bench.isIdle());
}

QTEST_MAIN(TestSingleSweep)
#include "test_single_sweep.moc"
