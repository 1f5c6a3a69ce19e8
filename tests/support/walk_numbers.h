// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>

#include <cmath>
#include <optional>

namespace calvorn::test {

// Reads and writes numbers in a locale with Qt's functions, not with the program's.
class WalkNumbers
{
public:
    explicit WalkNumbers(const QLocale &locale)
        : m_locale(locale)
    {
        m_locale.setNumberOptions(QLocale::DefaultNumberOptions); // the C locale omits the groups by default
        m_plain = m_locale;
        m_plain.setNumberOptions(QLocale::OmitGroupSeparator);
    }

    QString hertz(double value) const { return m_locale.toString(value, 'f', 0); }
    QString plain(double value, int decimals) const
    {
        const QString text = m_plain.toString(value, 'f', decimals);
        return read(text) == 0.0 ? m_plain.toString(0.0, 'f', decimals) : text;
    }
    QString amplitude(bool linear, double value) const { return plain(value, linear ? 3 : 1); }

    std::optional<double> read(const QString &text) const
    {
        bool ok = false;
        const double value = m_locale.toDouble(text, &ok);
        return ok ? std::optional(value) : std::nullopt;
    }
    double number(const QString &text) const { return read(text).value_or(std::nan("")); }

    QString group() const { return m_locale.groupSeparator(); }

private:
    QLocale m_locale;
    QLocale m_plain;
};

// These functions use the default locale.
inline double readNumber(const QString &text)
{
    return WalkNumbers(QLocale()).number(text);
}
inline QString shownHertz(double hertz)
{
    return WalkNumbers(QLocale()).hertz(hertz);
}
inline QString shownAmplitude(bool linear, double amplitude)
{
    return WalkNumbers(QLocale()).amplitude(linear, amplitude);
}

// Returns the reference voltage of a scale: scale 0 is linear, 1 and 2 refer to 1 V, 3 and 4 to 10 V.
inline double walkReference(int scale)
{
    return scale >= 3 ? 10.0 : 1.0;
}
inline double walkDecibels(double volts, double reference)
{
    return volts > 0.0 ? std::nearbyint(2000.0 * std::log10(volts / reference)) / 100.0 : -100.0;
}
inline double walkVolts(double decibels, double reference)
{
    return std::nearbyint(std::pow(10.0, decibels / 20.0) * reference * 1000.0) / 1000.0;
}

} // namespace calvorn::test
