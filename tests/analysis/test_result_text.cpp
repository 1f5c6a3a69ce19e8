// SPDX-License-Identifier: MIT
#include "analysis/result_text.h"

#include "tests/support/locales.h"

#include <QSet>
#include <QTest>

using namespace calvorn;

namespace {

QString text(ResultUnit unit, double value, const char *key = "")
{
    return ResultText::value({key, unit, value, Missing::Nothing});
}

} // namespace

class TestResultText : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void valuesInEveryLocale_data() { test::addLocaleRows(); }
    void valuesInEveryLocale()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        const auto shown = [&](const char *expected) { return test::inLocale(locale, QString::fromUtf8(expected)); };
        QCOMPARE(text(ResultUnit::Hertz, 7100012.5), shown("7,100,012 Hz"));
        QCOMPARE(text(ResultUnit::Hertz, 345.6), shown("346 Hz"));
        QCOMPARE(text(ResultUnit::Decibel, -6.04), shown("-6.0 dB"));
        QCOMPARE(text(ResultUnit::DecibelPerOctave, 123.45), shown("123.4 dB/octave"));
        QCOMPARE(text(ResultUnit::Ohm, 12.0), shown("12.00 Ω"));
        QCOMPARE(text(ResultUnit::Ohm, 1234.4), shown("1.234 kΩ"));
        QCOMPARE(text(ResultUnit::Henry, 0.0156), shown("15.60 mH"));
        QCOMPARE(text(ResultUnit::Farad, 20.046e-15), shown("20.05 fF"));
        QCOMPARE(text(ResultUnit::Farad, 4.5e-12), shown("4.500 pF"));
        QCOMPARE(text(ResultUnit::One, 1.006, "swr"), shown("1.01"));
        QCOMPARE(text(ResultUnit::One, 3.98, "shape"), shown("3.98"));
        QCOMPARE(text(ResultUnit::One, 0.11111, "rho"), shown("0.1111"));
        QCOMPARE(text(ResultUnit::One, 73512.6, "q"), shown("73,513"));
        QCOMPARE(text(ResultUnit::One, 20.0, "q"), shown("20.00"));
    }

    void fourDigitsAtEveryStep()
    {
        QCOMPARE(text(ResultUnit::Henry, 999.94e-6), QStringLiteral("999.9 µH"));
        QCOMPARE(text(ResultUnit::Henry, 999.96e-6), QStringLiteral("1.000 mH"));
        QCOMPARE(text(ResultUnit::Henry, 1e-3), QStringLiteral("1.000 mH"));
        QCOMPARE(text(ResultUnit::Henry, 99.996e-3), QStringLiteral("100.0 mH"));
        QCOMPARE(text(ResultUnit::Henry, 2.5), QStringLiteral("2.500 H"));
        QCOMPARE(text(ResultUnit::Farad, 1e-12), QStringLiteral("1.000 pF"));
        QCOMPARE(text(ResultUnit::Farad, 1e-15), QStringLiteral("1.000 fF"));
        QCOMPARE(text(ResultUnit::Farad, 0.5e-15), QStringLiteral("0.500 fF"));
        QCOMPARE(text(ResultUnit::Ohm, 0.0), QStringLiteral("0.000 Ω"));
        QCOMPARE(text(ResultUnit::Ohm, 5e6), QStringLiteral("5.000 MΩ"));
        QCOMPARE(text(ResultUnit::Ohm, 5e13), QStringLiteral("50,000 GΩ"));
        QCOMPARE(text(ResultUnit::One, 9.99996, "q"), QStringLiteral("10.00"));
        QCOMPARE(text(ResultUnit::One, 0.0, "rho"), QStringLiteral("0.000"));
        QCOMPARE(text(ResultUnit::One, 0.012345, "rho"), QStringLiteral("0.01234"));
    }

    void whatIsMissingHasAReason()
    {
        QCOMPARE(ResultText::value({"bw3", ResultUnit::Hertz, std::nullopt, Missing::NoCrossing}), QStringLiteral("–"));
        QCOMPARE(ResultText::missing(Missing::Nothing), QString());
        QSet<QString> reasons;
        for (const Missing missing :
             {Missing::NoSweep, Missing::NoCrossing, Missing::BelowFloor, Missing::NoReference,
              Missing::NoParallelResonance, Missing::Gap, Missing::NotReached, Missing::NotBelowReference}) {
            QVERIFY(!ResultText::missing(missing).isEmpty());
            reasons.insert(ResultText::missing(missing));
        }
        QCOMPARE(reasons.size(), 8);
        QCOMPARE(ResultText::missing(Missing::BelowFloor), QStringLiteral("below the detector's floor"));
    }

    void everyKeyHasACaption()
    {
        for (const ResultKind kind : {ResultKind::Filter, ResultKind::Notch, ResultKind::Crystal, ResultKind::Match}) {
            QSet<QString> captions;
            for (const char *key : resultKeys(kind)) {
                const QString caption = ResultText::caption(key);
                QVERIFY2(caption != QLatin1String(key), key);
                captions.insert(caption);
            }
            QCOMPARE(captions.size(), static_cast<qsizetype>(resultKeys(kind).size()));
        }
        QCOMPARE(ResultText::caption("bw3"), QStringLiteral("−3 dB bandwidth"));
        QCOMPARE(ResultText::caption("none"), QStringLiteral("none"));
    }
};

QTEST_APPLESS_MAIN(TestResultText)
#include "test_result_text.moc"
