// SPDX-License-Identifier: MIT
#include "analysis/response.h"

#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace calvorn;

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
constexpr double kNothing = -std::numeric_limits<double>::infinity();

// A response with samples every 10 Hz, starting at 1000 Hz.
Response response(const std::vector<double> &decibels)
{
    Response made{{}, decibels, false};
    for (std::size_t i = 0; i < decibels.size(); ++i)
        made.frequencies.push_back(1000.0 + 10.0 * static_cast<double>(i));
    return made;
}

bool isAt(const Crossing &crossing, double frequency)
{
    return crossing.missing == Missing::Nothing && crossing.frequency &&
           std::abs(*crossing.frequency - frequency) < 1e-6;
}

bool isMissing(const Crossing &crossing, Missing why)
{
    return !crossing.frequency && crossing.missing == why;
}

} // namespace

class TestResponse : public QObject
{
    Q_OBJECT

private slots:
    void decibelsOverAVoltage()
    {
        const Trace trace{QString(), 1000.0, 10.0, {1.0, 0.1, 0.001, 0.0005, -1.0, kGap}, 0.001};
        const Response one = responseIn(trace, 1.0);
        QVERIFY(!one.isRelative);
        QCOMPARE(one.frequencies.front(), 1000.0);
        QCOMPARE(one.frequencies.back(), 1050.0);
        QCOMPARE(one.decibels[0], 0.0);
        QCOMPARE(one.decibels[1], -20.0);
        for (const std::size_t hidden : {2U, 3U, 4U}) // a value at the floor counts as below it
            QCOMPARE(one.decibels[hidden], kNothing);
        QVERIFY(std::isnan(one.decibels[5]));
        QCOMPARE(responseIn(trace, 10.0).decibels[0], -20.0);
        QVERIFY(responseIn(Trace(), 1.0).isEmpty());
    }

    void frequenciesAlwaysRise()
    {
        const Trace falling{QString(), 1020.0, -10.0, {1.0, 0.1, 0.01}, 0.0};
        const Response made = responseIn(falling, 1.0);
        QCOMPARE(made.frequencies, (std::vector<double>{1000.0, 1010.0, 1020.0}));
        QCOMPARE(made.decibels[0], -40.0);
        QCOMPARE(made.decibels[2], 0.0);
        QVERIFY(std::ranges::is_sorted(relativeResponse(falling, falling).frequencies));
    }

    void relativeToAReference()
    {
        const Trace trace{QString(), 1000.0, 10.0, {1.0, 0.2, 0.001, 1.0, 1.0}, 0.001};
        const Trace reference{QString(), 1000.0, 20.0, {2.0, 2.0}, 0.001};
        const Response made = relativeResponse(trace, reference);
        QVERIFY(made.isRelative);
        QVERIFY(std::abs(made.decibels[0] + 20.0 * std::log10(2.0)) < 1e-9);
        QVERIFY(std::abs(made.decibels[1] + 20.0) < 1e-9);
        QCOMPARE(made.decibels[2], kNothing); // the trace is below its floor
        QVERIFY(std::isnan(made.decibels[3]));
        QVERIFY(std::isnan(made.decibels[4]));
    }

    void crossingsToBothSides()
    {
        const Response hill = response({-10.0, -2.0, 0.0, -1.0, -5.0, 0.0});
        // Below the peak, -6 dB lies midway between -2 and -10 dB. Above the peak the response falls only to -5 dB.
        const Crossings six = crossings(hill, 6.0);
        QVERIFY(isAt(six.lower, 1005.0));
        QVERIFY(isMissing(six.upper, Missing::NoCrossing));
        const Crossings three = crossings(hill, 3.0);
        QVERIFY(isAt(three.lower, 1010.0 - 10.0 / 8.0));
        QVERIFY(isAt(three.upper, 1035.0));
        // Crossings exactly at a sample.
        QVERIFY(isAt(crossings(hill, 5.0).upper, 1040.0));
        QVERIFY(isAt(crossings(hill, 10.0).lower, 1000.0));
    }

    void whyThereIsNoCrossing()
    {
        const Response broken = response({kGap, -1.0, 0.0, -1.0, kNothing});
        QVERIFY(isMissing(crossings(broken, 3.0).lower, Missing::Gap));
        QVERIFY(isMissing(crossings(broken, 3.0).upper, Missing::BelowFloor));
        QVERIFY(isAt(crossings(broken, 1.0).lower, 1010.0));
        // The search stops at a gap, even if there is a crossing beyond it.
        QVERIFY(isMissing(crossings(response({0.0, -1.0, kGap, -9.0}), 3.0).upper, Missing::Gap));
        QVERIFY(isMissing(crossings(Response(), 3.0).lower, Missing::NoSweep));
        QVERIFY(isMissing(crossings(response({kGap, kGap}), 3.0).upper, Missing::Gap));
        QVERIFY(isMissing(crossings(response({kNothing, kGap}), 3.0).upper, Missing::BelowFloor));
        QVERIFY(isMissing(crossings(response({-1.0}), 3.0).upper, Missing::NoCrossing));
    }

    void risingFromAMinimum()
    {
        const Response dip = response({0.0, -8.0, -20.0, kNothing, 0.0});
        QVERIFY(isAt(risingCrossing(dip.frequencies, dip.decibels, 2, -1, -4.0), 1005.0));
        QVERIFY(isMissing(risingCrossing(dip.frequencies, dip.decibels, 2, 1, -4.0), Missing::BelowFloor));
        QVERIFY(isMissing(risingCrossing(dip.frequencies, dip.decibels, 2, -1, 1.0), Missing::NoCrossing));
        QVERIFY(isAt(fallingCrossing(dip.frequencies, dip.decibels, 0, 1, -4.0), 1005.0));
    }

    void plateausPassGapsOver()
    {
        const Response made = response({kGap, 1.0, 1.0, kGap, 1.0, 1.0, 1.0, 0.0});
        const auto highest = highestPlateau(made.frequencies, made.decibels);
        QVERIFY(highest);
        QCOMPARE(highest->first, std::size_t{4});
        QCOMPARE(highest->last, std::size_t{6});
        QCOMPARE(middleOf(made.frequencies, *highest), 1050.0);
        QCOMPARE(lowestPlateau(made.frequencies, made.decibels)->first, std::size_t{7});
        QVERIFY(!highestPlateau({}, {}));
        const Response gaps = response({kGap, kGap});
        QVERIFY(!lowestPlateau(gaps.frequencies, gaps.decibels));
        const Response hidden = response({kNothing, 0.0, kNothing, kNothing, -90.0});
        QCOMPARE(lowestPlateau(hidden.frequencies, hidden.decibels)->first, std::size_t{2});
    }

    void theNextPeak()
    {
        //                                0     1     2     3     4     5     6     7     8     9    10
        const Response hills = response({0.0, -9.0, -3.0, -4.0, -2.0, -2.0, -9.0, -1.0, -6.0, -5.0, -8.0});
        const auto next = [&](std::size_t from, int direction, double prominence) {
            return nextPeak(hills, from, direction, prominence);
        };
        using Index = std::optional<std::size_t>;
        QCOMPARE(next(0, 1, 0.5), Index(2));
        QCOMPARE(next(0, 1, 1.0), Index(2)); // -3 rises 1 dB above -4
        QCOMPARE(next(0, 1, 1.1), Index(4)); // -2 rises 7 dB above -9
        QCOMPARE(next(4, 1, 0.5), Index(7)); // skips the plateau where it starts
        QCOMPARE(next(5, 1, 0.5), Index(7));
        QCOMPARE(next(7, 1, 0.5), Index(9));
        QCOMPARE(next(7, 1, 1.1), Index());
        QCOMPARE(next(9, 1, 0.5), Index()); // the end of the range is not a peak
        QCOMPARE(next(10, -1, 0.5), Index(9));
        QCOMPARE(next(9, -1, 3.0), Index(7));
        QCOMPARE(next(7, -1, 3.0), Index(4));
        QCOMPARE(next(4, -1, 3.0), Index());
        QCOMPARE(next(2, -1, 0.5), Index()); // the beginning is not a peak either
        QCOMPARE(next(99, -1, 0.5), Index());
        QCOMPARE(next(0, 1, 100.0), Index());
    }

    void peaksBesideGapsAndTheFloor()
    {
        // A peak between samples below the floor has unlimited prominence; a sample next to a gap is not a peak.
        const Response made = response({-5.0, kNothing, -50.0, kNothing, kGap, -3.0, kGap, -9.0, -4.0, -7.0});
        QCOMPARE(nextPeak(made, 0, 1, 60.0), std::optional(std::size_t{2}));
        QCOMPARE(nextPeak(made, 2, 1, 1.0), std::optional(std::size_t{8}));
        QCOMPARE(nextPeak(made, 4, -1, 1.0), std::optional(std::size_t{2}));
        QVERIFY(!nextPeak(response({kNothing, kNothing, kNothing}), 0, 1, 0.0));
    }
};

QTEST_APPLESS_MAIN(TestResponse)
#include "test_response.moc"
