// SPDX-License-Identifier: MIT
#include "analysis/result_text.h"

#include "core/number_text.h"

#include <QByteArray>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace calvorn {

namespace {

constexpr int kSignificantDigits = 4;
constexpr DisplayMask kMaskRatio{"#0.00"};

QString withDecimals(double value, int decimals)
{
    DisplayMask mask = kMaskHertz;
    mask.decimals = decimals;
    return NumberText().masked(value, mask);
}

// Formats with four significant digits; integers with more digits are shown in full.
QString significant(double value)
{
    const double rounded = QByteArray::number(value, 'e', kSignificantDigits - 1).toDouble();
    if (rounded == 0.0)
        return withDecimals(0.0, kSignificantDigits - 1);
    const int integers = static_cast<int>(std::floor(std::log10(std::abs(rounded)))) + 1;
    return withDecimals(value, std::max(0, kSignificantDigits - integers));
}

// Formats with four significant digits and an SI prefix, for example "15.92 mH".
QString withPrefix(double value, const QString &unit)
{
    static constexpr int kLowest = -15;
    static constexpr std::array<const char16_t *, 9> kPrefixes{u"f", u"p", u"n", u"µ", u"m", u"", u"k", u"M", u"G"};
    // Use the exponent of the rounded number, so that 999.96 becomes 1.000 with the next prefix.
    const QByteArray rounded = QByteArray::number(value, 'e', kSignificantDigits - 1);
    const int exponent = value == 0.0 ? 0 : rounded.mid(rounded.indexOf('e') + 1).toInt();
    const auto steps = static_cast<int>(std::floor(exponent / 3.0));
    const int index = std::clamp(steps - kLowest / 3, 0, static_cast<int>(kPrefixes.size()) - 1);
    const int power = kLowest + 3 * index;
    const double mantissa = rounded.toDouble() / std::pow(10.0, power);
    const int decimals = std::clamp(kSignificantDigits - 1 - (exponent - power), 0, kSignificantDigits - 1);
    return withDecimals(mantissa, decimals) + u' ' + QString::fromUtf16(kPrefixes[static_cast<std::size_t>(index)]) +
           unit;
}

QString plainNumber(const QByteArray &key, double value)
{
    return key == "swr" || key == "shape" ? NumberText().masked(value, kMaskRatio) : significant(value);
}

} // namespace

QString ResultText::caption(const char *key)
{
    const std::array captions{
        std::pair{"peak", tr("Peak")},
        std::pair{"peakFreq", tr("Peak frequency")},
        std::pair{"loss", tr("Insertion loss")},
        std::pair{"bw3", tr("−3 dB bandwidth")},
        std::pair{"bw6", tr("−6 dB bandwidth")},
        std::pair{"bw60", tr("−60 dB bandwidth")},
        std::pair{"centre", tr("Centre frequency")},
        std::pair{"q", tr("Quality factor Q")},
        std::pair{"shape", tr("Shape factor")},
        std::pair{"ripple", tr("Ripple")},
        std::pair{"slopeLow", tr("Lower slope")},
        std::pair{"slopeHigh", tr("Upper slope")},
        std::pair{"depth", tr("Notch depth")},
        std::pair{"notchFreq", tr("Notch frequency")},
        std::pair{"fs", tr("Series resonance")},
        std::pair{"fp", tr("Parallel resonance")},
        std::pair{"rm", tr("Motional resistance Rm")},
        std::pair{"lm", tr("Motional inductance Lm")},
        std::pair{"cm", tr("Motional capacitance Cm")},
        std::pair{"c0", tr("Parallel capacitance C0")},
        std::pair{"returnLoss", tr("Return loss")},
        std::pair{"rho", tr("Reflection |ρ|")},
        std::pair{"swr", tr("Lowest SWR")},
        std::pair{"freq", tr("Frequency of the lowest SWR")},
        std::pair{"bw15", tr("Bandwidth for SWR ≤ 1.5")},
        std::pair{"bw20", tr("Bandwidth for SWR ≤ 2")},
    };
    const auto found =
        std::ranges::find_if(captions, [&](const auto &entry) { return qstrcmp(entry.first, key) == 0; });
    return found == captions.end() ? QString::fromLatin1(key) : found->second;
}

QString ResultText::value(const Result &result)
{
    if (!result.value)
        return QStringLiteral("–");
    const double value = *result.value;
    switch (result.unit) {
    case ResultUnit::Hertz:
        return NumberText().masked(value, kMaskHertz) + QStringLiteral(" Hz");
    case ResultUnit::Decibel:
        return NumberText().masked(value, kMaskDb) + QStringLiteral(" dB");
    case ResultUnit::DecibelPerOctave:
        return tr("%1 dB/octave").arg(NumberText().masked(value, kMaskDb));
    case ResultUnit::Ohm:
        return withPrefix(value, QStringLiteral("Ω"));
    case ResultUnit::Henry:
        return withPrefix(value, QStringLiteral("H"));
    case ResultUnit::Farad:
        return withPrefix(value, QStringLiteral("F"));
    case ResultUnit::One:
        break;
    }
    return plainNumber(result.key, value);
}

QString ResultText::missing(Missing missing)
{
    switch (missing) {
    case Missing::Nothing:
        break;
    case Missing::NoSweep:
        return tr("no sweep yet");
    case Missing::NoCrossing:
        return tr("outside the sweep range");
    case Missing::BelowFloor:
        return tr("below the detector's floor");
    case Missing::NoReference:
        return tr("no reference");
    case Missing::NoParallelResonance:
        return tr("no parallel resonance inside the range");
    case Missing::Gap:
        return tr("a gap in the curve");
    case Missing::NotReached:
        return tr("the curve does not reach this level");
    case Missing::NotBelowReference:
        return tr("not below the reference");
    }
    return {};
}

} // namespace calvorn
