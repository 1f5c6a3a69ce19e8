// SPDX-License-Identifier: MIT
#include "analysis/trace_set.h"

#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using namespace calvorn;

using Source = TraceSet::Source;

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

Trace trace(const std::vector<double> &volts, double start = 1e6)
{
    return {QStringLiteral("sweep"), start, 1000.0, volts, 0.001};
}

bool isNear(double actual, double expected)
{
    return std::abs(actual - expected) < 1e-12;
}

} // namespace

class TestTraceSet : public QObject
{
    Q_OBJECT

private slots:
    void nothingAtFirst()
    {
        const TraceSet set;
        for (const Source source : {Source::Live, Source::Average, Source::MaxHold, Source::MinHold})
            QVERIFY(set.shown(source).isEmpty());
        QVERIFY(set.isOn(Source::Live));
        QVERIFY(!set.isOn(Source::Average));
        for (int slot = 0; slot < TraceSet::kStored; ++slot) {
            QVERIFY(set.stored(slot).trace.isEmpty());
            QVERIFY(set.stored(slot).isShown);
        }
        QVERIFY(!set.isNormalised());
        QVERIFY(set.reference().isEmpty());
    }

    void everySweepIsTheLiveTrace()
    {
        TraceSet set;
        QSignalSpy changed(&set, &TraceSet::changed);
        set.takeSweep(trace({1.0, 2.0}));
        QCOMPARE(set.shown(Source::Live).volts, (std::vector<double>{1.0, 2.0}));
        set.showSweep(trace({3.0}));
        QCOMPARE(set.shown(Source::Live).volts, std::vector<double>{3.0});
        QCOMPARE(changed.count(), 2);
        set.forgetSweep();
        QVERIFY(set.shown(Source::Live).isEmpty());
        QCOMPARE(changed.count(), 3);
        set.forgetSweep();
        QCOMPARE(changed.count(), 3);
    }

    void holdsKeepTheHighestAndTheLowest()
    {
        TraceSet set;
        set.takeSweep(trace({9.0, -9.0, 0.0})); // ignored: the holds are still off
        set.switchOn(Source::MaxHold, true);
        set.switchOn(Source::MinHold, true);
        QVERIFY(set.shown(Source::MaxHold).isEmpty());
        set.takeSweep(trace({1.0, 2.0, 3.0}));
        set.takeSweep(trace({3.0, 2.0, -1.0}));
        set.takeSweep(trace({2.0, 4.0, 0.0}));
        QCOMPARE(set.shown(Source::MaxHold).volts, (std::vector<double>{3.0, 4.0, 3.0}));
        QCOMPARE(set.shown(Source::MinHold).volts, (std::vector<double>{1.0, 2.0, -1.0}));
        QVERIFY(set.shown(Source::Average).isEmpty());
        // Switching off clears a hold; switching on restarts it.
        set.switchOn(Source::MaxHold, false);
        QVERIFY(set.shown(Source::MaxHold).isEmpty());
        set.switchOn(Source::MaxHold, true);
        set.takeSweep(trace({0.0, 0.0, 0.0}));
        QCOMPARE(set.shown(Source::MaxHold).volts, (std::vector<double>{0.0, 0.0, 0.0}));
        QCOMPARE(set.shown(Source::MinHold).volts, (std::vector<double>{0.0, 0.0, -1.0}));
    }

    void theAverageIsAMeanFirstAndExponentialThen()
    {
        TraceSet set;
        set.setAverageOver(4);
        set.switchOn(Source::Average, true);
        const std::vector<double> sweeps{1.0, 5.0, 3.0, 7.0, 2.0, 8.0};
        double sum = 0.0;
        for (std::size_t i = 0; i < 4; ++i) {
            set.takeSweep(trace({sweeps[i]}));
            sum += sweeps[i];
            QVERIFY(isNear(set.shown(Source::Average).volts[0], sum / static_cast<double>(i + 1)));
        }
        QCOMPARE(set.averaged(), 4);
        set.takeSweep(trace({sweeps[4]}));
        const double fifth = sum / 4.0 * 0.75 + sweeps[4] * 0.25;
        QVERIFY(isNear(set.shown(Source::Average).volts[0], fifth));
        set.takeSweep(trace({sweeps[5]}));
        QVERIFY(isNear(set.shown(Source::Average).volts[0], fifth * 0.75 + sweeps[5] * 0.25));
        QCOMPARE(set.averaged(), 6);
    }

    void theNumberOfAveragesHasARange()
    {
        TraceSet set;
        set.setAverageOver(1);
        QCOMPARE(set.averageOver(), 2);
        set.setAverageOver(5000);
        QCOMPARE(set.averageOver(), 999);
        QSignalSpy changed(&set, &TraceSet::changed);
        set.setAverageOver(1000);
        QCOMPARE(changed.count(), 0);
        set.setAverageOver(20);
        QCOMPARE(changed.count(), 1);
        set.switchOn(Source::Average, true);
        for (int i = 0; i < 30; ++i)
            set.takeSweep(trace({1.0}));
        QCOMPARE(set.averaged(), 30);
        QCOMPARE(set.shown(Source::Average).volts[0], 1.0);
    }

    void restartEmptiesHoldsAndAverage()
    {
        TraceSet set;
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold})
            set.switchOn(source, true);
        set.takeSweep(trace({5.0}));
        set.takeSweep(trace({7.0}));
        QSignalSpy changed(&set, &TraceSet::changed);
        set.restart();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(set.averaged(), 0);
        QCOMPARE(set.shown(Source::Live).volts[0], 7.0);
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold}) {
            QVERIFY(set.shown(source).isEmpty());
            QVERIFY(set.isOn(source));
        }
        set.takeSweep(trace({6.0}));
        QCOMPARE(set.averaged(), 1);
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold})
            QCOMPARE(set.shown(source).volts[0], 6.0);
    }

    void anotherAxisStartsAnew_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("step");
        QTest::addColumn<int>("samples");
        QTest::newRow("start") << 2e6 << 1000.0 << 2;
        QTest::newRow("step") << 1e6 << -1000.0 << 2;
        QTest::newRow("samples") << 1e6 << 1000.0 << 3;
    }
    void anotherAxisStartsAnew()
    {
        QFETCH(double, start);
        QFETCH(double, step);
        QFETCH(int, samples);
        TraceSet set;
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold})
            set.switchOn(source, true);
        set.takeSweep(trace({5.0, 5.0}));
        set.takeSweep(trace({1.0, 1.0}));
        Trace other = trace(std::vector<double>(static_cast<std::size_t>(samples), 3.0), start);
        other.step = step;
        set.takeSweep(other);
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold}) {
            QVERIFY(set.shown(source).hasAxisOf(other));
            QCOMPARE(set.shown(source).volts, other.volts);
        }
        QCOMPARE(set.averaged(), 1);
    }

    void whatWasNotMeasuredIsNotHeld()
    {
        TraceSet set;
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold})
            set.switchOn(source, true);
        set.takeSweep(trace({5.0}));
        set.showSweep(trace({50.0}, 2e6));
        set.forgetSweep();
        set.takeSweep(trace({7.0}));
        QCOMPARE(set.averaged(), 2);
        QCOMPARE(set.shown(Source::Average).volts[0], 6.0);
        QCOMPARE(set.shown(Source::MaxHold).volts[0], 7.0);
        QCOMPARE(set.shown(Source::MinHold).volts[0], 5.0);
    }

    void aGapStaysAGap()
    {
        TraceSet set;
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold})
            set.switchOn(source, true);
        set.takeSweep(trace({kGap, 1.0, 1.0}));
        set.takeSweep(trace({1.0, kGap, 1.0}));
        set.takeSweep(trace({1.0, 1.0, 1.0}));
        for (const Source source : {Source::Average, Source::MaxHold, Source::MinHold}) {
            QVERIFY(std::isnan(set.shown(source).volts[0]));
            QVERIFY(std::isnan(set.shown(source).volts[1]));
            QCOMPARE(set.shown(source).volts[2], 1.0);
        }
        set.restart();
        set.takeSweep(trace({1.0, 1.0, 1.0}));
        QCOMPARE(set.shown(Source::Average).volts[0], 1.0);
    }

    void storedTraces()
    {
        TraceSet set;
        QVERIFY(!set.store(0));
        set.rename(0, QStringLiteral("before"));
        set.takeSweep(trace({1.0}));
        QSignalSpy changed(&set, &TraceSet::changed);
        QVERIFY(set.store(0));
        QCOMPARE(changed.count(), 1);
        set.takeSweep(trace({2.0}));
        QCOMPARE(set.stored(0).trace.volts[0], 1.0);
        QCOMPARE(set.stored(0).trace.name, QStringLiteral("before"));
        QVERIFY(set.store(0));
        QCOMPARE(set.stored(0).trace.volts[0], 2.0);
        QVERIFY(!set.store(1, Source::MaxHold));
        set.switchOn(Source::MaxHold, true);
        set.takeSweep(trace({5.0}));
        set.takeSweep(trace({4.0}));
        QVERIFY(set.store(1, Source::MaxHold));
        QCOMPARE(set.stored(1).trace.volts[0], 5.0);

        set.load(3, trace({8.0}, 2e6));
        QCOMPARE(set.stored(3).trace.name, QStringLiteral("sweep"));
        QCOMPARE(set.stored(3).trace.start, 2e6);
        set.show(3, false);
        QVERIFY(!set.stored(3).isShown);
        changed.clear();
        set.show(3, false);
        set.rename(3, QStringLiteral("sweep"));
        QCOMPARE(changed.count(), 0);
        set.clear(3);
        QCOMPARE(changed.count(), 1);
        QVERIFY(set.stored(3).trace.isEmpty() && set.stored(3).trace.name.isEmpty() && set.stored(3).isShown);
        QVERIFY(set.stored(2).trace.isEmpty());
    }

    void theReference()
    {
        TraceSet set;
        QVERIFY(!set.normalise(true));
        QVERIFY(!set.isNormalised());
        set.takeSweep(trace({1.0}));
        QSignalSpy changed(&set, &TraceSet::changed);
        QVERIFY(set.normalise(true));
        QCOMPARE(changed.count(), 1);
        QVERIFY(set.isNormalised());
        set.takeSweep(trace({2.0}));
        QCOMPARE(set.reference().volts[0], 1.0);
        QVERIFY(set.normalise(false));
        QVERIFY(!set.isNormalised());
        QCOMPARE(set.reference().volts[0], 1.0);
        // Normalising again uses the last sweep as the new reference.
        QVERIFY(set.normalise(true));
        QCOMPARE(set.reference().volts[0], 2.0);
        set.setReference(trace({3.0}));
        QVERIFY(set.isNormalised());
        QCOMPARE(set.reference().volts[0], 3.0);
        set.setReference(Trace());
        QVERIFY(!set.isNormalised());
    }
};

QTEST_APPLESS_MAIN(TestTraceSet)
#include "test_trace_set.moc"
