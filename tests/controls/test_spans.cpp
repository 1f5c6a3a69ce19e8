// SPDX-License-Identifier: MIT
#include "controls/span.h"
#include "controls/span_history.h"

#include <QTest>

#include <cstdlib>

using namespace calvorn;

namespace {

// Returns the start and stop of a span as text.
QString shown(const Span &span)
{
    return QStringLiteral("%1 %2").arg(span.start).arg(span.stop);
}
QString shown(const std::optional<Span> &span)
{
    return span ? shown(*span) : QStringLiteral("none");
}

Configuration limits()
{
    Configuration c;
    c.ddsMinFreq = 10;
    c.ddsMaxFreq = 60000000;
    return c;
}

} // namespace

class TestSpans : public QObject
{
    Q_OBJECT

private slots:
    void spansAreBounded_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("stop");
        QTest::addColumn<QString>("expected");
        QTest::newRow("inside") << 1e6 << 2e6 << "1000000 2000000";
        QTest::newRow("downwards") << 2e6 << 1e6 << "2000000 1000000";
        QTest::newRow("below") << -5e6 << 2e6 << "10 2000000";
        QTest::newRow("above") << 5e6 << 70e6 << "5000000 60000000";
        QTest::newRow("both") << -1e12 << 1e12 << "10 60000000";
        QTest::newRow("both, downwards") << 1e12 << -1e12 << "60000000 10";
        QTest::newRow("too narrow") << 1000000.0 << 1000100.0 << "999850 1000250";
        QTest::newRow("no width") << 1e6 << 1e6 << "999800 1000200";
        QTest::newRow("too narrow at the bottom") << 10.0 << 20.0 << "10 410";
        QTest::newRow("too narrow at the top") << 60e6 << 59999990.0 << "60000000 59999600";
        QTest::newRow("outside") << 70e6 << 80e6 << "59999600 60000000";
        QTest::newRow("least") << 0.5e6 << 0.5e6 + 400.0 << "500000 500400";
    }
    void spansAreBounded()
    {
        QFETCH(double, start);
        QFETCH(double, stop);
        QTEST(shown(boundedSpan(limits(), start, stop)), "expected");
    }

    void limitsThatLeaveNoRoom()
    {
        Configuration c;
        c.ddsMinFreq = 1000;
        c.ddsMaxFreq = 1300;
        QCOMPARE(shown(boundedSpan(c, 0.0, 1e6)), QStringLiteral("1000 1300"));
    }

    void zoomingKeepsTheFrequencyInItsPlace()
    {
        const Configuration c = limits();
        const Span span{1000000, 5000000};
        QCOMPARE(shown(scaledSpan(c, span, 2e6, 0.5)), QStringLiteral("1500000 3500000"));
        QCOMPARE(shown(scaledSpan(c, span, 1e6, 0.5)), QStringLiteral("1000000 3000000"));
        QCOMPARE(shown(scaledSpan(c, {5000000, 1000000}, 2e6, 0.5)), QStringLiteral("3500000 1500000"));
        QCOMPARE(shown(scaledSpan(c, {3000000, 5000000}, 4e6, 2.0)), QStringLiteral("2000000 6000000"));
        QCOMPARE(shown(scaledSpan(c, span, 2e6, 4.0)), QStringLiteral("10 14000000"));
        QCOMPARE(shown(scaledSpan(c, span, 2e6, 1024.0)), QStringLiteral("10 60000000"));
    }

    void zoomingStopsAtTheLeastRange()
    {
        const Configuration c = limits();
        Span span{1000000, 5000000};
        for (int i = 0; i < 40; ++i) {
            span = scaledSpan(c, span, 2345678.0, 0.5);
            QVERIFY2(span.stop - span.start >= 400, qPrintable(shown(span)));
            QVERIFY2(span.start <= 2345678 && span.stop >= 2345678, qPrintable(shown(span)));
        }
        QCOMPARE(span.stop - span.start, 400);
        const double place = (2345678.0 - span.start) / 400.0;
        QVERIFY2(std::abs(place - 1345678.0 / 4e6) < 0.05, qPrintable(shown(span)));
        QCOMPARE(shown(scaledSpan(c, span, 2345678.0, 0.5)), shown(span));
    }

    void theHistoryGoesBackAndForth()
    {
        SpanHistory history;
        QVERIFY(!history.current() && !history.back() && !history.forth());
        history.visit({1, 500});
        QVERIFY(!history.canGoBack() && !history.canGoForth());
        history.visit({1, 500}); // equal neighbours are stored once
        QVERIFY(!history.canGoBack());
        history.visit({2, 600});
        history.visit({3, 700});
        QCOMPARE(shown(history.back()), QStringLiteral("2 600"));
        QCOMPARE(shown(history.back()), QStringLiteral("1 500"));
        QVERIFY(!history.back());
        QCOMPARE(shown(history.forth()), QStringLiteral("2 600"));
        // Applying a span from the history does not change the history.
        history.visit({2, 600});
        QVERIFY(history.canGoForth());
        history.visit({4, 800});
        QVERIFY(!history.canGoForth());
        QCOMPARE(shown(history.back()), QStringLiteral("2 600"));
    }

    void theHistoryKeepsTheLastOnes()
    {
        SpanHistory history;
        for (int i = 0; i < 1000; ++i)
            history.visit({i, i + 1000});
        int steps = 0;
        while (history.back())
            ++steps;
        QVERIFY2(steps >= 50 && steps < 200, qPrintable(QString::number(steps)));
        QCOMPARE(shown(history.current()), QStringLiteral("%1 %2").arg(999 - steps).arg(1999 - steps));
    }
};

QTEST_GUILESS_MAIN(TestSpans)
#include "test_spans.moc"
