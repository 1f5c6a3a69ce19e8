// SPDX-License-Identifier: MIT
// Tests every result against the closed-form value for a known device, sampled at 400 points without noise. The allowed
// error is 0.1 % unless a test justifies another bound.
#include "analysis/results.h"

#include "core/scale_type.h"
#include "tests/analysis/curve_models.h"

#include <QTest>

#include <algorithm>
#include <limits>

using namespace calvorn;

namespace {

constexpr double kHalfPower = 3.0102999566;
constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

double decibels(double ratio)
{
    return 20.0 * std::log10(ratio);
}

Trace reversed(Trace trace)
{
    trace.start = trace.frequencyAt(trace.volts.size() - 1);
    trace.step = -trace.step;
    std::ranges::reverse(trace.volts);
    return trace;
}

// Returns the response relative to a reference of 1 V at all frequencies.
Response relative(const Trace &trace)
{
    Trace reference = trace;
    std::ranges::fill(reference.volts, 1.0);
    reference.floor = 0.0;
    return relativeResponse(trace, reference);
}

std::vector<const char *> keysOf(const Results &results)
{
    std::vector<const char *> keys;
    for (const Result &result : results)
        keys.push_back(result.key);
    return keys;
}

void addFilters()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<bool>("falling");
    for (int order = 2; order <= 5; ++order) {
        QTest::addRow("Butterworth %d", order) << order << false;
        QTest::addRow("Butterworth %d, falling", order) << order << true;
    }
}

} // namespace

class TestResults : public QObject
{
    Q_OBJECT

private slots:
    void thePassBandOfAFilter_data() { addFilters(); }
    void thePassBandOfAFilter();
    void theSkirtsOfAFilter_data() { addFilters(); }
    void theSkirtsOfAFilter();
    void tenBitsMoveAnEdgeByACount_data() { addFilters(); }
    void tenBitsMoveAnEdgeByACount();
    void theLossNeedsAReference();
    void aNotch();
    void aCrystal_data();
    void aCrystal();
    void theDipOfACrystalBelowTheFloor();
    void anAntennaAtABridge_data();
    void anAntennaAtABridge();

    void everyKindHasItsKeys_data();
    void everyKindHasItsKeys();
    void aFilterWiderThanTheRange();
    void aFilterInTheNoise();
    void aGapHidesWhatIsBeyond();
    void aNotchThatIsNone();
    void aCrystalWithoutParallelResonance();
    void aCrystalAboveItsReference();
    void aBadMatch();
    void nothingAtAll();
};

void TestResults::thePassBandOfAFilter()
{
    QFETCH(int, order);
    QFETCH(bool, falling);
    // About 130 samples lie between the -3 dB points.
    const test::Butterworth filter{order, 7.1e6, 0.05};
    const Trace rising = test::sampled(6.55e6, 7.65e6, [&](double f) { return 0.5 * filter.at(f); });
    const Results results = filterResults(responseIn(falling ? reversed(rising) : rising, 1.0));

    QVERIFY(test::isNear(results, "peak", decibels(0.5)));
    // The top is flat, so the highest sample may be next to the middle one.
    QVERIFY(test::isNear(results, "peakFreq", 7.1e6, 2.0 * rising.step));
    QVERIFY(test::isNear(results, "bw3", filter.bandwidth(kHalfPower)));
    QVERIFY(test::isNear(results, "bw6", filter.bandwidth(6.0)));
    const double centre = (filter.lower(kHalfPower) + filter.upper(kHalfPower)) / 2.0;
    QVERIFY(test::isNear(results, "centre", centre, 0.001 * filter.bandwidth(kHalfPower)));
    QVERIFY(test::isNear(results, "q", centre / filter.bandwidth(kHalfPower)));

    double lowest = 0.0;
    for (std::size_t i = 0; i < test::kSamples; ++i) {
        const double f = rising.frequencyAt(i);
        if (f > filter.lower(kHalfPower) && f < filter.upper(kHalfPower))
            lowest = std::min(lowest, decibels(filter.at(f)));
    }
    QVERIFY(test::isNear(results, "ripple", -lowest));
}

void TestResults::theSkirtsOfAFilter()
{
    QFETCH(int, order);
    QFETCH(bool, falling);
    // The range is slightly wider than the -60 dB bandwidth, so the filter's width depends on its order.
    const double width = 0.6 / std::pow(1000.0, 1.0 / order);
    const test::Butterworth filter{order, 7.1e6, width};
    const Trace rising =
        test::sampled(filter.lower(61.0), filter.upper(61.0), [&](double f) { return 2.0 * filter.at(f); });
    const Results results = filterResults(responseIn(falling ? reversed(rising) : rising, 10.0));

    QVERIFY(test::isNear(results, "peak", decibels(0.2), 0.01));
    QVERIFY(test::isNear(results, "bw60", filter.bandwidth(60.0)));
    // With few samples between the -6 dB points (17 for order 2), linear interpolation in dB is inaccurate by up to 0.5
    // %. For higher orders the error is within 0.1 %.
    const double bound = order == 2 ? 0.005 : 0.001;
    const double shape = filter.bandwidth(60.0) / filter.bandwidth(6.0);
    QVERIFY(test::isNear(results, "shape", shape, bound * shape));
    const double low = 14.0 / std::log2(filter.lower(6.0) / filter.lower(20.0));
    const double high = 14.0 / std::log2(filter.upper(20.0) / filter.upper(6.0));
    QVERIFY(test::isNear(results, "slopeLow", low, bound * low));
    QVERIFY(test::isNear(results, "slopeHigh", high, bound * high));
}

void TestResults::tenBitsMoveAnEdgeByACount()
{
    QFETCH(int, order);
    QFETCH(bool, falling);
    const test::Butterworth filter{order, 7.1e6, 0.05};
    const Trace rising = test::sampled(6.55e6, 7.65e6, [&](double f) { return filter.at(f); });
    const Trace trace = falling ? reversed(rising) : rising;
    const double count = static_cast<double>(0.0025F);
    Sweep sweep;
    sweep.origin = SweepOrigin::Measured;
    sweep.detector = DetectorCalibration{0.0025F, 0.0F};
    for (std::size_t i = 0; i < test::kSamples; ++i) {
        sweep.frequencies[i] = trace.frequencyAt(i);
        sweep.counts[i] = std::round(trace.volts[i] / count);
    }
    const Results results = filterResults(responseIn(traceOf(sweep, kScaleDb1V), 1.0));
    // Errors of half a count at the peak and at the level shift an edge to where the curve has fallen by their sum. The
    // bound is a quarter larger because the curve is not straight there.
    const auto bound = [&](double level) {
        const double ratio = std::pow(10.0, -level / 20.0);
        const double off = 1.25 * (0.5 * ratio + 0.5) * count;
        const auto moved = [&](double edge) {
            return off / std::abs(filter.at(edge + 1.0) - filter.at(edge - 1.0)) * 2.0;
        };
        return moved(filter.lower(level)) + moved(filter.upper(level));
    };
    QVERIFY(bound(6.0) < 0.01 * filter.bandwidth(6.0));
    QVERIFY(test::isNear(results, "bw3", filter.bandwidth(kHalfPower), bound(kHalfPower)));
    QVERIFY(test::isNear(results, "bw6", filter.bandwidth(6.0), bound(6.0)));
    QVERIFY(test::isNear(results, "peak", 0.0, decibels(1.0 + count)));
    QVERIFY(test::isMissing(results, "bw60", Missing::NoCrossing));
}

void TestResults::theLossNeedsAReference()
{
    const test::Butterworth filter{3, 7.1e6, 0.05};
    const Trace trace = test::sampled(6.6e6, 7.6e6, [&](double f) { return 0.8 * filter.at(f) * (2.0 - f / 1e7); });
    QVERIFY(test::isMissing(filterResults(responseIn(trace, 1.0)), "loss", Missing::NoReference));
    // The reference falls with frequency, as the generator does, and covers a different range.
    const Trace reference = reversed(test::sampled(6e6, 8e6, [](double f) { return 2.0 - f / 1e7; }));
    const Results results = filterResults(relativeResponse(trace, reference));
    QVERIFY(test::isNear(results, "loss", -decibels(0.8)));
    QVERIFY(test::isNear(results, "peak", decibels(0.8)));
    QVERIFY(test::isNear(results, "bw3", filter.bandwidth(kHalfPower)));
}

void TestResults::aNotch()
{
    // The middle is at sample 200.
    const test::Notch notch{7.1e6, 30.0, 0.01};
    const Trace trace =
        test::sampled(7.1e6 - 200.0 * 5000.0, 7.1e6 + 199.0 * 5000.0, [&](double f) { return 0.7 * notch.at(f); });
    for (const Trace &sweep : {trace, reversed(trace)}) {
        const Results results = notchResults(responseIn(sweep, 1.0));
        const double outside = std::max(notch.at(trace.start), notch.at(trace.frequencyAt(399)));
        QVERIFY(test::isNear(results, "depth", decibels(outside / 0.01)));
        QVERIFY(test::isNear(results, "notchFreq", 7.1e6));
        QVERIFY(test::isNear(results, "bw3", notch.width(outside / std::sqrt(2.0))));
    }
    // If the middle is between samples, the deepest sample is at most half a step away.
    const Trace beside = test::sampled(6.1013e6, 8.0963e6, [&](double f) { return notch.at(f); });
    const Results results = notchResults(responseIn(beside, 1.0));
    QVERIFY(test::isNear(results, "notchFreq", 7.1e6, beside.step / 2.0));
    const double nearest = *test::resultOf(results, "notchFreq").value;
    QVERIFY(test::isNear(results, "depth", decibels(notch.at(beside.start) / notch.at(nearest)), 0.1));
}

void TestResults::aCrystal_data()
{
    QTest::addColumn<double>("rm");
    QTest::addColumn<double>("lm");
    QTest::addColumn<double>("cm");
    QTest::addColumn<double>("c0");
    QTest::addColumn<double>("ohms");
    QTest::addColumn<bool>("falling");
    QTest::newRow("hardly any C0") << 12.0 << 15.6e-3 << 20.046e-15 << 1e-18 << 50.0 << false;
    QTest::newRow("9 MHz in 50 ohms") << 12.0 << 15.6e-3 << 20.046e-15 << 4.5e-12 << 50.0 << false;
    QTest::newRow("9 MHz in 50 ohms, falling") << 12.0 << 15.6e-3 << 20.046e-15 << 4.5e-12 << 50.0 << true;
    QTest::newRow("9 MHz in 12.5 ohms") << 25.0 << 15.6e-3 << 20.046e-15 << 5.0e-12 << 12.5 << false;
    QTest::newRow("3.5 MHz in 50 ohms") << 60.0 << 90.0e-3 << 23.0e-15 << 5.5e-12 << 50.0 << false;
}

void TestResults::aCrystal()
{
    QFETCH(double, rm);
    QFETCH(double, lm);
    QFETCH(double, cm);
    QFETCH(double, c0);
    QFETCH(double, ohms);
    QFETCH(bool, falling);
    const test::Crystal crystal{rm, lm, cm, c0, ohms};
    const double distance = crystal.parallel() - crystal.series();
    // As a user would, takes a narrow sweep for the series resonance and a wider one for both resonances. The
    // resonances are between samples.
    const auto sweep = [&](double start, double stop) {
        const Trace trace = test::sampled(start, stop, [&](double f) { return crystal.at(f); });
        return crystalResults(relative(falling ? reversed(trace) : trace), ohms);
    };
    const double loaded = (2.0 * ohms + rm) / (2.0 * test::kPi * lm);
    const Results narrow = sweep(crystal.series() - 4.0 * loaded, crystal.series() + 4.04 * loaded);
    // At the -3 dB points, C0 carries a fraction x of the current. This lowers the peak frequency by a few hertz and
    // changes the element values by about x squared, or 0.08 % in the worst row.
    const double x = (2.0 * ohms + rm) * 2.0 * test::kPi * crystal.series() * c0;
    const double bound = 0.001 + x * x;
    QVERIFY(bound < 0.002);
    QVERIFY(test::isNear(narrow, "fs", crystal.series(), (0.001 + 0.5 * x) * loaded));
    QVERIFY(test::isNear(narrow, "rm", rm));
    QVERIFY(test::isNear(narrow, "lm", lm, bound * lm));
    QVERIFY(test::isNear(narrow, "cm", cm, bound * cm));
    const double q = 2.0 * test::kPi * crystal.series() * lm / rm;
    QVERIFY(test::isNear(narrow, "q", q, bound * q));
    QVERIFY(test::isMissing(narrow, "fp", Missing::NoParallelResonance));
    QVERIFY(test::isMissing(narrow, "c0", Missing::NoParallelResonance));

    if (c0 < 1e-15)
        return; // the parallel resonance is too far away
    // C0 depends on a small frequency difference and on a Cm measured with few samples, so the bound is 1 %.
    const Results wide = sweep(crystal.series() - 0.35 * distance, crystal.series() + 1.3 * distance);
    QVERIFY(test::isNear(wide, "fp", crystal.parallel(), 0.001 * distance));
    QVERIFY(test::isNear(wide, "c0", c0, 0.01 * c0));
}

void TestResults::theDipOfACrystalBelowTheFloor()
{
    const test::Crystal crystal{12.0, 15.6e-3, 20.046e-15, 4.5e-12, 50.0};
    Trace trace =
        test::sampled(crystal.series() - 5e3, crystal.parallel() + 8e3, [&](double f) { return crystal.at(f); });
    trace.floor = 0.002; // the floor of a ten-bit detector
    const double hidden = static_cast<double>(std::ranges::count_if(trace.volts, [](double v) { return v <= 0.002; }));
    QVERIFY(hidden > 2.0);
    const Results results = crystalResults(relative(trace), 50.0);
    QVERIFY(test::isNear(results, "fp", crystal.parallel(), hidden / 2.0 * trace.step));
    QVERIFY(test::resultOf(results, "c0").value);
}

void TestResults::anAntennaAtABridge_data()
{
    QTest::addColumn<double>("ohms");
    QTest::addColumn<bool>("falling");
    QTest::newRow("36 ohms") << 36.0 << false;
    QTest::newRow("60 ohms") << 60.0 << false;
    QTest::newRow("60 ohms, falling") << 60.0 << true;
}

void TestResults::anAntennaAtABridge()
{
    QFETCH(double, ohms);
    QFETCH(bool, falling);
    // The resonance is at sample 200.
    const test::Antenna antenna{ohms, 14.1e6, 500.0};
    const auto bridge = [](double f) { return 0.9 - f / 1e8; };
    const Trace rising = test::sampled(14.1e6 - 200.0 * 10000.0, 14.1e6 + 199.0 * 10000.0,
                                       [&](double f) { return bridge(f) * antenna.reflectionAt(f); });
    const Trace open = test::sampled(12e6, 17e6, bridge);
    const Results results = matchResults(relativeResponse(falling ? reversed(rising) : rising, open));
    const double rho = std::abs(ohms - 50.0) / (ohms + 50.0);
    QVERIFY(test::isNear(results, "returnLoss", -decibels(rho)));
    QVERIFY(test::isNear(results, "rho", rho));
    QVERIFY(test::isNear(results, "swr", antenna.swr()));
    QVERIFY(test::isNear(results, "freq", 14.1e6, 0.1));
    QVERIFY(test::isNear(results, "bw15", antenna.bandwidth(1.5)));
    QVERIFY(test::isNear(results, "bw20", antenna.bandwidth(2.0)));
}

void TestResults::everyKindHasItsKeys_data()
{
    QTest::addColumn<ResultKind>("kind");
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("filter") << ResultKind::Filter
                            << QByteArray("peak,peakFreq,loss,bw3,bw6,bw60,centre,q,shape,ripple,slopeLow,slopeHigh");
    QTest::newRow("notch") << ResultKind::Notch << QByteArray("depth,notchFreq,bw3");
    QTest::newRow("crystal") << ResultKind::Crystal << QByteArray("fs,fp,rm,lm,cm,c0,q");
    QTest::newRow("match") << ResultKind::Match << QByteArray("returnLoss,rho,swr,freq,bw15,bw20");
}

void TestResults::everyKindHasItsKeys()
{
    QFETCH(ResultKind, kind);
    QFETCH(QByteArray, keys);
    const Trace trace = test::sampled(1e6, 2e6, [](double f) { return 1.0 / (1.0 + std::abs(f - 1.4e6) / 1e4); });
    for (const Response &response : {Response(), responseIn(trace, 1.0), relative(trace)}) {
        const Results results = resultsOf(kind, response);
        QByteArray found;
        for (const char *key : keysOf(results))
            found += QByteArray(",") + key;
        QCOMPARE(found.mid(1), keys);
        const auto expected = resultKeys(kind);
        QVERIFY(std::ranges::equal(keysOf(results), expected, [](auto a, auto b) { return qstrcmp(a, b) == 0; }));
        for (const Result &result : results) {
            QCOMPARE(result.value.has_value(), result.missing == Missing::Nothing);
            if (response.isEmpty())
                QCOMPARE(result.missing, Missing::NoSweep);
        }
    }
}

void TestResults::aFilterWiderThanTheRange()
{
    // A low-pass has no lower edge.
    const Trace trace = test::sampled(1e6, 9e6, [](double f) { return 1.0 / (1.0 + std::pow(f / 4e6, 6.0)); });
    const Results results = filterResults(responseIn(trace, 1.0));
    for (const char *key : {"bw3", "bw6", "bw60", "centre", "q", "shape", "ripple", "slopeLow"})
        QVERIFY2(test::isMissing(results, key, Missing::NoCrossing), key);
    QVERIFY(test::resultOf(results, "peak").value);
    // At -a dB, (f / 4 MHz)^6 is 10^(a/20) - 1.
    const double six = std::pow(std::pow(10.0, 6.0 / 20.0) - 1.0, 1.0 / 6.0);
    const double twenty = std::pow(9.0, 1.0 / 6.0);
    // The peak is the first sample, 0.002 dB below the ideal pass band.
    QVERIFY(test::isNear(results, "slopeHigh", 14.0 / std::log2(twenty / six)));
}

void TestResults::aFilterInTheNoise()
{
    const test::Butterworth filter{3, 7.1e6, 0.02};
    Trace trace = test::sampled(6e6, 8.2e6, [&](double f) { return filter.at(f); });
    trace.floor = std::pow(10.0, -46.0 / 20.0);
    const Results results = filterResults(responseIn(trace, 1.0));
    QVERIFY(test::isNear(results, "bw6", filter.bandwidth(6.0)));
    QVERIFY(test::isMissing(results, "bw60", Missing::BelowFloor));
    QVERIFY(test::isMissing(results, "shape", Missing::BelowFloor));
    // Everything is below the floor.
    trace.floor = 2.0;
    for (const ResultKind kind : {ResultKind::Filter, ResultKind::Notch}) {
        for (const Result &result : resultsOf(kind, responseIn(trace, 1.0)))
            QCOMPARE(result.missing, Missing::BelowFloor);
    }
    for (const Result &result : crystalResults(relative(trace), 50.0))
        QCOMPARE(result.missing, Missing::BelowFloor);
}

void TestResults::aGapHidesWhatIsBeyond()
{
    const test::Butterworth filter{3, 7.1e6, 0.02};
    Trace trace = test::sampled(6.6e6, 7.6e6, [&](double f) { return filter.at(f); });
    const double edge = filter.upper(10.0);
    trace.volts[static_cast<std::size_t>((edge - trace.start) / trace.step)] = kGap;
    const Results results = filterResults(responseIn(trace, 1.0));
    QVERIFY(test::isNear(results, "bw6", filter.bandwidth(6.0)));
    QVERIFY(test::isNear(results, "slopeLow", 14.0 / std::log2(filter.lower(6.0) / filter.lower(20.0)), 0.5));
    QVERIFY(test::isMissing(results, "slopeHigh", Missing::Gap));
    QVERIFY(test::isMissing(results, "bw60", Missing::NoCrossing)); // the reason for the lower side
    std::ranges::fill(trace.volts, kGap);
    for (const Result &result : filterResults(responseIn(trace, 1.0)))
        QCOMPARE(result.missing, Missing::Gap);
    for (const Result &result : matchResults(relative(trace)))
        QCOMPARE(result.missing, Missing::Gap);
}

void TestResults::aNotchThatIsNone()
{
    const Trace shallow = test::sampled(1e6, 2e6, [](double f) { return std::abs(f - 1.5e6) < 1e5 ? 0.8 : 1.0; });
    const Results results = notchResults(responseIn(shallow, 1.0));
    QVERIFY(test::isNear(results, "depth", -decibels(0.8)));
    QVERIFY(test::isNear(results, "notchFreq", 1.5e6));
    QVERIFY(test::isMissing(results, "bw3", Missing::NotReached));
    // At the end of the range, a notch has only one side.
    const Trace half = test::sampled(1e6, 2e6, [](double f) { return f / 2e6 - 0.45; });
    QVERIFY(test::isMissing(notchResults(responseIn(half, 1.0)), "bw3", Missing::NoCrossing));
    // If the bottom is below the floor, the depth is unknown but the width is known.
    Trace deep = test::sampled(1e6, 2e6, [](double f) { return std::abs(f - 1.5e6) / 5e5; });
    deep.floor = 0.05;
    const Results hidden = notchResults(responseIn(deep, 1.0));
    QVERIFY(test::isMissing(hidden, "depth", Missing::BelowFloor));
    QVERIFY(test::isNear(hidden, "notchFreq", 1.5e6));
    QVERIFY(test::isNear(hidden, "bw3", 1e6 / std::sqrt(2.0)));
}

void TestResults::aCrystalWithoutParallelResonance()
{
    const test::Crystal crystal{12.0, 15.6e-3, 20.046e-15, 4.5e-12, 50.0};
    const auto at = [&](double f) { return crystal.at(f); };
    // The range ends before the parallel resonance.
    const Trace below = test::sampled(crystal.series() - 5e3, crystal.parallel() - 3e3, at);
    const Results results = crystalResults(relative(below), 50.0);
    QVERIFY(test::isMissing(results, "fp", Missing::NoParallelResonance));
    QVERIFY(test::isMissing(results, "c0", Missing::NoParallelResonance));
    for (const char *key : {"fs", "rm", "lm", "cm", "q"})
        QVERIFY2(test::resultOf(results, key).value, key);
    // Without a reference the loss is unknown.
    for (const Result &result : crystalResults(responseIn(below, 1.0), 50.0))
        QCOMPARE(result.missing, Missing::NoReference);
    // The range starts at the series resonance.
    const Trace above = test::sampled(crystal.series(), crystal.parallel() + 5e3, at);
    const Results half = crystalResults(relative(above), 50.0);
    QVERIFY(test::isNear(half, "rm", 12.0));
    for (const char *key : {"lm", "cm", "c0", "q"})
        QVERIFY2(test::isMissing(half, key, Missing::NoCrossing), key);
    // There is a gap between the two resonances.
    Trace broken = test::sampled(crystal.series() - 5e3, crystal.parallel() + 5e3, at);
    broken.volts[250] = kGap;
    QVERIFY(test::isMissing(crystalResults(relative(broken), 50.0), "fp", Missing::Gap));
}

void TestResults::aCrystalAboveItsReference()
{
    const test::Crystal crystal{12.0, 15.6e-3, 20.046e-15, 4.5e-12, 50.0};
    const Trace trace =
        test::sampled(crystal.series() - 5e3, crystal.parallel() + 5e3, [&](double f) { return 1.2 * crystal.at(f); });
    const Results results = crystalResults(relative(trace), 50.0);
    for (const char *key : {"rm", "lm", "cm", "c0", "q"})
        QVERIFY2(test::isMissing(results, key, Missing::NotBelowReference), key);
    QVERIFY(test::resultOf(results, "fs").value);
    QVERIFY(test::resultOf(results, "fp").value);
}

void TestResults::aBadMatch()
{
    const test::Antenna antenna{90.0, 14.1e6, 500.0};
    const Trace trace = test::sampled(13e6, 15e6, [&](double f) { return antenna.reflectionAt(f); });
    for (const Result &result : matchResults(responseIn(trace, 1.0)))
        QCOMPARE(result.missing, Missing::NoReference);
    Results results = matchResults(relative(trace));
    QVERIFY(test::isNear(results, "swr", 1.8));
    QVERIFY(test::isMissing(results, "bw15", Missing::NotReached));
    QVERIFY(test::isNear(results, "bw20", antenna.bandwidth(2.0)));
    // A reflection above the reference means that the reference is wrong.
    Trace more = trace;
    std::ranges::for_each(more.volts, [](double &volts) { volts *= 5.0; });
    results = matchResults(relative(more));
    QVERIFY(test::isNear(results, "rho", 5.0 * 40.0 / 140.0));
    QVERIFY(test::isMissing(results, "swr", Missing::NotBelowReference));
    // The reflection is below the detector's floor.
    Trace perfect = trace;
    perfect.floor = 0.3;
    results = matchResults(relative(perfect));
    for (const char *key : {"returnLoss", "rho", "swr"})
        QVERIFY2(test::isMissing(results, key, Missing::BelowFloor), key);
    QVERIFY(test::isNear(results, "freq", 14.1e6));
}

void TestResults::nothingAtAll()
{
    // A single sample or a flat curve has a peak but no other result.
    Trace one;
    one.start = 1e6;
    one.volts = {0.5};
    const Results single = filterResults(responseIn(one, 1.0));
    QVERIFY(test::isNear(single, "peak", decibels(0.5)));
    QVERIFY(test::isNear(single, "peakFreq", 1e6));
    QVERIFY(test::isMissing(single, "bw3", Missing::NoCrossing));
    const Trace flat = test::sampled(1e6, 2e6, [](double) { return 0.5; });
    QVERIFY(test::isNear(filterResults(responseIn(flat, 1.0)), "peakFreq", 1.5e6));
    for (const ResultKind kind : {ResultKind::Notch, ResultKind::Crystal, ResultKind::Match}) {
        for (const Trace &trace : {one, flat}) {
            const Results results = resultsOf(kind, relative(trace));
            QVERIFY(!results.empty());
            for (const Result &result : results)
                QCOMPARE(result.value.has_value(), result.missing == Missing::Nothing);
        }
    }
    QVERIFY(test::isMissing(crystalResults(relative(one), 50.0), "fp", Missing::NoParallelResonance));
}

QTEST_APPLESS_MAIN(TestResults)
#include "test_results.moc"
