// SPDX-License-Identifier: MIT
#include "display/plot/frequency_ticks.h"

#include <QLocale>
#include <QTest>

using namespace calvorn;

namespace {

QStringList texts(const std::vector<FrequencyTick> &ticks)
{
    QStringList found;
    for (const FrequencyTick &tick : ticks)
        found.append(QStringLiteral("%1: %2").arg(tick.x).arg(tick.text));
    return found;
}

// Each character is 10 units wide, and user units equal painter units.
TickStrip strip(std::vector<TickInterval> taken = {})
{
    return {[](const QString &text) { return 10.0 * static_cast<double>(text.size()); }, [](double x) { return x; },
            std::move(taken), 5.0};
}

} // namespace

class TestFrequencyTicks : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void unitAndDecimalsFollowTheSpan_data()
    {
        QTest::addColumn<double>("start");
        QTest::addColumn<double>("step");
        QTest::addColumn<QStringList>("expected"); // for lines 2 and 6
        const auto both = [](const char *low, const char *high) {
            return QStringList{QStringLiteral("100: ") + QString::fromUtf8(low),
                               QStringLiteral("300: ") + QString::fromUtf8(high)};
        };
        // Row 100 is at start + 99 steps, row 300 at start + 299 steps.
        QTest::newRow("1 to 15 MHz") << 1e6 << 35e3 << both("4.46 MHz", "11.46 MHz");
        QTest::newRow("crystal") << 8.95e6 << 240.0 << both("8.9738 MHz", "9.0218 MHz");
        QTest::newRow("400 Hz at 9 MHz") << 9e6 << 1.0 << both("9.000099 MHz", "9.000299 MHz");
        QTest::newRow("kHz") << 1000.0 << 1000.0 << both("100 kHz", "300 kHz");
        QTest::newRow("10 to 410 Hz") << 10.0 << 1.0 << both("109 Hz", "309 Hz");
        QTest::newRow("downwards") << 15e6 << -35e3 << both("11.54 MHz", "4.54 MHz");
        QTest::newRow("all of it") << 10.0 << 150e3 << both("14.9 MHz", "44.9 MHz");
    }
    void unitAndDecimalsFollowTheSpan()
    {
        QFETCH(double, start);
        QFETCH(double, step);
        QTEST(texts(frequencyTicks({start, step}, 2)), "expected");
    }

    void theDecimalSeparatorIsThatOfTheLocale()
    {
        QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
        QCOMPARE(texts(frequencyTicks({1e6, 35e3}, 2)).first(), QStringLiteral("100: 4,46 MHz"));
    }

    void startCentreAndStopAreLeftOut()
    {
        QStringList places;
        for (const FrequencyTick &tick : frequencyTicks({1e6, 35e3}, 1))
            places.append(QString::number(tick.x));
        QCOMPARE(places.join(u' '), QStringLiteral("50 100 150 250 300 350"));
        QVERIFY(frequencyTicks({1e6, 0.0}, 1).empty());
    }

    void fewerAreShownWhereThereIsNoRoom()
    {
        const PlotAxis axis{10.0, 1.0};
        // "109 Hz" is 60 wide, and the lines are 50 apart.
        TickStrip narrow = strip();
        QCOMPARE(fittingTicks(axis, narrow).size(), std::size_t{2});
        TickStrip wide = strip();
        wide.placeOf = [](double x) { return 2.0 * x; };
        QCOMPARE(fittingTicks(axis, wide).size(), std::size_t{6});
        // The gap between labels also counts.
        wide.placeOf = [](double x) { return 1.29 * x; };
        QCOMPARE(fittingTicks(axis, wide).size(), std::size_t{2});
        wide.placeOf = [](double x) { return 1.31 * x; };
        QCOMPARE(fittingTicks(axis, wide).size(), std::size_t{6});
    }

    void whatStandsThereIsNotTouched()
    {
        const PlotAxis axis{10.0, 1.0};
        // "59 Hz" begins at 75.
        TickStrip wide = strip({{0.0, 71.0}});
        wide.placeOf = [](double x) { return 2.0 * x; };
        QCOMPARE(fittingTicks(axis, wide).size(), std::size_t{2});
        wide.taken = {{0.0, 70.0}};
        QCOMPARE(fittingTicks(axis, wide).size(), std::size_t{6});
        wide.taken = {{0.0, 170.0}};
        QVERIFY(fittingTicks(axis, wide).empty());
    }
};

QTEST_GUILESS_MAIN(TestFrequencyTicks)
#include "test_frequency_ticks.moc"
